// The menu bar, its commands and the about window on real widgets, with real keys and the real
// clipboard.

#include <gtest/gtest.h>

#include <QAccessible>
#include <QClipboard>
#include <QDropEvent>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QTest>
#include <QTimer>

#include "platform/Desktop.h"
#include "platform/qt/ContentWidget.h"
#include "platform/qt/DroppedFiles.h"
#include "platform/qt/WindowWidget.h"
#include "resources/Endpoints.h"
#include "shell/App.h"
#include "shell/MainMenuBar.h"
#include "shell/Startup.h"
#include "shell/Window1.h"
#include "shell/Window2.h"
#include "support/DocumentBuilder.h"
#include "support/Environment.h"
#include "support/HostUnderTest.h"
#include "support/TemporaryFolder.h"

namespace vintrace::test {
namespace {

/// The program on the real host.
class QtCommandsTest : public testing::Test {
 protected:
  QtCommandsTest() { _EarlyStartup(); }

  /// Runs the program, and the user's `story` in it once it has started.
  void Run(const std::function<void()>& story) {
    QTimer start;
    QObject::connect(&start, &QTimer::timeout, [&] {
      if (!App::Instance().myf) return;
      start.stop();
      story();
      desktop::Quit(0);
    });
    start.start(0);
    host.Run();
  }

  FolderItem Document(std::string_view name) const {
    return folder.File(
        name, DocumentBuilder(BodyStart + 500).Release(8).Saved(BodyStart, 1, "0.0.424").Bytes());
  }

  void AwaitActive(const Window& window) {
    EXPECT_TRUE(QTest::qWaitFor([&] { return Widget(window).isVisible(); }));
    EXPECT_TRUE(QTest::qWaitForWindowActive(&Widget(window)));
  }

  std::shared_ptr<Window1> NewWindow(const String& name) {
    auto window = Window::New<Window1>();
    window->SetDocumentName(name);
    AwaitActive(*window);
    return window;
  }

  std::shared_ptr<Window2> AboutWindow() {
    auto about = Window2::Instance();
    AwaitActive(*about);
    return about;
  }

  qt::WindowWidget& Widget(const Window& window) { return *host.WidgetOf(window); }
  QWidget& Child(const Window& window, const char* name) {
    return *Widget(window).findChild<QWidget*>(name);
  }

  bool StandInComes() {
    return QTest::qWaitFor([&] { return host.StandIn() != nullptr; });
  }

  /// Presses keys that lead to a message box, dismisses that, and gives its text.
  static std::string MessageAfter(QWidget& window, Qt::Key key, Qt::KeyboardModifiers modifiers) {
    std::string text;
    QTimer::singleShot(0, [&] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (box == nullptr) return;
      text = box->text().toStdString();
      QTest::keyClick(box, Qt::Key_Return);
    });
    QTest::keyClick(&window, key, modifiers);
    QCoreApplication::processEvents();
    return text;
  }

  static std::string ClipboardText() { return QApplication::clipboard()->text().toStdString(); }

  const TemporaryFolder folder;
  const Environment dataHome{"XDG_DATA_HOME", folder.Path().c_str()};
  HostUnderTest host;
};

QAction* ItemNamed(const QWidget& window, const QString& name) {
  for (const QAction* menu : window.findChild<QMenuBar*>()->actions()) {
    for (QAction* item : menu->menu()->actions()) {
      if (item->objectName() == name) return item;
    }
  }
  return nullptr;
}

constexpr Qt::KeyboardModifiers Cmd = Qt::ControlModifier;
constexpr Qt::KeyboardModifiers CmdOption = Qt::ControlModifier | Qt::AltModifier;

TEST_F(QtCommandsTest, KeysCopyAndCloseWithoutAMenuBeingOpened) {
  const auto a = NewWindow("a");
  const auto b = NewWindow("b");
  const String row = "\tAdobe InDesign CS3\tMacintosh Edition\tサブバージョン不明";
  EXPECT_EQ(MessageAfter(Widget(*b), Qt::Key_C, Cmd), "bの情報をコピーしました");
  EXPECT_EQ(ClipboardText(), "b" + row);
  Widget(*a).activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&Widget(*a)));
  EXPECT_NE(MessageAfter(Widget(*a), Qt::Key_C, CmdOption), "");
  EXPECT_EQ(ClipboardText(), "a" + row + "\nb" + row + "\n");

  Widget(*a).activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&Widget(*a)));
  QTest::keyClick(&Widget(*a), Qt::Key_W, Cmd);
  EXPECT_FALSE(a->IsOpen());
  EXPECT_TRUE(b->IsOpen());
  const auto c = NewWindow("c");
  QTest::keyClick(&Widget(*c), Qt::Key_W, CmdOption);
  EXPECT_EQ(desktop::WindowCount(), 0);
}

