// The program on real widgets, without a screen.

#include "platform/qt/QtHost.h"

#include <gtest/gtest.h>

#include <QFileOpenEvent>
#include <QLabel>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <array>

#include "platform/Desktop.h"
#include "platform/Exceptions.h"
#include "platform/qt/ContentWidget.h"
#include "platform/qt/PictureIcon.h"
#include "platform/qt/WindowWidget.h"
#include "resources/Endpoints.h"
#include "shell/MainMenuBar.h"
#include "shell/Window1.h"
#include "support/HostUnderTest.h"

namespace vintrace::test {
namespace {

/// Tells what is raised in it.
class TracingApplication : public Application {
 public:
  explicit TracingApplication(Lines& story) : story_(story) {}
  std::function<void()> onOpen;
  std::function<void()> onDocument;

 protected:
  void Event_Open() override {
    story_.emplace_back("open");
    if (onOpen) onOpen();
  }
  void Event_OpenDocument(const std::optional<FolderItem>& item) override {
    story_.push_back("document " + item->NativePath());
    if (onDocument) onDocument();
    story_.push_back("done");
  }

 private:
  Lines& story_;
};

class QtHostTest : public testing::Test {
 protected:
  /// The host of a program that was started with these documents.
  HostUnderTest& Start(const Lines& documents = {}) {
    host_.emplace();
    for (const auto& document : documents) host_->HandOver(FolderItem(document));
    auto application = std::make_unique<TracingApplication>(story);
    application->SetMenuBar(MainMenuBar::Instance());
    app = application.get();
    host_->_RuntimeRegisterAppObject(std::move(application));
    return *host_;
  }

  /// A shown window of the document `name`.
  std::shared_ptr<Window1> NewWindow(const String& name) {
    auto window = Window::New<Window1>();
    window->SetTitle(name);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Widget(*window).isVisible(); }));
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&Widget(*window)));
    return window;
  }

  qt::WindowWidget& Widget(const Window& window) { return *host_->WidgetOf(window); }

  /// A place of the content as a place of the whole window, which may carry the menu bar.
  QPoint Place(const Window& window, QPoint place) {
    return Widget(window).Content().mapTo(&Widget(window), place);
  }

  template <class W = QWidget>
  W& Child(const Window& window, const char* name) {
    return *Widget(window).findChild<W*>(name);
  }

  /// Presses the button of the message box that comes up, and hands its text to `seen`.
  static void AnswerBox(const std::function<void(QMessageBox&)>& seen) {
    QTimer::singleShot(0, [seen] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      ASSERT_NE(box, nullptr);
      seen(*box);
      box->buttons().constFirst()->click();
    });
  }

  Lines story;
  TracingApplication* app = nullptr;

 private:
  std::optional<HostUnderTest> host_;
};

struct ControlCase {
  const char* name;
  QRect place;
  int tabIndex;
  const char* text;
  int pixelSize;
};

TEST_F(QtHostTest, Window1HasItsControlsWhereTheyBelong) {
  Start();
  const auto window = NewWindow("a.indd");
  const QWidget& widget = Widget(*window);
  EXPECT_EQ(Widget(*window).Content().size(), QSize(280, 150));
  EXPECT_EQ(widget.minimumSize(), widget.maximumSize());
  EXPECT_EQ(widget.windowTitle(), "a.indd");
  EXPECT_TRUE(widget.windowFlags().testFlag(Qt::WindowCloseButtonHint));
  EXPECT_FALSE(widget.windowFlags().testFlag(Qt::WindowMinimizeButtonHint));
  EXPECT_FALSE(widget.windowFlags().testFlag(Qt::WindowMaximizeButtonHint));

  const ControlCase cases[] = {
      {"PushButton2", {183, 111, 69, 20}, 0, "閉じる", 12},
      {"StaticText1", {20, 10, 240, 20}, 1, "Vintrace CS", 12},
      {"StaticText2", {104, 38, 161, 20}, 2, "Adobe InDesign CS3", 12},
      {"StaticText3", {105, 57, 137, 18}, 4, "Macintosh Edition", 10},
      {"StaticText5", {105, 78, 160, 25}, 6, "サブバージョン不明", 14},
      {"Label1", {183, 12, 91, 20}, 7, "ファイル名", 0},
      {"Canvas1", {34, 38, 48, 48}, 3, "", 0},
      {"StaticText4", {20, 114, 114, 20}, 5, endpoints::WebPage.data(), 12},
      {"PushButton3", {20, 111, 142, 20}, 8, "該当バージョンで開く", 12},
  };
  int index = 0;
  for (const auto& [name, place, tabIndex, text, pixelSize] : cases) {
    SCOPED_TRACE(name);
    QWidget& control = Child(*window, name);
    EXPECT_EQ(window->Control(index)->Design().name, name);
    EXPECT_EQ(window->Control(index++)->Design().tabIndex, tabIndex);
    EXPECT_EQ(control.geometry(), place);
    EXPECT_EQ(control.isVisible(), control.objectName() != "Label1");
    EXPECT_EQ(control.isEnabled(), control.objectName() != "Label1");
    EXPECT_EQ(control.property("text").toString().toStdString(), text);
    EXPECT_EQ(control.font().pixelSize(), pixelSize > 0 ? pixelSize : QFont().pixelSize());
  }
}

