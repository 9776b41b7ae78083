// The button that opens a document in its release: the program on a scripted desktop, with a real
// settings file, a real shell, and applications that note what they are started with.

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <filesystem>
#include <functional>

#include "platform/BinaryStream.h"
#include "shell/App.h"
#include "support/AsOrdinaryUser.h"
#include "support/Processes.h"
#include "support/RecordingApplication.h"
#include "support/ScriptedProgram.h"
#include "support/WorkingFolder.h"

namespace vintrace::test {
namespace {

namespace fs = std::filesystem;

const std::string AskForCS6 = "open dialog: Adobe InDesign CS6を選択して下さい。";
const std::string NotFound = "message: 該当するバージョンのInDesignが見つかりません。";
const std::string NotOpened = "message: 該当するバージョンのInDesignで開く事が出来ませんでした。";

class LaunchTest : public ScriptedProgram {
 protected:
  /// What the settings file holds before the start.
  void Store(std::string_view bytes) const {
    fs::create_directories(folder.Path() / "data");
    folder.File("data/VNTR.ini", bytes);
  }
  String Stored() const { return BinaryStream::Open(folder.Item("data/VNTR.ini")).Read(1 << 20); }

  RecordingApplication Application(std::string_view path) const {
    return RecordingApplication(folder.Item(path));
  }

  void Press() { Front()->PushButton3().RaiseAction(); }