TEST_F(QtCommandsTest, TheClipboardHoldsEveryCharacterOfARow) {
  const auto window = NewWindow("\uFEFFa");
  MessageAfter(Widget(*window), Qt::Key_C, Cmd);
  EXPECT_TRUE(ClipboardText().starts_with("\uFEFFa\t")) << ClipboardText();
}

TEST_F(QtCommandsTest, TheAboutWindowStaysInFrontOfADocumentThatComes) {
  const auto behind = NewWindow("behind");
  const auto about = AboutWindow();
  const auto document = Window::New<Window1>();
  ASSERT_TRUE(QTest::qWaitFor([&] { return Widget(*document).isVisible(); }));
  EXPECT_EQ(desktop::Window(0), about);
  EXPECT_TRUE(QTest::qWaitForWindowActive(&Widget(*about)));
  EXPECT_FALSE(ItemNamed(Widget(*document), "clcopy")->isEnabled());
}

/// Enables and takes the copy command, or doesn't.
class Choosy : public Window1 {
 public:
  bool enables = false;
  int copies = 0;
  void Event_EnableMenuItems() override {
    if (enables) clcopy().Enable();
  }
  bool _clcopy_Action() override { return ++copies == 0; }
};

TEST_F(QtCommandsTest, AShortcutObeysWhatIsEnabledAtThatMoment) {
  const auto window = Window::New<Choosy>();
  AwaitActive(*window);
  for (const bool enables : {false, true, false, true}) {
    window->enables = enables;
    window->copies = 0;
    QTest::keyClick(&Widget(*window), Qt::Key_C, Cmd);
    EXPECT_EQ(window->copies, enables ? 1 : 0);
  }
}

TEST_F(QtCommandsTest, TheBarIsShownAboveTheContentWithTheStateOfTheMoment) {
  const auto window = NewWindow("a");
  const auto* bar = Widget(*window).findChild<QMenuBar*>();
  ASSERT_NE(bar, nullptr);
  EXPECT_EQ(bar->geometry().top(), 0);
  EXPECT_EQ(Widget(*window).Content().geometry(), QRect(0, bar->height(), 280, 150));

  QMenu* edit = bar->actions().at(1)->menu();
  const QAction* copy = ItemNamed(Widget(*window), "clcopy");
  EXPECT_EQ(copy->text(), "コピー");
  EXPECT_TRUE(copy->isEnabled());
  Window2::Instance();  // In front now, though not on the screen yet.
  emit edit->aboutToShow();
  EXPECT_FALSE(copy->isEnabled());
}

TEST_F(QtCommandsTest, NothingIsMovedToAnotherMenuByItsText) {
  const auto window = NewWindow("a");
  for (const QAction* menu : Widget(*window).findChild<QMenuBar*>()->actions()) {
    EXPECT_EQ(menu->menuRole(), QAction::NoRole);
    for (const QAction* item : menu->menu()->actions()) {
      const auto role = item->objectName() == "kono"       ? QAction::ApplicationSpecificRole
                        : item->objectName() == "FileQuit" ? QAction::QuitRole
                                                           : QAction::NoRole;
      EXPECT_EQ(item->menuRole(), role) << item->text().toStdString();
    }
  }
}

