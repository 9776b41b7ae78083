// The program with real widgets, without a screen.

#include <gtest/gtest.h>

#include <QFileOpenEvent>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QTimer>
#include <deque>

#include "online/UpdateWin.h"
#include "platform/ui/Desktop.h"
#include "platform/ui/QtHostFixture.h"
#include "resources/Pictures.h"
#include "shell/Window1.h"
#include "shell/Window2.h"

namespace vintrace::test {
namespace {

using online::UpdateWin;

/// Counts the paint events of the object it watches.
class PaintCounter : public QObject {
 public:
  int paints = 0;
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++paints;
    return false;
  }
};

TEST_F(QtHostTest, StartOpensDocumentsInOrderAndPaintsEachBeforeTheNext) {
  host.HandOver(FolderItem("/\xFF\n.indd"));
  QFileOpenEvent fromTheSystem(QString("/二.indd"));
  QApplication::sendEvent(qApp, &fromTheSystem);
  std::deque<PaintCounter> counters;
  const auto expectDrawn = [&] {
    for (const auto& counter : counters) EXPECT_GT(counter.paints, 0);
    EXPECT_EQ(host.StandIn(), nullptr) << "there is a document, so no stand-in is needed";
  };
  app->onDocument = [&] {
    expectDrawn();
    const auto window = Window::New<Window1>();
    Child(*window, "PushButton3").installEventFilter(&counters.emplace_back());
  };
  app->onOpen = [&] {
    expectDrawn();
    desktop::Quit(3);
  };
  host.Run();
  EXPECT_EQ(app->story, (Lines{"document /\xFF\n.indd", "document /二.indd", "open"}));
  EXPECT_EQ(host.ExitStatus(), 3);
}

TEST_F(QtHostTest, ExceptionsAreReportedAndNoDocumentOpensDuringAMessage) {
  app->onOpen = [&] {
    for (const char* path : {"/a.indd", "/b.indd", "/c.indd"}) host.HandOver(FolderItem(path));
  };
  Lines shown;
  const auto answer = [&] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_NE(box, nullptr);
    // Run the box's event loop: a document that did not wait would open now.
    for (int round = 0; round < 3; ++round) QCoreApplication::processEvents();
    EXPECT_EQ(app->story.size(), 2U);
    EXPECT_EQ(box->textFormat(), Qt::PlainText);
    shown.push_back(box->text().toStdString());
    QTest::keyClick(box, Qt::Key_Return);
  };
  app->onDocument = [&] {
    if (app->story.size() > 2) return desktop::Quit(0);
    QTimer::singleShot(0, answer);
    desktop::MsgBox("<b>一</b>\n\x1B二");
    QTimer::singleShot(0, answer);
    throw RuntimeException("broken");
  };
  host.Run();
  EXPECT_EQ(shown, (Lines{"<b>一</b>\n\uFFFD二", "予期しないエラーが起こりました。\nbroken"}));
  EXPECT_EQ(app->story, (Lines{"open", "document /a.indd", "document /b.indd"}))
      << "a document that waits when the program quits is dropped";
}

TEST_F(QtHostTest, TheAboutWindowStaysInFrontOfANewDocument) {
  const auto about = NewWindow<Window2>();
  const auto document = Window::New<Window1>();
  ASSERT_TRUE(QTest::qWaitFor([&] { return Widget(*document).isVisible(); }));
  EXPECT_EQ(desktop::Window(0), about);
  EXPECT_TRUE(QTest::qWaitForWindowActive(&Widget(*about)));
}

TEST_F(QtHostTest, ClickingAWindowBringsItToTheFront) {
  const auto a = NewWindow<Window1>();
  const auto b = NewWindow<Window1>();
  QTest::mouseClick(&Child(*a, "PushButton2"), Qt::LeftButton);
  EXPECT_FALSE(a->IsOpen());
  EXPECT_TRUE(b->IsOpen());
}

TEST_F(QtHostTest, MenusAndShortcutsUseTheCurrentEnabledState) {
  const auto window = NewWindow<Window1>();
  QMenu* edit = Widget(*window).findChild<QMenuBar*>()->actions().at(1)->menu();
  const QAction* copy = edit->actions().at(0);
  EXPECT_TRUE(copy->isEnabled());
  Window::New<Window2>();  // In front, but not on the screen yet.
  emit edit->aboutToShow();
  EXPECT_FALSE(copy->isEnabled());
  host.Windows().BringToFront(window);
  QTest::keyClick(&Widget(*window), Qt::Key_W, Qt::ControlModifier);
  EXPECT_FALSE(window->IsOpen());
}

TEST_F(QtHostTest, TabFollowsTabIndexAndKeysActOnlyOnTheFocusedControl) {
  for (const auto key : {Qt::Key_Return, Qt::Key_Space}) {
    const auto window = NewWindow<Window1>();
    ASSERT_EQ(Press(*window, key), "") << "no control has the focus yet";
    for (const char* stop : {"PushButton2", "PushButton3", "PushButton2"}) {
      ASSERT_EQ(Press(*window, Qt::Key_Tab), stop) << "Tab skips the link that a button covers";
    }
    Widget(*window).setFocus();
    window->SetOpenable(false);
    for (const char* stop : {"PushButton2", "StaticText4"}) {
      ASSERT_EQ(Press(*window, Qt::Key_Tab), stop);
    }
    Press(*window, key);
    EXPECT_EQ(std::exchange(host.urls, {}), page);
    EXPECT_EQ(Press(*window, Qt::Key_Tab), "PushButton2");
    EXPECT_EQ(Press(*window, key), "closed");
  }
}

