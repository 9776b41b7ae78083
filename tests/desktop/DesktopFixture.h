#pragma once

#include <gtest/gtest.h>
#include <xcb/xcb.h>

#include <QAbstractNativeEventFilter>
#include <QImage>
#include <QProcess>
#include <QTest>
#include <memory>

#include "platform/files/FolderItem.h"
#include "support/Environment.h"
#include "support/TemporaryFolder.h"

namespace vintrace::test {

using Lines = std::vector<std::string>;

constexpr int Patience = 15'000;  // Milliseconds. Awaited events normally come within one second.

template <class Condition>
bool Comes(Condition condition) {
  return QTest::qWaitFor(condition, Patience);
}

/// Runs a command to its end and returns its standard output.
QString OutputOf(const QString& program, const QStringList& arguments);

/// The windows that the window manager manages.
std::vector<WId> ManagedWindows();

/// `text` as the program draws it on the background of its windows.
QImage Drawn(const QString& text, QSize size, int pixelSize, QColor color);

/// Records the X11 client messages that this process receives.
class ClientMessages : public QAbstractNativeEventFilter {
 public:
  ClientMessages() { qApp->installNativeEventFilter(this); }

  std::vector<xcb_client_message_event_t> heard;

  bool nativeEventFilter(const QByteArray& /*type*/, void* message, qintptr* /*result*/) override {
    const auto& event = *static_cast<const xcb_client_message_event_t*>(message);
    if ((event.response_type & 0x7F) == XCB_CLIENT_MESSAGE) heard.push_back(event);
    return false;
  }
};

/// Runs the program on an X server with a window manager, and operates and observes it as a user.
class ProgramOnDesktop : public testing::Test {
 protected:
  ProgramOnDesktop();

  /// Terminates the program if it still runs, and expects exit status 0.
  void TearDown() override;

  void StartWith(const QStringList& documents) { Start(program, documents); }

  /// Starts the program once more.
  static std::unique_ptr<QProcess> StartAgain(const QStringList& documents);
  /// Waits for the process to end. True if it exits with status 0.
  static bool IsTaken(QProcess& start);

  /// Waits for the program to exit, and expects status 0.
  void AwaitEnd();

  /// The path of a new document, saved on Windows by release `version`: "VERSION.0.0.397".
  QString PathOfDocument(const std::string& name, std::uint8_t version = 8) const;

  /// Waits for a visible window whose title matches a regular expression; 0 if none comes.
  static WId WindowNamed(const QString& title);

  /// Waits until the managed windows have exactly these titles, given in sorted order.
  static testing::AssertionResult HasWindows(const Lines& titles);

  static QImage Screenshot(WId window);

  /// Converts a point of a document's content to a point of its window, which has a menu bar above.
  static QPoint Place(WId window, QPoint place);

  /// Waits until the window's content at `place` equals `image`.
  static bool Shows(WId window, QPoint place, const QImage& image);

  static void MoveMouse(WId window, QPoint point);
  static void Click(WId window, QPoint point);

  /// Activates the window and presses the keys, named as in xdotool, one after another.
  static void Press(WId window, const QStringList& keys);

  /// Chooses the last item of the window's last menu, and returns the about window.
  static WId OpenAboutWindow(WId standIn);

  /// Waits for the message box and closes it.
  static void DismissMessage();

  /// Makes the document `name` and returns its line for text/uri-list.
  QByteArray AddressOf(const std::string& name) const;

  /// Drags `bytes` with the mouse from another window to the middle of `window`, and drops them
  /// after its answer (XdndStatus). True if that answer accepts them.
  static bool IsTakenBy(WId window, const QByteArray& bytes, const char* format = "text/uri-list");

  /// The first address that the browser was given; empty if there is none yet.
  std::string Opened() const;

  static std::string Clipboard();

  const TemporaryFolder folder;
  QProcess program;

 private:
  static void Start(QProcess& process, const QStringList& documents);

  const Environment path_;
  const Environment home_{"HOME", folder.Path().c_str()};
  const Environment dataHome_{"XDG_DATA_HOME", (folder.Path() / "data").c_str()};
  const Environment prefix_{"WINEPREFIX", (folder.Path() / "prefix").c_str()};
};

}  // namespace vintrace::test
