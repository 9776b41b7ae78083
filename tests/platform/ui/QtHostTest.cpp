// The program with real widgets, without a screen.

#include "platform/ui/qt/QtHost.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QFileOpenEvent>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <deque>

#include "online/UpdateWin.h"
#include "platform/text/Exceptions.h"
#include "platform/ui/Application.h"
#include "platform/ui/Desktop.h"
#include "platform/ui/qt/widgets/PictureIcon.h"
#include "platform/ui/qt/widgets/WindowWidget.h"
#include "resources/Endpoints.h"
#include "resources/Pictures.h"
#include "shell/App.h"
#include "shell/MainMenuBar.h"
#include "shell/Window1.h"
#include "shell/Window2.h"

namespace vintrace::test {
namespace {

using online::UpdateWin;
using Lines = std::vector<std::string>;

/// The real host, except that it records addresses instead of opening a browser.
class HostUnderTest : public qt::QtHost {
 public:
  HostUnderTest() : QtHost(argv_) {}
  void ShowURL(const String& url) override { urls.push_back(url); }
  Lines urls;

 private:
  inline static char name_[] = "vintrace";
  inline static char* argv_[] = {name_, nullptr};
};

/// Records its events and lets a test handle them.
class TracingApplication : public App {
 public:
  Lines story;
  std::function<void()> onOpen;
  std::function<void()> onDocument;

  void Event_Open() override {
    story.emplace_back("open");
    if (onOpen) onOpen();
  }
  void Event_OpenDocument(const std::optional<FolderItem>& item) override {
    story.push_back("document " + item->NativePath());
    if (onDocument) onDocument();
  }
};

class QtHostTest : public testing::Test {
 protected:
  QtHostTest() {
    auto application = std::make_unique<TracingApplication>();
    application->SetMenuBar(MainMenuBar::Instance());
    app = application.get();
    host._RuntimeRegisterAppObject(std::move(application));
    _RuntimeSetExceptionHelper(_CallFunctionWithExceptionHandling);
  }

  /// Opens a window and waits until it is active.
  template <class Kind>
  std::shared_ptr<Kind> NewWindow() {
    auto window = Window::New<Kind>();
    QWidget& widget = Widget(*window);
    EXPECT_TRUE(QTest::qWaitFor([&widget] { return widget.isVisible(); }));
    EXPECT_TRUE(QTest::qWaitForWindowActive(&widget));
    return window;
  }

  qt::WindowWidget& Widget(const Window& window) { return *host.WidgetOf(window); }

  template <class Kind = QWidget>
  Kind& Child(const Window& window, std::string_view name) {
    return *Widget(window).findChild<Kind*>(QString::fromStdString(std::string(name)));
  }

  /// The centre of the control `name`, in coordinates of its window.
  QPoint Middle(const Window& window, std::string_view name) {
    const QWidget& control = Child(window, name);
    return control.mapTo(&Widget(window), control.rect().center());
  }

  /// Presses the key and returns the name of the widget that then has the focus, or "closed".
  std::string Press(const Window& window, Qt::Key key) {
    QTest::keyClick(Widget(window).focusWidget(), key);
    return window.IsOpen() ? Widget(window).focusWidget()->objectName().toStdString() : "closed";
  }

  HostUnderTest host;
  TracingApplication* app = nullptr;
  const Lines page{std::string(endpoints::WebPage)};
};

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
  document->SetOpenable(false);
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

TEST_F(QtHostTest, TextsArePlainSanitizedAndElided) {
  const auto window = NewWindow<Window1>();
  window->SetDocumentName("<b>[*]&\n\xFF.indd");
  EXPECT_EQ(Widget(*window).windowHandle()->title(), "<b>[*]&\uFFFD\uFFFD.indd");
  EXPECT_FALSE(Child(*window, "Label1").isVisible());

  window->SetBuildText(String("8.\0\n<b>\xFF\x1B", 9));
  const auto& label = Child<QLabel>(*window, "StaticText5");
  EXPECT_EQ(label.text(), "8.\uFFFD\uFFFD<b>\uFFFD\uFFFD");
  EXPECT_EQ(label.textFormat(), Qt::PlainText);

  window->SetProductText(String(200, 'w') + "<i>");
  const auto& tooLong = Child<QLabel>(*window, "StaticText2");
  EXPECT_TRUE(tooLong.text().endsWith(QChar(0x2026)));
  EXPECT_LE(tooLong.fontMetrics().horizontalAdvance(tooLong.text()), tooLong.width());
  EXPECT_TRUE(tooLong.toolTip().contains("&lt;i&gt;"));
}

TEST_F(QtHostTest, PicturesAreDrawnUnscaledOnNormalAndHighDpiScreens) {
  const auto window = NewWindow<Window1>();
  const auto decoded = [](std::string_view png, QImage::Format format) {
    return QImage::fromData(QByteArrayView(png)).convertToFormat(format);
  };
  const auto picture = pictures::und();
  window->SetPicture("und");
  QImage drawn(48, 48, QImage::Format_ARGB32_Premultiplied);
  drawn.fill(Qt::transparent);
  Child(*window, "Canvas1").render(&drawn, {}, {}, {});
  EXPECT_EQ(drawn, decoded(picture->Png(), drawn.format()));
  const QImage dense = qt::IconOf(*picture).pixmap({48, 48}, 2.0).toImage();
  EXPECT_EQ(dense, decoded(picture->PngAt2x(), dense.format()));
}

TEST_F(QtHostTest, AllTextsAreAccessibleAndALinkHasAPressAction) {
  const auto document = NewWindow<Window1>();
  document->SetOpenable(false);
  auto* link = QAccessible::queryAccessibleInterface(&Child(*document, "StaticText4"));
  EXPECT_EQ(link->role(), QAccessible::Link);
  link->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_EQ(host.urls, page);
  NewWindow<UpdateWin>();
  NewWindow<Window2>();
  std::string texts;
  for (int index = 0; const auto window = desktop::Window(index); ++index) {
    for (const auto& control : window->Controls()) {
      const auto name = control->Design().Name;
      auto* told = QAccessible::queryAccessibleInterface(&Child(*window, name));
      texts += told->text(QAccessible::Name).toStdString() + '|';
      EXPECT_EQ(told->role() == QAccessible::Graphic, name == "Canvas1");
    }
  }
  for (const auto* menu : Widget(*document).findChild<QMenuBar*>()->actions()) {
    texts += menu->text().toStdString() + '|';
    for (const auto* item : menu->menu()->actions()) {
      texts += (item->text() + item->shortcut().toString() + '|').toStdString();
    }
  }
  const std::string site = page.front();
  EXPECT_EQ(texts,
            site.substr(0, site.size() - 1) + '|' + std::string(endpoints::Mail) +
                "|Ver. 1.20|I check the last making application version of documents made after "
                "InDesign CS.|新しいバージョンが公開されています。|閉じる|最新版をダウンロード|"
                "サイトを見に行く " +
                site +
                "|Vintraceのアイコン|閉じる|Vintrace CS|Adobe InDesign CS3|Macintosh Edition|"
                "サブバージョン不明|ファイル名|製品のアイコン|" +
                site +
                "|該当バージョンで開く|ファイル|開くCtrl+O|終了Ctrl+Q|編集|コピーCtrl+C|"
                "全てコピーCtrl+Alt+C|閉じるCtrl+W|全て閉じるCtrl+Alt+W|Update CheckCtrl+R||"
                "Vintrace ...|");
}

}  // namespace
}  // namespace vintrace::test
