// Files that the user drags from another program: this one.

#include <QApplication>
#include <QDrag>
#include <QMimeData>
#include <QPointer>
#include <QScreen>
#include <QTimer>
#include <algorithm>

#include "desktop/DesktopFixture.h"

namespace vintrace::test {
namespace {

class DropTest : public ProgramOnDesktop {
 protected:
  DropTest() {
    source_.setWindowFlags(Qt::Window | Qt::BypassWindowManagerHint | Qt::FramelessWindowHint);
    const QRect screen = QApplication::primaryScreen()->geometry();
    source_.setGeometry(screen.right() - 40, screen.bottom() - 40, 40, 40);
    source_.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&source_, Patience));
  }

  QByteArray AddressOf(const std::string& name) const {
    PathOfDocument(name);
    const auto path = QByteArray::fromStdString(folder.Path() / name);
    return "file://" + path.toPercentEncoding("/") + "\r\n";
  }

  /// Drags with the mouse from the source to the middle of the window, and lets go when that has
  /// answered. True when the window takes it, which it has told before.
  bool IsTakenBy(WId window, const QByteArray& bytes, const char* format = "text/uri-list") {
    MoveMouse(source_.winId(), {20, 20});
    OutputOf("xdotool", {"mousedown", "1"});
    EXPECT_TRUE(Comes([] { return QGuiApplication::mouseButtons() == Qt::LeftButton; }));

    const QPointer<QDrag> drag = new QDrag(&source_);  // The platform ends its life.
    auto* data = new QMimeData;
    data->setData(format, bytes);
    drag->setMimeData(data);
    const ClientMessages messages;
    const auto isAnswer = [&](const auto& message) { return message.data.data32[0] == window; };
    QTimer::singleShot(0, [&] {
      const QPoint middle = Screenshot(window).rect().center();
      for (const double part : {0.2, 0.4, 0.6, 0.8, 1.0}) {
        MoveMouse(window, middle * part);
        QCoreApplication::processEvents();
      }
      EXPECT_TRUE(Comes([&] { return std::ranges::any_of(messages.heard, isAnswer); }));
      OutputOf("xdotool", {"mouseup", "1"});
    });
    const auto action = drag->exec(Qt::CopyAction | Qt::MoveAction, Qt::MoveAction);
    EXPECT_TRUE(Comes([&] { return drag.isNull(); })) << "the window hasn't fetched what it took";
    const auto answer = std::ranges::find_if(messages.heard, isAnswer);
    const bool taken = answer != messages.heard.end() && (answer->data.data32[1] & 1) != 0;
    EXPECT_EQ(action, taken ? Qt::CopyAction : Qt::IgnoreAction);
    return taken;
  }

 private:
  QWidget source_;
};

TEST_F(DropTest, FilesDroppedOnTheStandInAreOpenedAndOnNoOtherWindow) {
  StartWith({});
  const WId standIn = WindowNamed("Vintrace");
  const WId about = OpenAboutWindow(standIn);
  ASSERT_NE(about, 0U);
  EXPECT_FALSE(IsTakenBy(about, AddressOf("refused.indd")));
  Click(about, {100, 280});
  ASSERT_TRUE(HasWindows({"Vintrace"}));

  EXPECT_FALSE(IsTakenBy(standIn, AddressOf("refused.indd"), "text/plain"));
  EXPECT_FALSE(IsTakenBy(standIn, "http://vt.example/a.indd\r\n"));
  EXPECT_TRUE(IsTakenBy(standIn, AddressOf("a b.indd") + AddressOf("\xFF.indd")));
  ASSERT_TRUE(HasWindows({"a b.indd", "\uFFFD.indd"}));
  const WId window = WindowNamed("a b.indd");
  OutputOf("xdotool", {"windowactivate", "--sync", QString::number(window)});
  EXPECT_FALSE(IsTakenBy(window, AddressOf("refused.indd")));
  Press(window, {"ctrl+w"});
  ASSERT_TRUE(HasWindows({"\uFFFD.indd"}));
}

}  // namespace
}  // namespace vintrace::test
