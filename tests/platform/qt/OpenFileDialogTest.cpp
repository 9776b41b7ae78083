#include "platform/qt/OpenFileDialog.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QTreeView>
#include <fstream>
#include <set>

#include "platform/FileRequest.h"
#include "platform/qt/AskForFile.h"
#include "platform/qt/Places.h"
#include "support/AsOrdinaryUser.h"
#include "support/Environment.h"
#include "support/TemporaryFolder.h"

namespace vintrace::qt {
namespace {

namespace fs = std::filesystem;

/// A home of its own for each test.
class OpenFileDialogTest : public testing::Test {
 protected:
  const fs::path& Home() const { return folder_.Path(); }

  void MakeFiles(const std::vector<std::string>& names) const {
    for (const auto& name : names) {
      fs::create_directories((Home() / name).parent_path());
      std::ofstream(Home() / name) << "text";
    }
  }

  FileRequest Request() const {
    const FileType documents{"indd", ".indd", "", ""};
    return {.title = "", .initialDirectory = FolderItem(Home()), .filter = documents};
  }

  /// A request for any item, to begin in `folder`.
  static FileRequest AnyIn(const fs::path& folder) {
    return {.title = "", .initialDirectory = FolderItem(folder), .filter = {}};
  }

 private:
  int argc_ = 1;
  char name_[9] = "vintrace";
  char* argv_[2] = {name_, nullptr};
  const QApplication application_{argc_, argv_};
  const test::TemporaryFolder folder_;
  const test::Environment home_{"HOME", folder_.Path().c_str()};
};

/// An open dialog, as a user sees and handles it.
class Screen {
 public:
  explicit Screen(const FileRequest& request) : dialog(request) {
    dialog.show();
    dialog.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
  }

  std::vector<std::string> Rows() const {
    std::vector<std::string> rows;
    for (int row = 0; row < list.model()->rowCount(); ++row) {
      rows.push_back(list.model()->index(row, 0).data().toString().toStdString());
    }
    return rows;
  }
  void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
  }
  void Click(int row, Qt::KeyboardModifiers modifiers = {}) {
    QTest::mouseClick(list.viewport(), Qt::LeftButton, modifiers, Middle(row));
  }
  void DoubleClick(int row) {
    Click(row);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, Middle(row));
  }
  void Type(const std::string& text) {
    name.setFocus();
    QTest::keyClicks(&name, QString::fromStdString(text));
  }
  std::string Selected() const {
    const auto rows = list.selectionModel()->selectedRows();
    return rows.isEmpty() ? "" : rows.front().data().toString().toStdString();
  }
  std::string Status() const { return dialog.findChild<QLabel*>("status")->text().toStdString(); }

  OpenFileDialog dialog;
  QTreeView& list = *dialog.findChild<QTreeView*>();
  QLineEdit& name = *dialog.findChild<QLineEdit*>("name");
  QAbstractButton& open = *dialog.findChild<QDialogButtonBox*>()->buttons().constFirst();

 private:
  QPoint Middle(int row) const { return list.visualRect(list.model()->index(row, 0)).center(); }
};

using Strings = std::vector<std::string>;

TEST_F(OpenFileDialogTest, ListsFoldersFirstInNaturalOrderAndOnlyWhatCanBeChosen) {
  MakeFiles({"p10.indd", "p9.INDD", "表紙.indd", "notes.txt", ".draft.indd", "z/x.indd"});
  fs::create_directory_symlink(Home() / "z", Home() / "to z");
  fs::create_symlink("nowhere", Home() / "dangling.indd");
  ASSERT_EQ(mkfifo((Home() / "fifo.indd").c_str(), 0600), 0);

  Screen screen(Request());
  EXPECT_EQ(screen.Rows(), (Strings{"to z", "z", "p9.INDD", "p10.indd", "表紙.indd"}));
  screen.Click(3);
  screen.Key(Qt::Key_H, Qt::ControlModifier);
  EXPECT_EQ(screen.Rows().at(2), ".draft.indd");
  EXPECT_EQ(screen.Selected(), "p10.indd");
  screen.Key(Qt::Key_H, Qt::ControlModifier);
  QTest::keyClick(screen.dialog.findChild<QComboBox*>("filter"), Qt::Key_Down);
  EXPECT_EQ(screen.Rows(), (Strings{"to z", "z", "notes.txt", "p9.INDD", "p10.indd", "表紙.indd"}));
}