TEST_F(QtHostTest, TheTabKeyGoesRoundByTabIndex) {
  Start();
  const auto window = NewWindow("a.indd");
  const auto stops = [&] {
    QStringList names;
    for (int i = 0; i < 3; ++i) {
      QTest::keyClick(&Widget(*window), Qt::Key_Tab);
      names.push_back(Widget(*window).focusWidget()->objectName());
    }
    return names;
  };
  EXPECT_EQ(stops(), QStringList({"PushButton2", "PushButton3", "PushButton2"}))
      << "the link is covered by a button";
  Widget(*window).setFocus();
  window->SetOpenable(false);
  EXPECT_EQ(stops(), QStringList({"PushButton2", "StaticText4", "PushButton2"}));
}

TEST_F(QtHostTest, TheButtonCoversTheLinkUntilItIsHidden) {
  auto& host = Start();
  const auto window = NewWindow("a.indd");
  const QPoint middle = Place(*window, Child(*window, "StaticText4").geometry().center());
  int presses = 0;
  window->PushButton3().Action = [&] { ++presses; };
  QTest::mouseClick(Widget(*window).windowHandle(), Qt::LeftButton, {}, middle);
  EXPECT_EQ(host.urls, Lines{});
  EXPECT_EQ(presses, 1);
  window->SetOpenable(false);
  QTest::mouseClick(Widget(*window).windowHandle(), Qt::LeftButton, {}, middle);
  EXPECT_EQ(host.urls, Lines{std::string(endpoints::WebPage)});
}

TEST_F(QtHostTest, TheLinkFollowsTheMouse) {
  auto& host = Start();
  const auto window = NewWindow("a.indd");
  window->SetOpenable(false);
  const auto& link = Child<QLabel>(*window, "StaticText4");
  auto* surface = Widget(*window).windowHandle();
  const auto color = [&] { return link.palette().color(QPalette::WindowText); };
  const QPoint inside = Place(*window, link.geometry().center());
  const QPoint outside = Place(*window, {270, 5});

  EXPECT_EQ(color(), QColor(0, 0, 255));
  QTest::mouseMove(surface, inside);
  EXPECT_EQ(color(), QColor(255, 0, 0));
  QTest::mouseMove(surface, outside);
  EXPECT_EQ(color(), QColor(0, 0, 255));

  // A release away from the link still follows it; the other buttons, and a label that refuses the
  // press, do nothing.
  QTest::mouseClick(surface, Qt::RightButton, {}, inside);
  window->StaticText4().MouseDown = [] { return false; };
  QTest::mouseClick(surface, Qt::LeftButton, {}, inside);
  window->StaticText4().MouseDown = [] { return true; };
  QTest::mousePress(surface, Qt::LeftButton, {}, inside);
  EXPECT_EQ(host.urls, Lines{});
  QTest::mouseRelease(surface, Qt::LeftButton, {}, outside);
  EXPECT_EQ(host.urls.size(), 1U);
  EXPECT_FALSE(link.font().underline());
}

