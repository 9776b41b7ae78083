// What a start of the program finds: its streams, its folder, its display and its documents; and
// the signals that end it.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>

#include "platform/InstanceChannel.h"
#include "platform/QuitSignals.h"
#include "platform/posix/RuntimeFolder.h"
#include "platform/posix/SecureStart.h"
#include "support/Environment.h"
#include "support/Processes.h"
#include "support/TemporaryFolder.h"
#include "support/WorkingFolder.h"

namespace vintrace::test {
namespace {

namespace fs = std::filesystem;

TEST(SecureStart, FillsWhatIsClosedOfTheStreamsOutlivesALostReaderAndHearsOfItsChildren) {
  const int free = dup(STDERR_FILENO);
  close(free);
  for (const auto& closed : {std::vector{2}, std::vector{0, 1, 2}}) {
    Child start([&] {
      for (const int stream : closed) close(stream);
      static_cast<void>(std::signal(SIGCHLD, SIG_IGN));
      posix::SecureStart();
      if (std::signal(SIGCHLD, SIG_DFL) == SIG_IGN) return -1;  // No end of a child would be told.
      for (const int signal : {SIGPIPE, SIGXFSZ}) static_cast<void>(std::raise(signal));
      return open("/dev/null", O_RDONLY);
    });
    EXPECT_EQ(start.Join(), free) << closed.size();
  }
}

TEST(QuitSignals, ASecondOfTheSameKindEndsTheProcess) {
  for (const int times : {1, 2}) {
    Child program([&] {
      const QuitSignals signals;
      for (int time = 0; time < times; ++time) raise(SIGTERM);
      return 0;
    });
    EXPECT_EQ(program.Join(), times == 1 ? 0 : -1);
  }
}

TEST(RuntimeFolder, IsOneThatIsTheUsersAlone) {
  const TemporaryFolder folder;
  const auto make = [&](const char* name, int mode) {
    fs::create_directory(folder.Path() / name);
    fs::permissions(folder.Path() / name, fs::perms(mode));
    return folder.Item(name).NativePath();
  };
  const String good = make("good", 0700);
  const String link = folder.Item("link").NativePath();
  fs::create_directory_symlink(good, link);
  std::vector<String> bad{make("open", 0701), make("shared", 0770), link};
  const String foreign = make("foreign", 0700);
  if (chown(foreign.c_str(), 65534, 65534) == 0) bad.push_back(foreign);
  const String fallback = folder.Item("made").NativePath();
  EXPECT_EQ(posix::RuntimeFolder(good + "/", fallback), good);
  EXPECT_EQ(posix::RuntimeFolder(good + "/missing", fallback), good + "/missing");
  EXPECT_FALSE(fs::exists(fallback));
  for (const auto& path : bad) EXPECT_EQ(posix::RuntimeFolder("", path), "") << path;
  bad.insert(bad.end(), {"/", fs::relative(good).native(), link + "/"});
  for (const auto& path : bad) EXPECT_EQ(posix::RuntimeFolder(path, fallback), fallback) << path;
  EXPECT_EQ(fs::status(fallback).permissions(), fs::perms::owner_all);
}

TEST(StartEnvironment, GivesThePlaceAndTheRequest) {
  const TemporaryFolder folder;
  const WorkingFolder working(folder.Path());
  const Environment runtime("XDG_RUNTIME_DIR", folder.Path().c_str());
  const Environment display("DISPLAY", "host/unix:0.1");
  for (const auto& [wayland, name] :
       {std::pair{"", "vintrace-host_unix:0"}, {"/run/日", "vintrace-_run____"}}) {
    const Environment other("WAYLAND_DISPLAY", wayland);
    EXPECT_EQ(ChannelPlace::OfThisDesktop().name, name);
    EXPECT_EQ(ChannelPlace::OfThisDesktop().folder, folder.Path().native());
  }
  const Environment token("XDG_ACTIVATION_TOKEN", "token");
  String program = "vintrace";
  String document = "-a\xFF";
  char* argv[] = {program.data(), document.data()};
  const StartRequest request = StartRequestOf(2, argv);
  EXPECT_EQ(request.documents.at(0).NativePath(), folder.Item("-a\xFF").NativePath());
  EXPECT_EQ(request.activationToken, "token");
}

}  // namespace
}  // namespace vintrace::test
