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

constexpr int Patience = 15'000;  // Milliseconds; what is awaited comes within one second.

template <class Condition>
bool Comes(Condition condition) {
  return QTest::qWaitFor(condition, Patience);
}

/// The standard output of a command that ends by itself.
QString OutputOf(const QString& program, const QStringList& arguments);

/// The windows that the window manager shows.
std::vector<WId> ManagedWindows();

/// `text` as it looks on the windows' light ground.
QImage Drawn(const QString& text, QSize size, int pixelSize, QColor color);

/// Keeps what other clients of the X server tell this one, or all.
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

/// The program on an X server with a window manager, and its user's eyes and hands.
class ProgramOnDesktop : public testing::Test {
 protected:
  ProgramOnDesktop();

  /// Ends the program, if it still runs; however it ends, nothing has gone wrong in it.
  void TearDown() override;

  void StartWith(const QStringList& documents) { Start(program, documents); }

  /// Starts the program once more.
  static std::unique_ptr<QProcess> StartAgain(const QStringList& documents);
  /// True when that start ends with status 0.
  static bool IsTaken(QProcess& start);

  /// Waits until the program has ended by itself, with status 0.
  void AwaitEnd();

  /// Makes a document that release `version` saved on Windows; "8.0.0.397" if that is 8.
  QString PathOfDocument(const std::string& name, std::uint8_t version = 8) const;

  /// Waits for a visible window with that title; 0 when none comes.
  static WId WindowNamed(const QString& title);

  /// Waits until the windows that the window manager shows have these titles, which are sorted.
  static testing::AssertionResult HasWindows(const Lines& titles);

  static QImage Screenshot(WId window);

  /// A place of a document's content as a place of its window, which carries the menu bar above it.
  static QPoint Place(WId window, QPoint place);

  /// Waits until that part of the window's content looks like `image`.
  static bool Shows(WId window, QPoint place, const QImage& image);

  static void MoveMouse(WId window, QPoint point);
  static void Click(WId window, QPoint point);

  /// Activates the window, and presses the keys one after the other.
  static void Press(WId window, const QStringList& keys);

  /// Chooses the last item of the stand-in window's last menu; gives the about window.
  static WId OpenAboutWindow(WId standIn);

  /// Waits for the message box and closes it.
  static void DismissMessage();

  /// What a file manager drags when it drags the document of that name, which is made.
  QByteArray AddressOf(const std::string& name) const;

  /// Drags with the mouse from another window to the middle of this one, and lets go when that has
  /// answered. True when the window takes it, which it has told before.
  static bool IsTakenBy(WId window, const QByteArray& bytes, const char* format = "text/uri-list");

  /// The first address that the browser was given; empty as long as there is none.
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
