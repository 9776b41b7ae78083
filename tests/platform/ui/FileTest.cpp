// File URIs, and asking for a file with Qt's own dialog.

#include <gtest/gtest.h>

#include <QApplication>
#include <QFileDialog>
#include <QTest>
#include <QTimer>
#include <memory>

#include "platform/ui/OpenDialog.h"
#include "platform/ui/qt/AskForFile.h"
#include "platform/ui/qt/FileAddress.h"
#include "support/TemporaryFolder.h"

namespace vintrace::test {
namespace {

using Lines = std::vector<std::string>;

TEST(FileAddress, AUriListYieldsOnlyLocalFilesByTheirRawBytes) {
  const QByteArray list =
      "file:///tmp/a%20b.indd\r\n"
      "FILE://localhost/%FF%0A.indd\n"
      "file:/old%2Fway\n"
      "file://elsewhere.example/x.indd\r\n"
      "file:///cut%00short\r\n"
      "file://\r\n"
      "file:relative\n"
      "# comment\n"
      "file:///last";
  Lines paths;
  for (const auto& file : qt::FilesOf(list)) paths.push_back(file.NativePath());
  EXPECT_EQ(paths, (Lines{"/tmp/a b.indd", "/\xFF\n.indd", "/old/way", "/last"}));
}

TEST(FileAddress, RoundTripsEveryByteOfAPath) {
  String path = "/";
  for (int value = 1; value < 256; ++value) path += static_cast<char>(value);
  const QByteArray address = qt::AddressOf(FolderItem(path));
  EXPECT_EQ(qt::FileAt(address).value().NativePath(), path);
  EXPECT_TRUE(std::ranges::all_of(address, [](char each) { return each > ' ' && each < 0x7F; }));
}

class AskForFileTest : public testing::Test {
 protected:
  /// The answer to `request` if the user performs `action` in the dialog.
  template <class Action>
  std::optional<FolderItem> Ask(const FileRequest& request, Action action) {
    const QApplication application(argc_, argv_);
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    auto parent = std::make_unique<QWidget>();
    QTimer::singleShot(0, [&] {
      auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      action(*dialog, parent);
    });
    return qt::AskForFile(request, parent.get());
  }

  const TemporaryFolder folder;
  const FolderItem document = folder.File("二 a%20.INDD", "");

 private:
  inline static char name_[] = "vintrace";
  inline static char* argv_[] = {name_, nullptr};
  inline static int argc_ = 1;
};

TEST_F(AskForFileTest, ReturnsTheChosenFileAndShowsTitleFolderAndFilter) {
  FileType type;
  type.Name = "indd";
  type.Extensions = ".indd";
  const FileRequest request{
      .title = "<b>題", .initialDirectory = FolderItem(folder.Path().native()), .filter = type};
  const auto chosen = Ask(request, [&](QFileDialog& dialog, auto&) {
    EXPECT_EQ(dialog.windowTitle(), "<b>題");
    EXPECT_EQ(dialog.directory().canonicalPath().toStdString(),
              std::filesystem::canonical(folder.Path()));
    EXPECT_EQ(dialog.nameFilters().front(), "indd (*.indd *.INDD)");
    EXPECT_TRUE(dialog.nameFilters().back().endsWith("(*)"));
    dialog.selectFile(QString::fromStdString(document.Name()));
    QMetaObject::invokeMethod(&dialog, "accept");
  });
  EXPECT_EQ(chosen.value().NativePath(), document.NativePath());
}

TEST_F(AskForFileTest, CancellingOrDestroyingTheParentReturnsNothing) {
  EXPECT_FALSE(Ask({}, [](QFileDialog& dialog, auto&) { dialog.reject(); }));
  EXPECT_FALSE(Ask({}, [](QFileDialog&, auto& parent) { parent.reset(); }));
}

}  // namespace
}  // namespace vintrace::test