TEST_F(QtHostTest, HostileTextsAreDrawnSafelyAndGivenBackUnchanged) {
  Start();
  const String build("8.\0\n<b>\xFF\x1B", 9);
  const auto window = NewWindow("<b>[*]&\n\xFF.indd");
  window->SetBuildText(build);
  EXPECT_EQ(window->BuildText(), build);
  const auto& label = Child<QLabel>(*window, "StaticText5");
  EXPECT_EQ(label.text(), "8.\uFFFD\uFFFD<b>\uFFFD\uFFFD");
  EXPECT_EQ(label.textFormat(), Qt::PlainText);
  EXPECT_EQ(Widget(*window).windowTitle(), "<b>[*][*]&\uFFFD\uFFFD.indd");
  EXPECT_EQ(Widget(*window).windowHandle()->title(), "<b>[*]&\uFFFD\uFFFD.indd");
}

TEST_F(QtHostTest, ATextTooLongForItsPlaceEndsInAnEllipsis) {
  Start();
  const auto window = NewWindow("a.indd");
  const String text = String(200, 'w') + "<i>";
  window->SetProductText(text);
  const auto& label = Child<QLabel>(*window, "StaticText2");
  EXPECT_TRUE(label.text().endsWith(QChar(0x2026)));
  EXPECT_LE(label.fontMetrics().horizontalAdvance(label.text()), label.width());
  EXPECT_TRUE(label.toolTip().contains("&lt;i&gt;"));
  EXPECT_EQ(window->StaticText2().Text(), text);
}

QImage Decoded(std::string_view png) {
  return QImage::fromData(QByteArray(png.data(), static_cast<qsizetype>(png.size())), "PNG");
}

/// The picture on the ground of the windows.
QImage OnGround(const QImage& picture) {
  QImage image(picture.size(), QImage::Format_RGB32);
  image.fill(QColor(0xEC, 0xEC, 0xEC));
  QPainter(&image).drawImage(0, 0, picture);
  return image;
}

TEST_F(QtHostTest, ThePictureIsDrawnInItsPlaceAndFinerOnDenseScreens) {
  Start();
  const auto window = NewWindow("a.indd");
  const QRect place = Child(*window, "Canvas1").geometry();
  const auto shown = [&] {
    return Widget(*window).Content().grab(place).toImage().convertToFormat(QImage::Format_RGB32);
  };
  for (const auto accessor : {pictures::cs6, pictures::und}) {
    const auto picture = accessor();
    window->SetPicture(accessor);
    EXPECT_EQ(shown(), OnGround(Decoded(picture->Png())));
    QImage dense = qt::IconOf(*picture).pixmap(place.size(), 2.0).toImage();
    dense.setDevicePixelRatio(1);
    EXPECT_EQ(OnGround(dense), OnGround(Decoded(picture->PngAt2x())));
  }
}

TEST_F(QtHostTest, APressInAWindowBehindBringsItToTheFrontBeforeItActs) {
  auto& host = Start();
  const auto a = NewWindow("a.indd");
  const auto b = NewWindow("b.indd");
  ASSERT_EQ(host.Windows().At(0), b);
  QTest::mouseClick(&Child(*a, "PushButton2"), Qt::LeftButton);
  EXPECT_FALSE(a->IsOpen());
  EXPECT_TRUE(b->IsOpen());
}

TEST_F(QtHostTest, TheWindowThatIsActivatedComesToTheFront) {
  auto& host = Start();
  const auto a = NewWindow("a.indd");
  const auto b = NewWindow("b.indd");
  ASSERT_TRUE(QTest::qWaitForWindowActive(&Widget(*b)));
  Widget(*a).activateWindow();
  EXPECT_TRUE(QTest::qWaitFor([&] { return host.Windows().At(0) == a; }));
}

TEST_F(QtHostTest, TheCloseBoxClosesAndLeavesTheOthers) {
  auto& host = Start();
  const auto a = NewWindow("a.indd");
  const auto b = NewWindow("b.indd");
  Widget(*b).close();
  EXPECT_FALSE(b->IsOpen());
  EXPECT_EQ(host.Windows().At(0), a);
  EXPECT_EQ(host.WidgetOf(*b), nullptr);
}

TEST_F(QtHostTest, DocumentsOfTheStartComeBeforeItIsOverInOrderAsBytes) {
  auto& host = Start({"/tmp/a.indd", "/tmp/\xFF\n.indd"});
  app->onOpen = [] { desktop::Quit(3); };
  host.Run();
  EXPECT_EQ(story,
            (Lines{"document /tmp/a.indd", "done", "document /tmp/\xFF\n.indd", "done", "open"}));
  EXPECT_EQ(host.ExitStatus(), 3);
}