TEST_F(QtHostTest, AKeyOrAClickOutsideTheLinksClosesTheAboutWindow) {
  auto about = NewWindow<Window2>();
  EXPECT_EQ(Child<QLabel>(*about, "Label1").text().toStdString(), about->Label1().Text());
  EXPECT_EQ(Press(*about, Qt::Key_Escape), "closed");

  about = NewWindow<Window2>();
  auto* surface = Widget(*about).windowHandle();
  for (const char* link : {"StaticText1", "StaticText2"}) {
    QTest::mouseClick(surface, Qt::LeftButton, {}, Middle(*about, link));
  }
  QTest::mouseClick(surface, Qt::RightButton, {}, {10, 10});
  EXPECT_EQ(host.urls, (Lines{page.front(), std::string(endpoints::Mail)}));
  EXPECT_TRUE(about->IsOpen());
  QTest::mouseClick(surface, Qt::LeftButton, {}, Middle(*about, "Label1"));
  EXPECT_FALSE(about->IsOpen());
}

TEST_F(QtHostTest, LinksTurnRedUnderTheMouseAndOpenOnRelease) {
  const auto document = NewWindow<Window1>();
  auto* content = Child(*document, "StaticText4").parentWidget();
  const QPoint below(60, 132);  // Of the link, the button leaves the lowest three pixels bare.
  EXPECT_EQ(content->childAt(below), nullptr) << "a covered link takes no mouse";
  document->SetOpenable(false);
  EXPECT_EQ(content->childAt(below), &Child(*document, "StaticText4"));
  const auto notice = NewWindow<UpdateWin>();
  EXPECT_EQ(notice->Canvas1().Backdrop(), pictures::icon48());
  for (Label* link : {&document->StaticText4(), &notice->Label2()}) {
    const Window& window = link->Owner();
    auto* surface = Widget(window).windowHandle();
    const QPoint inside = Middle(window, link->Design().Name);
    const QPoint outside = Widget(window).rect().bottomRight();
    const auto colorAt = [&](QPoint mouse) {
      QTest::mouseMove(surface, mouse);
      return Child(window, link->Design().Name).palette().color(QPalette::WindowText);
    };
    EXPECT_EQ(colorAt(outside), QColor(Qt::blue));
    EXPECT_EQ(colorAt(inside), QColor(Qt::red));
    EXPECT_EQ(colorAt(outside), QColor(Qt::blue));

    QTest::mousePress(surface, Qt::LeftButton, {}, inside);
    EXPECT_EQ(host.urls, Lines{});
    QTest::mouseRelease(surface, Qt::LeftButton, {}, outside);
    EXPECT_EQ(std::exchange(host.urls, {}), page);
  }
}

TEST_F(QtHostTest, ReturnInTheNoticeOpensTheDownloadWhateverHasTheFocus) {
  for (const char* focused : {"PushButton1", "Label2"}) {
    const auto notice = NewWindow<UpdateWin>();
    Child(*notice, focused).setFocus();
    EXPECT_EQ(Press(*notice, Qt::Key_Return), "closed") << focused;
    EXPECT_EQ(std::exchange(host.urls, {}), Lines{page.front() + "download/download.php?id=3"});
  }
  const auto notice = NewWindow<UpdateWin>();
  Child(*notice, "PushButton1").setFocus();
  EXPECT_EQ(Press(*notice, Qt::Key_Space), "closed");
  EXPECT_EQ(host.urls, Lines{}) << "the other button only closes the notice";
}

TEST_F(QtHostTest, EveryMenuItemCanBeReachedByKeys) {
  const auto other = NewWindow<Window1>();
  app->AddMenuHandler("kono", [&] {
    app->story.emplace_back("about");
    return false;
  });
  for (int windows = 2; windows > 0; --windows) {
    const auto window = NewWindow<Window1>();
    QTest::keyClick(&Widget(*window), Qt::Key_F10);
    for (const auto key : {Qt::Key_Right, Qt::Key_Up, Qt::Key_Return}) {
      ASSERT_NE(QApplication::activePopupWidget(), nullptr);
      QTest::keyClick(QApplication::activePopupWidget(), key);
    }
    EXPECT_EQ(std::exchange(app->story, {}), Lines{"about"});
    if (other->IsOpen()) other->Close();
  }
}

TEST_F(QtHostTest, TheStandInNamesWhatWasLeftAsideAndYieldsTheFocus) {
  const auto line = [&] { return host.StandIn()->findChild<QLabel*>()->text().toStdString(); };
  const auto shows = [&](const std::string& text) {
    return QTest::qWaitFor([&] { return host.StandIn() != nullptr && line() == text; });
  };
  const std::string hint = "ここに書類をドロップするか、メニューから開いてください。";
  app->onOpen = [&] {
    QTimer::singleShot(0, [&] {
      EXPECT_TRUE(shows(hint));
      EXPECT_FALSE(host.StandIn()->testAttribute(Qt::WA_ShowWithoutActivating));
      host.HandOver(FolderItem("/<b>\n.indt"));
      EXPECT_TRUE(shows("「<b>\uFFFD.indt」は書類ではないため、開きませんでした。"));
      host.HandOver(FolderItem("/"));
      host.HandOver(FolderItem("/c"));
      EXPECT_TRUE(shows("「<b>\uFFFD.indt」ほか2件は書類ではないため、開きませんでした。"));
      const auto document = NewWindow<Window1>();
      EXPECT_EQ(host.StandIn(), nullptr);
      desktop::YieldFocus();
      document->Close();
      EXPECT_TRUE(shows(hint));
      EXPECT_TRUE(host.StandIn()->testAttribute(Qt::WA_ShowWithoutActivating));
      desktop::Quit(0);
    });
  };
  host.Run();
}

}  // namespace
}  // namespace vintrace::test