TEST_F(OpenFileDialogTest, NamesThatLookAlikeGiveTheirOwnBytes) {
  const std::set<std::string> names = {"\xFF\xFE.indd", "\xFE\xFF.indd", "\uFFFD\n.indd"};
  MakeFiles({names.begin(), names.end()});
  std::set<std::string> chosen;
  for (int row = 0; row < 3; ++row) {
    Screen screen(Request());
    screen.Click(row);
    QTest::mouseClick(&screen.open, Qt::LeftButton);
    chosen.insert(fs::path(screen.dialog.ChosenPath().value()).filename());
  }
  EXPECT_EQ(chosen, names);
}

TEST_F(OpenFileDialogTest, FoldersAreLeftByKeysAndByTheMouseAndEnteredAgain) {
  MakeFiles({"a/x.indd", "\xFF/x.indd"});
  Screen screen(AnyIn(Home() / "\xFF"));
  const std::vector<std::function<void()>> ways = {
      [&] { screen.Key(Qt::Key_Backspace); }, [&] { screen.Key(Qt::Key_Up, Qt::AltModifier); },
      [&] { screen.dialog.findChild<QToolButton*>()->click(); }};
  for (const auto& goUp : ways) {
    goUp();
    EXPECT_EQ(screen.dialog.Folder(), Home());
    EXPECT_EQ(screen.Selected(), "\uFFFD") << "the folder that was left";
    screen.Key(Qt::Key_Return);
    EXPECT_EQ(screen.dialog.Folder(), Home() / "\xFF");
  }
}

TEST_F(OpenFileDialogTest, KeysStartBeforeTheFirstRowWhenNoneIsSelected) {
  MakeFiles({"alpha.indd", "beta.indd"});
  for (const auto key : {Qt::Key_A, Qt::Key_Down}) {
    Screen screen(Request());
    screen.Key(key);
    EXPECT_EQ(screen.Selected(), "alpha.indd");
  }
}

TEST_F(OpenFileDialogTest, OpenTakesTheSelectionOrTheNameThatWasTypedSince) {
  MakeFiles({"sub/a.indd", "sub/a.indd2"});
  Screen screen(Request());
  screen.Key(Qt::Key_AsciiTilde);
  QTest::keyClicks(QApplication::focusWidget(), "/sub/");
  screen.Key(Qt::Key_Return);
  EXPECT_EQ(screen.dialog.Folder(), Home() / "sub");
  EXPECT_FALSE(screen.open.isEnabled());
  screen.Click(0);
  EXPECT_TRUE(screen.open.isEnabled());
  screen.Click(0, Qt::ControlModifier);
  EXPECT_FALSE(screen.open.isEnabled()) << "the drawn name must not stay behind as a typed one";
  screen.Click(0);
  screen.Type("2");
  screen.Key(Qt::Key_Return);
  EXPECT_EQ(screen.dialog.ChosenPath(), (Home() / "sub/a.indd2").native());
}

TEST_F(OpenFileDialogTest, WhatCannotBeOpenedIsSaidAndTheDialogStays) {
  MakeFiles({"x.indd"});
  fs::create_symlink("loop", Home() / "loop");
  const std::pair<std::string, std::string> rows[] = {
      {"%1", "「%1」は見つかりません"},
      {"/dev/null", "「/dev/null」は通常のファイルではないため開けません"},
      {"loop", "「loop」を開けません: " +
                   std::make_error_code(std::errc::too_many_symbolic_link_levels).message()},
  };
  Screen screen(Request());
  for (const auto& [typed, said] : rows) {
    screen.name.clear();
    screen.Type(typed);
    screen.Key(Qt::Key_Return);
    EXPECT_EQ(screen.Status(), said);
    screen.Key(Qt::Key_Backspace);
    EXPECT_EQ(screen.Status(), "1 項目") << "the message goes with the next key";
    EXPECT_EQ(screen.dialog.Folder(), Home()) << "in this line the key is no way up";
  }
}