TEST_F(QtCommandsTest, AWindowStandsInForTheBarWhileNoDocumentIsOpen) {
  Run([&] {
    ASSERT_TRUE(StandInComes());
    EXPECT_EQ(desktop::WindowCount(), 0);
    EXPECT_EQ(host.StandIn()->windowTitle(), "Vintrace");
    EXPECT_FALSE(ItemNamed(*host.StandIn(), "clcopy")->isEnabled());
    EXPECT_TRUE(ItemNamed(*host.StandIn(), "kono")->isEnabled());
    ItemNamed(*host.StandIn(), "kono")->trigger();
    const auto about = AboutWindow();
    EXPECT_NE(host.StandIn(), nullptr) << "the about window carries no bar";
    about->Close();

    host.HandOver(Document("a.indd"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return host.StandIn() == nullptr; }));
    ASSERT_EQ(desktop::WindowCount(), 1);
    EXPECT_TRUE(Widget(*desktop::Window(0)).isVisible());
    desktop::Window(0)->Close();
    EXPECT_TRUE(StandInComes());
  });
}

TEST_F(QtCommandsTest, AStartWithDocumentsNeverShowsTheStandIn) {
  host.HandOver(Document("a.indd"));
  host.HandOver(Document("b.indd"));
  bool seen = false;
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, [&] { seen = seen || host.StandIn() != nullptr; });
  watch.start(0);
  Run([&] {
    EXPECT_TRUE(QTest::qWaitFor([] { return desktop::WindowCount() == 2; }));
    EXPECT_FALSE(seen);
  });
}

TEST_F(QtCommandsTest, ClosingTheStandInQuits) {
  bool quit = true;
  QTimer::singleShot(3000, [&] {
    quit = false;
    desktop::Quit(0);
  });
  QTimer::singleShot(0, [&] {
    ASSERT_TRUE(StandInComes());
    host.StandIn()->close();
  });
  host.Run();
  EXPECT_TRUE(quit);
}

