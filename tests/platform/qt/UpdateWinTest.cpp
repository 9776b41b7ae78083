// The notice of a newer release, on real widgets.

#include "online/UpdateWin.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QTest>

#include "platform/qt/WindowWidget.h"
#include "resources/Endpoints.h"
#include "resources/Pictures.h"
#include "support/HostUnderTest.h"

namespace vintrace::test {
namespace {

using online::UpdateWin;

class UpdateWinTest : public testing::Test {
 protected:
  UpdateWinTest() {
    host._RuntimeRegisterAppObject(std::make_unique<Application>());
    notice = UpdateWin::Instance();
    EXPECT_TRUE(QTest::qWaitFor([&] { return Widget().isVisible(); }));
    EXPECT_TRUE(QTest::qWaitForWindowActive(&Widget()));
  }

  qt::WindowWidget& Widget() { return *host.WidgetOf(*notice); }
  template <class Kind = QWidget>
  Kind& Child(const char* name) {
    return *Widget().findChild<Kind*>(name);
  }
  QColor LinkColor() { return Child("Label2").palette().color(QPalette::WindowText); }

  HostUnderTest host;
  std::shared_ptr<UpdateWin> notice;
  const std::string page{endpoints::WebPage};
  const std::string download = page + "download/download.php?id=3";
};

TEST_F(UpdateWinTest, FloatsWithItsControlsInTheirPlacesWhateverItsSize) {
  EXPECT_EQ(Widget().windowTitle(), "Vintrace CS Ver.1.20");
  const auto flags = Widget().windowFlags();
  EXPECT_TRUE(flags & Qt::WindowStaysOnTopHint);
  EXPECT_TRUE(flags & Qt::WindowCloseButtonHint);
  EXPECT_TRUE(flags & Qt::WindowMinimizeButtonHint);
  EXPECT_FALSE(flags & Qt::WindowMaximizeButtonHint);
  EXPECT_EQ(Widget().windowModality(), Qt::NonModal);
  EXPECT_EQ(Widget().minimumSize(), QSize(64, 64));
  EXPECT_EQ(Widget().maximumSize(), QSize(32000, 32000));
  EXPECT_EQ(Widget().size(), QSize(337, 115));
  EXPECT_EQ(Child<QLabel>("Label2").alignment(), Qt::AlignTop | Qt::AlignHCenter);
  EXPECT_EQ(notice->Canvas1().Backdrop(), pictures::icon48());
  EXPECT_EQ(notice->Design().placement, Placement::CentreOfMainScreen);
  const struct {
    const char* name;
    QRect place;
    std::string text;
    int pixelSize;
  } rows[] = {
      {"Label1", {87, 14, 230, 20}, "新しいバージョンが公開されています。", QFont().pixelSize()},
      {"PushButton1", {251, 75, 66, 20}, "閉じる", 12},
      {"PushButton2", {87, 75, 152, 20}, "最新版をダウンロード", 12},
      {"Label2", {97, 42, 210, 20}, "サイトを見に行く " + page, 12},
      {"Canvas1", {20, 14, 48, 48}, "Vintraceのアイコン", QFont().pixelSize()},
  };
  for (int index = 0; index < 5; ++index) {
    EXPECT_EQ(notice->Control(index)->Design().name, rows[index].name);
    EXPECT_EQ(notice->Control(index)->Design().tabIndex, index);
    EXPECT_EQ(Child(rows[index].name).font().pixelSize(), rows[index].pixelSize);
    EXPECT_EQ(Child(rows[index].name).font().family(), QFont().family());
  }
  for (const QSize size : {QSize(337, 115), QSize(64, 64), QSize(600, 400)}) {
    Widget().resize(size);
    for (const auto& [name, place, text, pixelSize] : rows) {
      const auto& control = Child(name);
      EXPECT_EQ(control.geometry(), place) << name;
      const QString shown = control.property("text").toString();
      EXPECT_EQ((shown.isEmpty() ? control.accessibleName() : shown).toStdString(), text) << name;
    }
  }
}

TEST_F(UpdateWinTest, ReturnDownloadsWhateverHasTheFocus) {
  for (const char* focused : {"", "PushButton1", "Label2"}) {
    notice = UpdateWin::Instance();
    EXPECT_TRUE(QTest::qWaitFor([&] { return Widget().isVisible(); }));
    QWidget& target = *focused == '\0' ? Widget() : Child(focused);
    target.setFocus();
    QTest::keyClick(&target, Qt::Key_Return);
    EXPECT_FALSE(notice->IsOpen()) << focused;
    EXPECT_EQ(std::exchange(host.urls, {}), Lines{download}) << focused;
  }
}

TEST_F(UpdateWinTest, TheOtherButtonClosesAlone) {
  Child("PushButton1").setFocus();
  QTest::keyClick(&Child("PushButton1"), Qt::Key_Space);
  EXPECT_FALSE(notice->IsOpen());
  EXPECT_EQ(host.urls, Lines{});
}

TEST_F(UpdateWinTest, TheLinkTurnsRedOpensTheSiteAndLeavesTheNotice) {
  auto* surface = Widget().windowHandle();
  const QPoint inside = Child("Label2").geometry().center();
  QTest::mouseMove(surface, {1, 1});
  EXPECT_EQ(LinkColor(), QColor(0, 0, 255));
  QTest::mouseMove(surface, inside);
  EXPECT_EQ(LinkColor(), QColor(255, 0, 0));
  QTest::mousePress(surface, Qt::LeftButton, {}, inside);
  QTest::mouseRelease(surface, Qt::LeftButton, {}, {1, 1});
  QTest::mouseMove(surface, {1, 1});
  EXPECT_EQ(LinkColor(), QColor(0, 0, 255));
  EXPECT_EQ(host.urls, Lines{page});
  EXPECT_TRUE(notice->IsOpen());
  EXPECT_EQ(UpdateWin::Instance(), notice);
}

}  // namespace
}  // namespace vintrace::test
