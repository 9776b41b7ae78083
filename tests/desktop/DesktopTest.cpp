// The program as its user meets it: on an X server with a window manager.

#include <filesystem>

#include "desktop/DesktopFixture.h"
#include "resources/Endpoints.h"

namespace vintrace::test {
namespace {

using DesktopTest = ProgramOnDesktop;

TEST_F(DesktopTest, TwoDocumentsAreToldInTheirWindows) {
  StartWith({PathOfDocument("first document.indd", 8), PathOfDocument("二つ目.indd", 15)});
  const WId first = WindowNamed("first document.indd");
  const WId second = WindowNamed("二つ目.indd");
  ASSERT_NE(first, 0U);
  ASSERT_NE(second, 0U);
  EXPECT_EQ(Screenshot(first).width(), 280);
  EXPECT_EQ(Screenshot(second).width(), 280);

  const QSize product(161, 20);
  EXPECT_NE(Drawn("閉", product, 12, Qt::black), Drawn("該", product, 12, Qt::black))
      << "boxes instead of Japanese";
  EXPECT_TRUE(Shows(first, {104, 38}, Drawn("Adobe InDesign CS6", product, 12, Qt::black)));
  EXPECT_TRUE(Shows(first, {105, 57}, Drawn("Windows Edition", {137, 18}, 10, Qt::black)));
  EXPECT_TRUE(Shows(first, {105, 78}, Drawn("8.0.0.397", {160, 25}, 14, Qt::black)));
  EXPECT_TRUE(Shows(second, {104, 38}, Drawn("Ver.15 CC2019より新しい", product, 12, Qt::black)));
  EXPECT_TRUE(Shows(second, {105, 78}, Drawn("サブバージョン不明", {160, 25}, 14, Qt::black)));
}

TEST_F(DesktopTest, TheLinkOpensThePageAndTheButtonClosesTheWindow) {
  StartWith({PathOfDocument("a.indd", 15)});
  const WId window = WindowNamed("a.indd");
  ASSERT_NE(window, 0U);
  const QPoint link(20, 114);
  const QString address = QString::fromUtf8(endpoints::WebPage.data(), endpoints::WebPage.size());
  EXPECT_TRUE(Shows(window, link, Drawn(address, {114, 20}, 12, Qt::blue)));
  Click(window, Place(window, link + QPoint(50, 8)));
  EXPECT_TRUE(Shows(window, link, Drawn(address, {114, 20}, 12, Qt::red)));
  EXPECT_TRUE(Comes([&] { return Opened() == endpoints::WebPage; })) << Opened();

  Click(window, Place(window, {200, 120}));
  EXPECT_TRUE(Comes([] { return !IsVisible("a.indd"); }));
  EXPECT_EQ(program.state(), QProcess::Running);
}

TEST_F(DesktopTest, ADocumentThatCannotBeReadEndsTheProgramBehindAMessage) {
  std::filesystem::create_directory(folder.Path() / "folder.indd");
  StartWith({QString::fromStdString(folder.Path() / "folder.indd"), PathOfDocument("b.indd", 8)});
  const WId box = WindowNamed("Vintrace");
  ASSERT_NE(box, 0U);
  EXPECT_FALSE(IsVisible("folder.indd")) << "a window that tells nothing true";
  Press(box, {"Return"});
  AwaitEnd();
}

}  // namespace
}  // namespace vintrace::test