TEST_F(QtCommandsTest, WhatIsDroppedOnTheStandInIsOpenedAndWindowsRefuseIt) {
  const auto a = Document("a.indd");
  const auto bytes = Document("\xFF\n.indd");
  const auto addressOf = [](const FolderItem& file) {
    return "file://" + QByteArray::fromStdString(file.NativePath()).toPercentEncoding("/");
  };
  QMimeData data;
  data.setData("text/uri-list", addressOf(a) + "\r\n" + addressOf(bytes) + "\r\n");
  const auto drop = [&](QWidget& on) {
    QDragEnterEvent enter({5, 5}, Qt::MoveAction | Qt::CopyAction, &data, Qt::LeftButton, {});
    enter.ignore();
    QApplication::sendEvent(&on, &enter);
    if (!enter.isAccepted()) return Qt::IgnoreAction;
    QDropEvent event({5, 5}, Qt::MoveAction | Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(&on, &event);
    return event.dropAction();
  };
  Run([&] {
    ASSERT_TRUE(StandInComes());
    EXPECT_EQ(drop(*host.StandIn()), Qt::CopyAction);
    EXPECT_TRUE(QTest::qWaitFor([] { return desktop::WindowCount() == 2; }));
    EXPECT_EQ(desktop::Window(0)->Title(), "\xFF\n.indd");
    EXPECT_EQ(desktop::Window(1)->Title(), "a.indd");
    EXPECT_EQ(drop(Widget(*desktop::Window(0))), Qt::IgnoreAction);
    EXPECT_FALSE(Widget(*AboutWindow()).acceptDrops());
  });
}

TEST(FilesOf, TakesTheFilesOfThisComputerAsBytes) {
  const QByteArray list =
      "# file:///comment\r\n"
      "file:///tmp/a%20b.indd\r\n"
      "FILE://localhost/%FF%0A.indd\n"
      "file:/old%2Fway\n"
      "\n"
      "file://elsewhere.example/x.indd\r\n"
      "file:///cut%00short\r\n"
      "file:relative\r\n"
      "file://\r\n"
      "http://vt.example/x.indd\r\n"
      "file:///last";
  Lines paths;
  for (const auto& file : qt::FilesOf(list)) paths.push_back(file.NativePath());
  EXPECT_EQ(paths, (Lines{"/tmp/a b.indd", "/\xFF\n.indd", "/old/way", "/last"}));
  EXPECT_TRUE(qt::FilesOf("").empty());
}

TEST_F(QtCommandsTest, TheAboutWindowIsItsPictureAndAClickOnThatClosesIt) {
  const auto behind = NewWindow("a");
  const auto about = AboutWindow();
  qt::WindowWidget& widget = Widget(*about);
  EXPECT_EQ(widget.size(), QSize(460, 300));
  EXPECT_EQ(widget.minimumSize(), widget.maximumSize());
  EXPECT_EQ(widget.windowModality(), Qt::ApplicationModal);
  EXPECT_EQ(widget.findChild<QMenuBar*>(), nullptr);
  const QPoint centre = widget.screen()->availableGeometry().center();
  EXPECT_LT((widget.geometry().center() - centre).manhattanLength(), 10);

  // A link takes its own clicks, wherever the mouse is let go; any other label gives way.
  auto* surface = widget.windowHandle();
  const QPoint web = Child(*about, "StaticText1").geometry().center();
  QTest::mousePress(surface, Qt::LeftButton, {}, web);
  QTest::mouseRelease(surface, Qt::LeftButton, {}, QPoint(10, 10));
  QTest::mouseClick(surface, Qt::RightButton, {}, QPoint(10, 10));
  EXPECT_EQ(host.urls, Lines{std::string(endpoints::WebPage)});
  EXPECT_TRUE(about->IsOpen());
  QTest::mouseClick(surface, Qt::LeftButton, {}, Child(*about, "Label1").geometry().center());
  EXPECT_FALSE(about->IsOpen());
  EXPECT_TRUE(behind->IsOpen());
}

TEST_F(QtCommandsTest, TheKeyboardReachesTheLinksOfTheAboutWindowAndClosesIt) {
  const auto about = AboutWindow();
  QWidget& widget = Widget(*about);
  const auto press = [&](Qt::Key key) { QTest::keyClick(widget.focusWidget(), key); };
  press(Qt::Key_Return);
  EXPECT_EQ(host.urls, Lines{}) << "nothing has the focus yet";
  press(Qt::Key_Tab);
  press(Qt::Key_Return);
  press(Qt::Key_Tab);
  press(Qt::Key_Space);
  EXPECT_EQ(host.urls, (Lines{std::string(endpoints::WebPage), std::string(endpoints::Mail)}));
  press(Qt::Key_Tab);
  EXPECT_EQ(widget.focusWidget()->objectName(), "StaticText1");
  press(Qt::Key_Escape);
  EXPECT_FALSE(about->IsOpen());
}

TEST_F(QtCommandsTest, ReturnAndSpacePressAButtonAndOnlyOnceItHasTheFocus) {
  for (const auto key : {Qt::Key_Return, Qt::Key_Space}) {
    const auto window = NewWindow("a");
    QWidget& widget = Widget(*window);
    QTest::keyClick(widget.focusWidget(), key);
    QTest::keyClick(widget.focusWidget(), Qt::Key_Escape);
    ASSERT_TRUE(window->IsOpen());
    QTest::keyClick(widget.focusWidget(), Qt::Key_Tab);
    QTest::keyClick(widget.focusWidget(), key);
    EXPECT_FALSE(window->IsOpen());
    QCoreApplication::processEvents();
  }
}

TEST_F(QtCommandsTest, EveryWindowAndControlHasANameForAssistiveTechnology) {
  const auto window = NewWindow("a.indd");
  window->SetOpenable(false);
  auto* link = QAccessible::queryAccessibleInterface(&Child(*window, "StaticText4"));
  EXPECT_EQ(link->role(), QAccessible::Link);
  link->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_EQ(host.urls, Lines{std::string(endpoints::WebPage)});
  EXPECT_EQ(QAccessible::queryAccessibleInterface(&Child(*window, "Canvas1"))->role(),
            QAccessible::Graphic);
  EXPECT_EQ(QAccessible::queryAccessibleInterface(&Widget(*window))->text(QAccessible::Name),
            "a.indd");
  for (Window* each :
       {static_cast<Window*>(window.get()), static_cast<Window*>(AboutWindow().get())}) {
    for (const auto& control : each->Controls()) {
      auto& face = Child(*each, String(control->Design().name).c_str());
      EXPECT_NE(QAccessible::queryAccessibleInterface(&face)->text(QAccessible::Name), "")
          << control->Design().name;
    }
  }
}

}  // namespace
}  // namespace vintrace::test
