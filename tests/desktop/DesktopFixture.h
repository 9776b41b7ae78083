#pragma once

#include <gtest/gtest.h>

#include <QImage>
#include <QProcess>
#include <QTest>
#include <memory>

#include "platform/FolderItem.h"
#include "support/TemporaryFolder.h"

namespace vintrace::test {

using Lines = std::vector<std::string>;

constexpr int Patience = 15'000;  // Milliseconds; what is awaited comes within one second.

template <class Condition>
bool Comes(Condition condition) {
  return QTest::qWaitFor(condition, Patience);
}

/// The standard output of a command that ends by itself.
QByteArray BytesOf(const QString& program, const QStringList& arguments);
QString OutputOf(const QString& program, const QStringList& arguments);

/// The windows that the window manager shows.
std::vector<WId> ManagedWindows();

/// `text` as it looks on the windows' light ground.
QImage Drawn(const QString& text, QSize size, int pixelSize, QColor color);

/// The program on an X server with a window manager, and its user's eyes and hands.
class ProgramOnDesktop : public testing::Test {
 protected:
  ProgramOnDesktop();

  /// Ends the program, if it still runs; however it ends, nothing has gone wrong in it.
  void TearDown() override;

  void StartWith(const QStringList& documents);

  /// Starts the program once more, on behalf of the desktop's `startupId`.
  static std::unique_ptr<QProcess> StartAgain(const QStringList& documents,
                                              const QString& startupId = {});
  /// True when that start ends with status 0.
  static bool IsTaken(QProcess& start);

  /// Waits until the program has ended by itself, with status 0.
  void AwaitEnd();

  /// A document that release `version` saved on Windows; "8.0.0.397" if that is 8.
  FolderItem Document(const std::string& name, std::uint8_t version = 8) const;
  QString PathOfDocument(const std::string& name, std::uint8_t version = 8) const;

  /// The visible windows with that title, a line each.
  static QString VisibleWindows(const QString& title);
  static bool IsVisible(const QString& title) { return !VisibleWindows(title).isEmpty(); }

  /// Waits for a visible window with that title; 0 when none comes.
  static WId WindowNamed(const QString& title);

  /// Waits until the windows that the window manager shows have these titles, which are sorted.
  static testing::AssertionResult HasWindows(const Lines& titles);

  /// Waits for a menu that is open; 0 when none comes.
  static WId OpenMenu();

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

  /// The first address that the browser was given; empty as long as there is none.
  std::string Opened() const;

  static std::string Clipboard();

  const TemporaryFolder folder;
  QProcess program;
};

}  // namespace vintrace::test