TEST_F(OpenFileDialogTest, AFolderThatCannotBeReadGivesTheSystemsReasonAndOneStays) {
  MakeFiles({"closed/x.indd"});
  fs::permissions(Home() / "closed", fs::perms(0111));
  fs::permissions(Home(), fs::perms::all);
  const test::AsOrdinaryUser user;

  Screen screen(Request());
  screen.DoubleClick(0);
  EXPECT_EQ(screen.Status(), "「closed」を表示できません: " +
                                 std::make_error_code(std::errc::permission_denied).message());
  EXPECT_EQ(screen.Rows(), Strings{"closed"});
  screen.Type("closed/x.indd");
  screen.Key(Qt::Key_Return);
  EXPECT_EQ(screen.dialog.ChosenPath(), (Home() / "closed/x.indd").native());
  static_cast<void>(chmod((Home() / "closed").c_str(), 0700));  // So that it can be removed.
}

/// Does `act` with the dialog that `AskForFile` is about to bring up.
void WhenAsked(std::function<void(OpenFileDialog&)> act) {
  QTimer::singleShot(0, [act = std::move(act)] {
    auto* dialog = dynamic_cast<OpenFileDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(dialog, nullptr);
    act(*dialog);
  });
}

TEST_F(OpenFileDialogTest, TheFolderOfTheLastChoiceComesUpAgainAndTheHomeForOneThatIsMissing) {
  MakeFiles({"sub/x.indd"});
  WhenAsked([](OpenFileDialog& dialog) {
    QTest::keyClicks(dialog.findChild<QLineEdit*>("name"), "sub/x.indd\r");
  });
  EXPECT_EQ(AskForFile({}, nullptr)->NativePath(), (Home() / "sub/x.indd").native());
  const std::pair<FileRequest, fs::path> rows[] = {{FileRequest(), Home() / "sub"},
                                                   {AnyIn(Home() / "missing"), Home()}};
  for (const auto& row : rows) {
    WhenAsked([&](OpenFileDialog& dialog) {
      EXPECT_EQ(dialog.Folder(), row.second);
      dialog.findChild<QDialogButtonBox*>()->buttons().constLast()->click();
      EXPECT_FALSE(dialog.isVisible()) << "it is cancelled";
      dialog.reject();
    });
    EXPECT_FALSE(AskForFile(row.first, nullptr));
  }
}

TEST_F(OpenFileDialogTest, ABundleIsChosenAsOneItemUnlessOnlyDocumentsAre) {
  MakeFiles({"Adobe \xFF.app/Contents/x", "Plain.app/x"});
  const auto chosen = [this](const FileRequest& request, int row) {
    Screen screen(request);
    screen.DoubleClick(row);
    return screen.dialog.ChosenPath();
  };
  EXPECT_EQ(chosen(AnyIn(Home()), 0), (Home() / "Adobe \xFF.app").native());
  EXPECT_EQ(chosen(AnyIn(Home()), 1), std::nullopt) << "a folder that is only named so";
  EXPECT_EQ(chosen(Request(), 0), std::nullopt);
}

TEST(TypedPath, CountsFromTheFolderTheHomeOrTheRoot) {
  const test::Environment home("HOME", "/home/\xFF/");
  const std::pair<const char*, const char*> rows[] = {
      {" x ", "/a/b/ x "},
      {"../../../..", "/"},
      {"/c//d/.", "/c/d"},
      {"~", "/home/\xFF"},
      {"~/x.indd", "/home/\xFF/x.indd"},
      {"~x", "/a/b/~x"},
  };
  for (const auto& [text, path] : rows) EXPECT_EQ(TypedPath(text, "/a/b"), path) << text;
}

TEST(UsualPlaces, HoldTheRootOnceForAUserWithoutAHome) {
  const test::Environment home("HOME", "");
  EXPECT_EQ(UsualPlaces().front().kind, Place::Home);
  EXPECT_NE(UsualPlaces().back().kind, Place::Root);
}

}  // namespace
}  // namespace vintrace::qt
