// The program as its user meets it: on an X server with a window manager.

#include "desktop/DesktopFixture.h"
#include "resources/Endpoints.h"

namespace vintrace::test {
namespace {

using DesktopTest = ProgramOnDesktop;

TEST_F(DesktopTest, DocumentsAreToldInTheirWindowsWhoseLinkOpensThePageAndWhoseButtonCloses) {
  StartWith({PathOfDocument("first document.indd"), PathOfDocument("二つ目.indd", 15)});
  const WId first = WindowNamed("first document.indd");
  const WId second = WindowNamed("二つ目.indd");
  ASSERT_NE(first, 0U);
  ASSERT_NE(second, 0U);
  const QSize product(161, 20);
  EXPECT_NE(Drawn("閉", product, 12, Qt::black), Drawn("該", product, 12, Qt::black))
      << "boxes instead of Japanese";
  EXPECT_TRUE(Shows(first, {104, 38}, Drawn("Adobe InDesign CS6", product, 12, Qt::black)));
  EXPECT_TRUE(Shows(first, {105, 57}, Drawn("Windows Edition", {137, 18}, 10, Qt::black)));
  EXPECT_TRUE(Shows(first, {105, 78}, Drawn("8.0.0.397", {160, 25}, 14, Qt::black)));
  EXPECT_TRUE(Shows(second, {104, 38}, Drawn("Ver.15 CC2019より新しい", product, 12, Qt::black)));
  EXPECT_TRUE(Shows(second, {105, 78}, Drawn("サブバージョン不明", {160, 25}, 14, Qt::black)));

  const QPoint link(20, 114);
  const QString address = QString::fromUtf8(endpoints::WebPage.data(), endpoints::WebPage.size());
  EXPECT_TRUE(Shows(second, link, Drawn(address, {114, 20}, 12, Qt::blue)));
  Click(second, Place(second, link + QPoint(50, 8)));
  EXPECT_TRUE(Shows(second, link, Drawn(address, {114, 20}, 12, Qt::red)));
  EXPECT_TRUE(Comes([&] { return Opened() == endpoints::WebPage; })) << Opened();
  Click(second, Place(second, {200, 120}));
  ASSERT_TRUE(HasWindows({"first document.indd"}));
  Click(first, Place(first, {200, 120}));
  ASSERT_TRUE(HasWindows({"Vintrace"}));
  Press(WindowNamed("Vintrace"), {"alt+F4"});
  AwaitEnd();
}

TEST_F(DesktopTest, ADocumentThatCannotBeReadEndsTheProgramBehindAMessage) {
  std::filesystem::create_directory(folder.Path() / "folder.indd");
  StartWith({QString::fromStdString(folder.Path() / "folder.indd"), PathOfDocument("b.indd")});
  EXPECT_TRUE(HasWindows({"Vintrace"})) << "a window that tells nothing true";
  DismissMessage();
  AwaitEnd();
}

}  // namespace
}  // namespace vintrace::test
