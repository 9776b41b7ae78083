#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <deque>
#include <functional>
#include <vector>

#include "platform/files/FolderItem.h"
#include "platform/ui/qt/Activation.h"

namespace vintrace::qt {

class WindowWidget;

/// The documents that the system handed over and the windows that wait to be shown, in order. A
/// window is shown when the handler that made it has returned, so that it is complete. The next
/// document is opened when that window has been painted, as an inspection can take long, or after
/// 250 ms, as windows on another workspace are never painted.
class DocumentQueue {
 public:
  struct Hooks {
    /// False while a box or dialog is open, and once the program quits.
    std::function<bool()> mayShow;
    /// False during a wait for the network, and until input held back by it has been handled:
    /// windows may be shown then, but no document opened.
    std::function<bool()> mayOpen;
    /// Called after a window came up, with the permission of its document's start.
    std::function<void(WindowWidget&, const Activation&)> cameUp;
    /// Called after a document was handled without a window: it is none.
    std::function<void(const FolderItem&)> leftAside;
    /// Called when no document is left.
    std::function<void()> ranOut;
  };

  explicit DocumentQueue(Hooks hooks);

  /// Adds a document, which the application's `OpenDocument` event will get.
  void Add(const FolderItem& document, const Activation& activation);
  /// Adds a window to be shown. It may be deleted meanwhile.
  void Add(WindowWidget& window);

  /// Opens all documents added so far, and returns when their last window has been painted.
  void OpenAtStart();
  /// Lets documents that are added from now on be opened from the event loop.
  void Start();
  /// Continues from the event loop, in case a condition has changed.
  void ContinueLater();
  /// Continues at once.
  void Continue();

 private:
  struct Entry {
    FolderItem document;
    Activation activation;
  };

  void ShowWindows();
  void ShowAndAwaitPaint(WindowWidget& window);
  void OpenNext();
  void RunOut();

  Hooks hooks_;
  QObject context_;  // Cancels scheduled calls when it is destroyed.
  std::deque<Entry> documents_;
  std::vector<QPointer<WindowWidget>> unshown_;
  Activation activation_;               // Of the document opened last.
  QPointer<WindowWidget> awaitsPaint_;  // The next document waits for this window.
  QTimer patience_;                     // Ends that wait.
  bool paintsWhenShown_ = true;         // False if the last window wasn't painted in time.
  bool started_ = false;
};

}  // namespace vintrace::qt
