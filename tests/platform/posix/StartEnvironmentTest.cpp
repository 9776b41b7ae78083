#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <filesystem>

#include "platform/InstanceChannel.h"
#include "platform/posix/RuntimeFolder.h"
#include "support/Processes.h"
#include "support/TemporaryFolder.h"

namespace vintrace::test {
namespace {

namespace fs = std::filesystem;

TEST(RuntimeFolder, IsOneThatIsTheUsersAlone) {
  const TemporaryFolder folder;
  const auto make = [&](const char* name, mode_t mode) {
    String path = folder.Item(name).NativePath();
    EXPECT_EQ(mkdir(path.c_str(), 0700), 0);
    EXPECT_EQ(chmod(path.c_str(), mode), 0);
    return path;
  };
  const String good = make("good", 0700);
  const String open = make("open", 0701);
  const String shared = make("shared", 0770);
  const String foreign = make("foreign", 0700);
  const bool isForeign = chown(foreign.c_str(), 65534, 65534) == 0;
  const String file = folder.File("file", "").NativePath();
  chmod(file.c_str(), 0700);
  const String link = folder.Item("link").NativePath();
  fs::create_symlink(good, link);
  const String fallback = folder.Item("made").NativePath();
  EXPECT_EQ(posix::RuntimeFolder(good + "/", fallback), good);
  EXPECT_EQ(posix::RuntimeFolder(good + "/missing", fallback), good + "/missing");
  EXPECT_FALSE(fs::exists(fallback));
  for (const auto& bad : {open, shared, file, link, isForeign ? foreign : open}) {
    EXPECT_EQ(posix::RuntimeFolder(bad, fallback), fallback) << bad;
    EXPECT_EQ(posix::RuntimeFolder("", bad), "") << bad;
  }
  const String relative = fs::relative(good).native();
  for (const auto& bad : {String(), String("/"), relative, link + "/", file + "/missing"}) {
    EXPECT_EQ(posix::RuntimeFolder(bad, fallback), fallback) << bad;
  }
  EXPECT_EQ(posix::RuntimeFolder("", fallback + "/missing/folder"), "");
  EXPECT_EQ(fs::status(fallback).permissions(), fs::perms::owner_all);
}

TEST(StartEnvironment, GivesThePlaceAndTheRequest) {
  const TemporaryFolder folder;
  Child start([&] {
    setenv("XDG_RUNTIME_DIR", folder.Path().c_str(), 1);
    setenv("DISPLAY", "host/unix:0.1", 1);
    setenv("WAYLAND_DISPLAY", "", 1);
    setenv("XDG_ACTIVATION_TOKEN", "token", 1);
    unsetenv("DESKTOP_STARTUP_ID");
    fs::current_path(folder.Path());
    const ChannelPlace x11 = ChannelPlace::OfThisDesktop();
    setenv("WAYLAND_DISPLAY", "/run/日", 1);
    const ChannelPlace wayland = ChannelPlace::OfThisDesktop();
    std::array<String, 3> arguments{"vintrace", "-a\xFF", "/b"};
    std::array<char*, 3> argv{arguments[0].data(), arguments[1].data(), arguments[2].data()};
    const StartRequest request = StartRequestOf(3, argv.data());
    EXPECT_EQ(x11.folder, folder.Path().native());
    EXPECT_EQ(x11.name, "vintrace-host_unix:0");
    EXPECT_EQ(wayland.name, "vintrace-_run____");
    EXPECT_EQ(request.documents.at(0).NativePath(), folder.Item("-a\xFF").NativePath());
    EXPECT_EQ(request.documents.at(1).NativePath(), "/b");
    EXPECT_EQ(request.activationToken, "token");
    EXPECT_EQ(request.startupId, "");
    return testing::Test::HasFailure() ? 1 : 0;
  });
  EXPECT_EQ(start.Join(), 0);
}

}  // namespace
}  // namespace vintrace::test
