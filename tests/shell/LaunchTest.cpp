// The button that opens a document in its release, on a scripted desktop with a real settings file,
// a real shell, and applications that record their arguments.

#include <gtest/gtest.h>

#include <filesystem>

#include "platform/files/BinaryStream.h"
#include "support/RecordingApplication.h"
#include "support/ScriptedProgram.h"
#include "support/WorkingFolder.h"

namespace vintrace::test {
namespace {

namespace fs = std::filesystem;

const std::string AskForCS6 = "open dialog: Adobe InDesign CS6を選択して下さい。";
const std::string Yield = "yield focus";
const std::string NotFound = "message: 該当するバージョンのInDesignが見つかりません。";
const std::string NotOpened = "message: 該当するバージョンのInDesignで開く事が出来ませんでした。";

class LaunchTest : public ScriptedProgram {
 protected:
  /// Starts the program with `stored` as its settings file, and opens `document`.
  void BeginWith(std::string_view stored, const FolderItem& document) {
    fs::create_directories(folder.Path() / "data");
    folder.File("data/VNTR.ini", stored);
    host.handedOver = {document};
    _Main();
  }

  String Stored() const {
    return BinaryStream::Open(folder.Item("data/VNTR.ini"), false).Read(1 << 20, nullptr);
  }

  /// Presses the button and returns the program's requests to the host.
  Lines StoryOfAPress() {
    host.story.clear();
    Front()->PushButton3().RaiseAction();
    return host.story;
  }
};

TEST_F(LaunchTest, TriesTheFirstMatchAndAsksForAnApplicationIfItFails) {
  const RecordingApplication good(folder.Item("Adobe InDesign CS6/app"));
  const RecordingApplication unnamed(folder.Item("apps/unnamed"));
  const FolderItem bad = folder.File("Adobe InDesign CS6 bad", "no program");
  const FolderItem document = Document("a b.indd");
  const String goodLine = good.Item().ShellPath() + '\n';
  const String unnamedLine = unnamed.Item().ShellPath() + '\n';
  const String badLine = bad.ShellPath() + '\n';
  const String goneLine = "/gone/Adobe\\ InDesign\\ CS6\n";
  const struct {
    String known;
    std::optional<FolderItem> chosen;
    Lines story;
    String knownThen;
    const RecordingApplication* opens;
  } rows[] = {
      {goodLine, std::nullopt, {Yield}, goodLine, &good},
      {goneLine + goodLine, unnamed.Item(), {AskForCS6, Yield}, goodLine + unnamedLine, &unnamed},
      {badLine, bad, {AskForCS6, NotOpened}, badLine, nullptr},
      {badLine, std::nullopt, {AskForCS6, NotFound}, "", nullptr},
  };
  const String others = "/Adobe\\ InDesign\\ CS5.5\n\n";
  for (const auto& [known, chosen, story, knownThen, opens] : rows) {
    SCOPED_TRACE(known);
    BeginWith(others + known, document);
    if (chosen) host.choices = {*chosen};
    const auto window = Front();
    EXPECT_EQ(StoryOfAPress(), story);
    EXPECT_EQ(Stored(), others + knownThen);
    EXPECT_EQ(window->IsOpen(), opens == nullptr);
    if (opens != nullptr) {
      EXPECT_EQ(opens->AwaitStart(), Lines{document.NativePath()});
    }
  }
}

TEST_F(LaunchTest, NamesAndStoredLinesCannotInjectShellCommands) {
  const Lines names{"; touch ran",    "$(touch ran)",  "`touch ran`", "\ntouch ran\n",
                    "&& touch ran #", "' touch ran '", "| touch ran", "\xFF> ran\r"};
  const WorkingFolder working(folder.Path());
  for (const auto& name : names) {
    const RecordingApplication application(folder.Item("Adobe InDesign CS6" + name));
    const FolderItem document = Document(name + ".indd");
    const String form = application.Item().ShellPath();
    const String raw = application.Item().NativePath();
    for (const String& line : {form, raw, raw.substr(1), form + '\\'}) {
      BeginWith(line + '\n', document);
      StoryOfAPress();
      const bool opened = host.Windows().Count() == 0;
      const bool isOneLine = name.find('\n') == String::npos;
      EXPECT_TRUE(opened || line != form || !isOneLine) << line;
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
