#pragma once

#include <QApplication>
#include <QDeadlineTimer>
#include <QPointer>
#include <deque>
#include <functional>
#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/Host.h"
#include "platform/InstanceChannel.h"
#include "platform/qt/Activation.h"

namespace vintrace {
class Picture;
}

namespace vintrace::qt {

class InstanceService;
class MenuBarFace;
class SystemBar;
class WindowWidget;

/// The real desktop, on Qt.
class QtHost : public Host {
 public:
  /// Of the arguments it takes the program's own name alone; none is read as an option of Qt's.
  explicit QtHost(char* argv[]);
  QtHost(const QtHost&) = delete;
  QtHost& operator=(const QtHost&) = delete;
  ~QtHost() override;

  /// The icon of the program's windows, opened when the loop starts.
  void SetIcon(std::function<std::shared_ptr<const Picture>()> icon) { icon_ = std::move(icon); }

  /// Hears the starts of the program that come later, once this one is over.
  void Serve(InstanceSeat seat);

  /// The status that the process is to end with, once `Run` has returned.
  int ExitStatus() const { return exitStatus_; }

  /// The widget of `window`, for the tests that look at it; nil when the window isn't shown.
  WindowWidget* WidgetOf(const Window& window) const;
  /// The window that stands in for the system's menu bar; nil while there is none.
  QWidget* StandIn() const;

  /// Takes a document that the system hands over; it is raised as soon as the loop runs, no box or
  /// dialog is open and nobody waits for the network.
  /// `activation`: what its window may come to the front with.
  void HandOver(const FolderItem& document, const Activation& activation = {});
  /// Takes over what another start of the program brings, and comes to the front for it.
  void TakeOver(const StartRequest& request);

  void Show(Window& window) override;
  void Changed(Window& window) override;
  void Changed(RectControl& control) override;
  void Closed(Window& window) override;
  void ShowMessage(const String& text) override;
  std::optional<FolderItem> AskForFile(const FileRequest& request) override;
  void SetClipboardText(const String& text) override;
  void ShowURL(const String& url) override;
  vintrace::Network& Network() override;
  void Run() override;
  void Quit(int exitStatus) override;

 private:
  class EventFilter;
  class ModalScope;
  struct HandedOver {
    FolderItem document;
    Activation activation;
  };

  void Start();
  /// Raises the documents of the start, and returns when the last window is painted.
  void OpenFirstDocuments();
  /// Whatever others bring is taken at once from now on.
  void EndStart();
  /// Shows the windows and raises, one at a time, the documents that wait, as soon as the loop
  /// comes round and no box or dialog is open. While somebody waits for the network, the documents
  /// wait on.
  void CatchUpLater();
  /// The same, but what the user did while somebody waited for the network comes first.
  void CatchUpBehindUser();
  bool IsUsersTurn() const { return userGoesFirst_ || userTurns_ > 0; }
  /// Has that handled, if there may be any. Once for a wait: what is handled has its turn already.
  void LetUserGoFirst();
  void CatchUp();
  void ShowWhatWaits();
  bool IsAwaitingPaint();
  void HandOverNext();
  void ShowAndAwait(WindowWidget& widget);
  /// A floating window is above others, but not above what takes all input.
  void LetFloat();
  /// What takes all input stays in front of a window that has just come up.
  static void KeepModalInFront();
  void AllHandedOver();
  /// The window that stands in for the system's menu bar is there when no other carries one.
  void UpdateSystemBar();
  void TakeIcon();
  /// The menus of the application; nil as long as it has none.
  MenuBarFace* Menus();
  void RefreshMenus();
  void ComeToFront(Window& window);
  /// The widget that a user is to see first: a box or dialog, or else the front window; nil for
  /// none.
  QWidget* Foremost() const;
  /// The widget that a box or dialog belongs to: that of the front window if it is shown.
  QWidget* FrontWidget() const;

  int argc_ = 1;
  std::optional<InstanceSeat> seat_;  // Until the start is over.
  std::function<std::shared_ptr<const Picture>()> icon_;
  QtMessageHandler messages_;  // That takes them, but while the toolkit starts.
  QApplication qtApplication_;
  std::unique_ptr<EventFilter> eventFilter_;
  std::unique_ptr<MenuBarFace> menus_;
  std::unique_ptr<SystemBar> systemBar_;
  std::unique_ptr<InstanceService> instances_;
  std::unique_ptr<vintrace::Network> network_;
  bool awaitsNetwork_ = false;
  bool userGoesFirst_ = false;  // What was done during such a wait is to be handled,
  int userTurns_ = 0;           // and so often, one in the other, is being handled.
  std::unordered_map<const Window*, WindowWidget*> widgets_;
  std::vector<QPointer<WindowWidget>> unshown_;
  std::deque<HandedOver> handedOver_;
  Activation activation_;           // Of the document that was handed over last.
  QPointer<WindowWidget> awaited_;  // Shown, and to be painted before the next document comes.
  QDeadlineTimer awaitedUntil_;
  bool seen_ = true;  // Windows are painted when they are shown.
  bool started_ = false;
  bool quitting_ = false;
  int modalDepth_ = 0;
  int exitStatus_ = 0;
};

}  // namespace vintrace::qt