TEST_F(QtHostTest, WhileABoxIsOpenNoDocumentIsHandedOver) {
  auto& host = Start({"/a.indd", "/b.indd"});
  Lines shown;
  app->onDocument = [&] {
    if (story.back() == "document /b.indd") return desktop::Quit(0);
    AnswerBox([&](QMessageBox& box) {
      host.HandOver(FolderItem("/c.indd"));
      // The loop of the box comes round, and a document that didn't wait would come.
      for (int round = 0; round < 3; ++round) QCoreApplication::processEvents();
      shown.push_back(box.text().toStdString());
      EXPECT_EQ(box.textFormat(), Qt::PlainText);
    });
    desktop::MsgBox("<b>一</b>\n\x1B二");
  };
  host.Run();
  EXPECT_EQ(shown, Lines{"<b>一</b>\n\uFFFD二"});
  EXPECT_EQ(story, (Lines{"document /a.indd", "done", "document /b.indd", "done"}))
      << "and what waits when the program quits is dropped";
}

/// Counts how often what it watches is drawn.
class PaintCounter : public QObject {
 public:
  int paints = 0;
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++paints;
    return false;
  }
};

TEST_F(QtHostTest, EachWindowOfTheStartIsDrawnBeforeWhatComesNext) {
  auto& host = Start({"/a.indd", "/b.indd"});
  std::array<PaintCounter, 2> counters;
  std::size_t opened = 0;
  const auto expectDrawn = [&] {
    for (std::size_t i = 0; i < opened; ++i) EXPECT_GT(counters.at(i).paints, 0);
  };
  app->onDocument = [&] {
    expectDrawn();
    Child(*Window::New<Window1>(), "PushButton3").installEventFilter(&counters.at(opened++));
  };
  app->onOpen = [&] {
    EXPECT_EQ(opened, 2U);
    expectDrawn();
    desktop::Quit(0);
  };
  host.Run();
}

TEST_F(QtHostTest, WhatBreaksInAnEventIsReportedAndTheNextOneComes) {
  auto& host = Start({"/a.indd", "/b.indd"});
  std::string report;
  app->onDocument = [&] {
    if (story.back() == "document /b.indd") return desktop::Quit(0);
    AnswerBox([&](QMessageBox& box) { report = box.text().toStdString(); });
    throw RuntimeException("broken");
  };
  host.Run();
  EXPECT_EQ(report, "予期しないエラーが起こりました。\nbroken");
  EXPECT_EQ(story.size(), 3U);
}

TEST_F(QtHostTest, TheSystemsOwnEventHandsOverADocument) {
  auto& host = Start();
  app->onDocument = [] { desktop::Quit(0); };
  QFileOpenEvent event(QString("/二.indd"));
  QApplication::sendEvent(qApp, &event);
  host.Run();
  EXPECT_EQ(story, (Lines{"document /二.indd", "done"}));
}

TEST_F(QtHostTest, ClosingTheLastWindowByItsBoxDoesNotEndTheProgram) {
  auto& host = Start({"/first.indd"});
  std::shared_ptr<Window1> window;
  app->onDocument = [&] {
    if (window) return desktop::Quit(5);
    window = Window::New<Window1>();
    QTimer::singleShot(0, [&] {
      ASSERT_TRUE(Widget(*window).isVisible());
      Widget(*window).close();
      // Another document comes when the loop has come round, in which it would have ended.
      QTimer::singleShot(
          0, [&] { QTimer::singleShot(0, [&] { host.HandOver(FolderItem("/second.indd")); }); });
    });
  };
  host.Run();
  EXPECT_EQ(host.ExitStatus(), 5);
}

TEST_F(QtHostTest, TheSystemsQuitRequestEndsTheProgramWithItsWindows) {
  auto& host = Start();
  const auto window = NewWindow("a.indd");
  QTimer::singleShot(0, [] { QApplication::quit(); });
  host.Run();
  EXPECT_EQ(host.ExitStatus(), 0);
}

}  // namespace
}  // namespace vintrace::test