  /// What the program asked for since the last time.
  Lines Story() { return std::exchange(host.story, {}); }
};

/// What lies at an application's location.
enum class At { Nothing, NoProgram, Program };

struct Outcome {
  std::string_view name;
  std::optional<At> known, chosen;
  Lines story;
  bool closes;
};

void PrintTo(const Outcome& outcome, std::ostream* stream) { *stream << outcome.name; }

class OutcomeTest : public LaunchTest, public testing::WithParamInterface<Outcome> {};

TEST_P(OutcomeTest, IsThatOfTheTable) {
  const auto& [name, known, chosen, story, closes] = GetParam();
  const auto good = Application("Adobe InDesign CS6 good");
  const auto itemOf = [&](At what) {
    if (what == At::Nothing) return folder.Item("Adobe InDesign CS6 gone");
    return what == At::Program ? good.Item() : folder.File("Adobe InDesign CS6 bad", "no program");
  };
  const String others = "/Adobe\\ InDesign\\ CS5.5\n\n";
  const String before = known ? itemOf(*known).ShellPath() + '\n' : "";
  const String after = chosen ? itemOf(*chosen).ShellPath() + '\n' : "";
  Store(others + before);
  if (chosen) host.choices = {itemOf(*chosen)};
  StartWith({"a b.indd"});
  const auto window = Front();
  Press();

  EXPECT_EQ(host.story, story);
  EXPECT_EQ(host.Windows().Count(), closes ? 0 : 1);
  EXPECT_EQ(Stored(), others + (known == At::Program ? before : after));
  EXPECT_EQ(window->shp + (chosen ? "\n" : ""), after);
  if (closes) {
    EXPECT_EQ(good.AwaitStart(), Lines{folder.Item("a b.indd").NativePath()});
  }
  EXPECT_FALSE(good.HasStarted());
}

INSTANTIATE_TEST_SUITE_P(
    PushButton3, OutcomeTest,
    testing::Values(
        Outcome{"known, and opens", At::Program, std::nullopt, {}, true},
        Outcome{"known, gone; chosen, and opens", At::Nothing, At::Program, {AskForCS6}, true},
        Outcome{
            "known, bad; chosen, bad", At::NoProgram, At::NoProgram, {AskForCS6, NotOpened}, false},
        Outcome{"known, bad; none", At::NoProgram, std::nullopt, {AskForCS6, NotFound}, false},
        Outcome{"unknown; chosen, and opens", std::nullopt, At::Program, {AskForCS6}, true},
        Outcome{"unknown; bad", std::nullopt, At::NoProgram, {AskForCS6, NotOpened}, false},
        Outcome{"unknown; none", std::nullopt, std::nullopt, {AskForCS6, NotFound}, false}));

TEST_F(LaunchTest, OnlyTheFirstThatFitsIsTriedAndASecondClickGoesOn) {
  const auto good = Application("Adobe InDesign CS6/app");
  const String gone = "/gone/Adobe\\ InDesign\\ CS6";
  Store(gone + '\n' + good.Item().ShellPath());
  StartWith({"a.indd", "b.indd"});
  const std::string front = host.Titles().front();
  Press();
  EXPECT_EQ(Story(), (Lines{AskForCS6, NotFound}));
  EXPECT_EQ(Stored(), good.Item().ShellPath() + '\n');
  Press();
  EXPECT_EQ(Story(), Lines{});
  EXPECT_EQ(good.AwaitStart(), Lines{folder.Item(front).NativePath()});
  EXPECT_EQ(host.Windows().Count(), 1) << "the other one stays";
}

TEST_F(LaunchTest, WhatIsChosenIsTakenUnlookedAtAndFoundAgainByItsPathAlone) {
  const auto unnamed = Application("apps/unnamed");
  const auto second = Application("Adobe InDesign CS6/app");
  host.choices = {unnamed.Item(), second.Item()};
  StartWith({"1.indd", "2.indd", "3.indd"});
  for (const auto& [application, story] :
       {std::pair{&unnamed, Lines{AskForCS6}}, {&second, Lines{AskForCS6}}, {&second, Lines{}}}) {
    Press();
    EXPECT_EQ(application->AwaitStart().size(), 1U);
    EXPECT_EQ(Story(), story);
  }
  EXPECT_EQ(Stored(), unnamed.Item().ShellPath() + '\n' + second.Item().ShellPath() + '\n');
}

TEST_F(LaunchTest, ADocumentThatHasGoneCountsAgainstTheApplication) {
  const auto good = Application("Adobe InDesign CS6/app");
  Store(good.Item().ShellPath());
  StartWith({"a.indd"});
  fs::remove(folder.Item("a.indd").NativePath());
  Press();
  EXPECT_EQ(Story(), (Lines{AskForCS6, NotFound}));
  EXPECT_EQ(Stored(), "");
}

TEST_F(LaunchTest, TheDialogBeginsInTheFolderOfApplications) {
  const Environment prefix("WINEPREFIX", folder.Path().c_str());
  fs::create_directories(folder.Path() / "drive_c/Program Files");
  StartWith({"a.indd"});
  Press();
  EXPECT_EQ(host.askedIn.value().NativePath(), folder.Item("drive_c/Program Files").NativePath());
}

TEST_F(LaunchTest, NoNameAndNoLineRunsAnythingElse) {
  const Lines names{"; touch ran",    "$(touch ran)",  "`touch ran`", "\ntouch ran\n",
                    "&& touch ran #", "' touch ran '", "| touch ran", "\xFF> ran\r"};
  const WorkingFolder working(folder.Path());
  _Main();
  for (const auto& name : names) {
    const auto application = Application("Adobe InDesign CS6" + name);
    const FolderItem document = Document(name + ".indd");
    const String form = application.Item().ShellPath();
    const String raw = application.Item().NativePath();
    for (const String& line : {form, raw, raw.substr(1), form + '\\'}) {
      Store(line + '\n');
      App::Instance().RaiseOpen();
      App::Instance().RaiseOpenDocument(document);
      Press();
      const bool opened = host.Windows().Count() == 0;
      const bool isOneLine = name.find('\n') == String::npos;
      EXPECT_TRUE(opened || line != form || !isOneLine) << line;
      EXPECT_FALSE(opened && !line.starts_with('/')) << line;
      if (opened) {
        EXPECT_EQ(application.AwaitStart(), Lines{document.NativePath()});
      } else {
        Front()->Close();
      }
    }
  }
  EXPECT_FALSE(fs::exists("ran"));
}

TEST_F(LaunchTest, AStoreThatCannotBeWrittenIsReportedOnceAndTheProgramGoesOn) {
  const fs::path data = folder.Path() / "data";
  const fs::path file = data / "VNTR.ini";
  const std::pair<std::function<void()>, std::string> rows[] = {
      {[&] { fs::create_directory(file); }, "Is a directory"},
      {[&] { fs::create_symlink("/dev/full", file); }, "No space left on device"},
      {[&] { fs::permissions(data, fs::perms(0555)); }, "Permission denied"},
  };
  const auto application = Application("Adobe InDesign CS6/app");
  fs::permissions(folder.Path(), fs::perms(0755));
  StartWith({"a.indd", "b.indd", "c.indd"});
  for (const auto& [spoil, reason] : rows) {
    App::Instance().apploc.clear();
    fs::permissions(data, fs::perms(0755));
    fs::remove_all(file);
    spoil();
    host.choices = {application.Item()};
    const auto windows = host.Windows().Count();
    {
      const AsOrdinaryUser user;
      Press();
    }
    EXPECT_EQ(Story(), (Lines{AskForCS6, "message: 予期しないエラーが起こりました。\n" + reason}));
    EXPECT_EQ(host.Windows().Count(), windows);
    Press();
    EXPECT_EQ(application.AwaitStart().size(), 1U) << "this run knows the application";
    EXPECT_EQ(host.Windows().Count(), windows - 1);
  }
  fs::permissions(data, fs::perms(0755));
}

/// Puts a disk with room for `bytes` at `folder`, for this process alone. False where that can't
/// be.
bool MountDisk(const fs::path& folder, std::string_view bytes) {
  const int user = geteuid() == 0 ? 0 : CLONE_NEWUSER;
  const String size = "size=" + String(bytes);
  return unshare(CLONE_NEWNS | user) == 0 &&
         mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
         mount("none", folder.c_str(), "tmpfs", 0, size.c_str()) == 0;
}

TEST_F(LaunchTest, OnAFullDiskThisRunKnowsTheApplicationAllTheSame) {
  constexpr int NoDisk = 77;
  const auto application = Application("Adobe InDesign CS6/app");
  Child child([&] {
    fs::create_directory(folder.Path() / "data");
    if (!MountDisk(folder.Path() / "data", "4k")) return NoDisk;
    host.choices = {application.Item()};
    StartWith({"a.indd"});
    folder.File("data/else", String(4096, 'x'));
    Press();
    EXPECT_EQ(
        Story(),
        (Lines{AskForCS6, "message: 予期しないエラーが起こりました。\nNo space left on device"}));
    EXPECT_EQ(Stored(), "");
    Press();
    EXPECT_EQ(application.AwaitStart(), Lines{folder.Item("a.indd").NativePath()});
    EXPECT_EQ(host.Windows().Count(), 0);
    return HasFailure() ? 1 : 0;
  });
  const int status = child.Join();
  if (status == NoDisk) GTEST_SKIP() << "this user can't mount a small disk";
  EXPECT_EQ(status, 0);
}

}  // namespace
}  // namespace vintrace::test
