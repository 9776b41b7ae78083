// Files that the user drags from another program: this one.

#include <xcb/xcb.h>

#include <QAbstractNativeEventFilter>
#include <QApplication>
#include <QDrag>
#include <QMimeData>
#include <QPointer>
#include <QScreen>
#include <QTimer>
#include <memory>
#include <optional>

#include "desktop/DesktopFixture.h"

namespace vintrace::test {
namespace {

constexpr std::string_view AnswerName = "XdndStatus";

/// Listens to what a window answers to the mouse that drags something over it.
class Answer : public QAbstractNativeEventFilter {
 public:
  explicit Answer(WId window) : window_(window) {
    auto* server = qApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
    const auto request = xcb_intern_atom(server, 0, static_cast<std::uint16_t>(AnswerName.size()),
                                         AnswerName.data());
    const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
        xcb_intern_atom_reply(server, request, nullptr), &std::free);
    if (reply) type_ = reply->atom;
    qApp->installNativeEventFilter(this);
  }

  bool nativeEventFilter(const QByteArray& /*type*/, void* message, qintptr* /*result*/) override {
    const auto& event = *static_cast<const xcb_client_message_event_t*>(message);
    const bool answer = (event.response_type & 0x7F) == XCB_CLIENT_MESSAGE && event.type == type_;
    if (answer && event.data.data32[0] == window_) accepted_ = (event.data.data32[1] & 1) != 0;
    return false;
  }

  bool HasCome() const { return accepted_.has_value(); }
  bool IsYes() const { return accepted_.value_or(false); }

 private:
  WId window_;
  xcb_atom_t type_ = XCB_ATOM_NONE;
  std::optional<bool> accepted_;
};

struct Outcome {
  bool accepted = false;
  Qt::DropAction action = Qt::IgnoreAction;
  bool operator==(const Outcome&) const = default;
};

void PrintTo(const Outcome& outcome, std::ostream* stream) {
  *stream << (outcome.accepted ? "accepted" : "refused") << ", action " << outcome.action;
}

constexpr Outcome Refused{};
constexpr Outcome Taken{true, Qt::CopyAction};

class DropTest : public ProgramOnDesktop {
 protected:
  DropTest() {
    source_.setWindowFlags(Qt::Window | Qt::BypassWindowManagerHint | Qt::FramelessWindowHint);
    const QRect screen = QApplication::primaryScreen()->geometry();
    source_.setGeometry(screen.right() - 40, screen.bottom() - 40, 40, 40);
  }

  void SetUp() override {
    source_.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&source_, Patience));
  }

  QByteArray AddressOf(const std::string& name) const {
    return "file://" +
           QByteArray::fromStdString(Document(name).NativePath()).toPercentEncoding("/") + "\r\n";
  }

  /// Drags with the mouse from the source to the middle of the window, and lets go when that has
  /// answered.
  Outcome DragTo(WId window, const QByteArray& format, const QByteArray& bytes) {
    MoveMouse(source_.winId(), {20, 20});
    OutputOf("xdotool", {"mousedown", "1"});
    EXPECT_TRUE(Comes([] { return QGuiApplication::mouseButtons() == Qt::LeftButton; }));

    const QPointer<QDrag> drag = new QDrag(&source_);  // The platform ends its life.
    auto* data = new QMimeData;
    data->setData(format, bytes);
    drag->setMimeData(data);
    const Answer answer(window);
    QTimer::singleShot(0, [&] {
      MoveOver(window);
      EXPECT_TRUE(Comes([&] { return answer.HasCome(); }));
      OutputOf("xdotool", {"mouseup", "1"});
    });
    QTimer limit;
    QObject::connect(&limit, &QTimer::timeout, [] { QDrag::cancel(); });
    limit.start(3 * Patience);
    const auto action = drag->exec(Qt::CopyAction | Qt::MoveAction, Qt::MoveAction);
    EXPECT_TRUE(Comes([&] { return drag.isNull(); })) << "the window hasn't fetched what it took";
    return {answer.IsYes(), action};
  }

  Outcome DropFile(WId window, const std::string& name) {
    return DragTo(window, "text/uri-list", AddressOf(name));
  }

 private:
  static void MoveOver(WId window) {
    const QSize size = Screenshot(window).size();
    constexpr int Steps = 5;
    for (int step = 1; step <= Steps; ++step) {
      MoveMouse(window, QPoint(size.width(), size.height()) / 2 * step / Steps);
      QCoreApplication::processEvents();
    }
  }

  QWidget source_;
};

TEST_F(DropTest, FilesDroppedOnTheStandInAreOpenedAndOnNoOtherWindow) {
  StartWith({});
  const WId standIn = WindowNamed("Vintrace");
  ASSERT_NE(standIn, 0U);
  const WId about = OpenAboutWindow(standIn);
  ASSERT_NE(about, 0U);
  EXPECT_EQ(DropFile(about, "refused.indd"), Refused);
  Click(about, {100, 280});
  ASSERT_TRUE(HasWindows({"Vintrace"}));

  EXPECT_EQ(DragTo(standIn, "text/uri-list", AddressOf("a b.indd") + AddressOf("\xFF.indd")),
            Taken);
  ASSERT_TRUE(HasWindows({"a b.indd", "\uFFFD.indd"}));
  const WId window = WindowNamed("a b.indd");
  OutputOf("xdotool", {"windowactivate", "--sync", QString::number(window)});
  EXPECT_EQ(DropFile(window, "refused.indd"), Refused);
  Press(window, {"ctrl+w"});
  ASSERT_TRUE(HasWindows({"\uFFFD.indd"}));
}

TEST_F(DropTest, WhatIsNoFileIsRefused) {
  StartWith({});
  const WId standIn = WindowNamed("Vintrace");
  ASSERT_NE(standIn, 0U);
  EXPECT_EQ(DragTo(standIn, "text/plain", AddressOf("a.indd")), Refused);
  EXPECT_EQ(DragTo(standIn, "text/uri-list", "http://vt.example/a.indd\r\n"), Refused);
  EXPECT_EQ(DropFile(standIn, "a.indd"), Taken);
  ASSERT_TRUE(HasWindows({"a.indd"}));
}

}  // namespace
}  // namespace vintrace::test
