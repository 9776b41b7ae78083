// The button that opens a document in its release: the program on a scripted desktop, with a real
// settings file, a real shell, and applications that note what they are started with.

#include <gtest/gtest.h>

#include <filesystem>

#include "platform/BinaryStream.h"
#include "shell/App.h"
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
  /// Starts with what the settings file is to hold and these documents.
  void BeginWith(std::string_view stored, const std::vector<FolderItem>& documents) {
    fs::create_directories(folder.Path() / "data");
    folder.File("data/VNTR.ini", stored);
    host.handedOver.assign(documents.begin(), documents.end());
    _Main();
  }

  String Stored() const { return BinaryStream::Open(folder.Item("data/VNTR.ini")).Read(1 << 20); }

  RecordingApplication Application(std::string_view path) const {
    return RecordingApplication(folder.Item(path));
  }

  /// What the program asks for when the button is pressed.
  Lines StoryOfAPress() {
    host.story.clear();
    Front()->PushButton3().RaiseAction();
    return host.story;
  }
};

TEST_F(LaunchTest, WhatIsKnownAndWhatIsChosenDecideTheOutcome) {
  const auto good = Application("Adobe InDesign CS6 good");
  const FolderItem bad = folder.File("Adobe InDesign CS6 bad", "no program");
  const FolderItem gone = folder.Item("Adobe InDesign CS6 gone");
  const FolderItem document = Document("a b.indd");
  const struct {
    std::optional<FolderItem> known, chosen;
    Lines story;
    bool opens;
  } rows[] = {
      {good.Item(), std::nullopt, {}, true},
      {gone, good.Item(), {AskForCS6}, true},
      {bad, bad, {AskForCS6, NotOpened}, false},
      {bad, std::nullopt, {AskForCS6, NotFound}, false},
      {std::nullopt, good.Item(), {AskForCS6}, true},
      {std::nullopt, bad, {AskForCS6, NotOpened}, false},
      {std::nullopt, std::nullopt, {AskForCS6, NotFound}, false},
  };
  const String others = "/Adobe\\ InDesign\\ CS5.5\n\n";
  for (const auto& [known, chosen, story, opens] : rows) {
    const String before = known ? known->ShellPath() + '\n' : "";
    const String after = chosen ? chosen->ShellPath() + '\n' : "";
    SCOPED_TRACE(before + after);
    BeginWith(others + before, {document});
    if (chosen) host.choices = {*chosen};
    const auto window = Front();
    EXPECT_EQ(StoryOfAPress(), story);
    EXPECT_EQ(Stored(), others + (story.empty() ? before : after));
    EXPECT_EQ(window->shp + (chosen ? "\n" : ""), after);
    EXPECT_EQ(window->IsOpen(), !opens);
    if (opens) {
      EXPECT_EQ(good.AwaitStart(), Lines{document.NativePath()});
    } else {
      window->Close();
    }
    EXPECT_FALSE(good.HasStarted());
  }
}

TEST_F(LaunchTest, OnlyTheFirstThatFitsByItsPathIsTriedAndWhatIsChosenIsTakenUnlookedAt) {
  const auto good = Application("Adobe InDesign CS6/app");
  const auto unnamed = Application("apps/unnamed");
  const std::string known = good.Item().ShellPath() + '\n';
  const std::string chosen = unnamed.Item().ShellPath() + '\n';
  BeginWith("/gone/Adobe\\ InDesign\\ CS6\n" + known,
            {Document("a.indd"), Document("b.indd"), Document("c.indd")});
  host.choices = {unnamed.Item()};
  EXPECT_EQ(StoryOfAPress(), Lines{AskForCS6});
  EXPECT_EQ(unnamed.AwaitStart(), Lines{folder.Item("c.indd").NativePath()});
  EXPECT_EQ(Stored(), known + chosen);
  EXPECT_EQ(StoryOfAPress(), Lines{});
  EXPECT_EQ(good.AwaitStart(), Lines{folder.Item("b.indd").NativePath()});

  fs::remove(folder.Item("a.indd").NativePath());
  EXPECT_EQ(StoryOfAPress(), (Lines{AskForCS6, NotFound}));
  EXPECT_EQ(Stored(), chosen) << "a document that has gone counts against the application";
  EXPECT_EQ(StoryOfAPress(), (Lines{AskForCS6, NotFound}));
  EXPECT_EQ(Stored(), chosen);
  EXPECT_EQ(host.Titles(), Lines{"a.indd"});
}

TEST_F(LaunchTest, NoNameAndNoLineRunsAnythingElse) {
  const Lines names{"; touch ran",    "$(touch ran)",  "`touch ran`", "\ntouch ran\n",
                    "&& touch ran #", "' touch ran '", "| touch ran", "\xFF> ran\r"};
  const WorkingFolder working(folder.Path());
  for (const auto& name : names) {
    const auto application = Application("Adobe InDesign CS6" + name);
    const FolderItem document = Document(name + ".indd");
    const String form = application.Item().ShellPath();
    const String raw = application.Item().NativePath();
    for (const String& line : {form, raw, raw.substr(1), form + '\\'}) {
      BeginWith(line + '\n', {document});
      StoryOfAPress();
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

}  // namespace
}  // namespace vintrace::test
