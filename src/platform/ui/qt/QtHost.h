#pragma once

#include <QApplication>
#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

#include "platform/net/Network.h"
#include "platform/ui/Host.h"
#include "platform/ui/qt/DocumentQueue.h"
#include "platform/ui/qt/InputAfterWait.h"
#include "platform/ui/qt/SingleInstance.h"

namespace vintrace {
class Picture;
}

namespace vintrace::qt {

class MenuBarView;
class SystemBar;
class WindowWidget;

/// The host on Qt's widgets.
class QtHost : public Host {
 public:
  /// Uses only the program's name in `argv`; Qt reads no options from it.
  explicit QtHost(char* argv[]);
  QtHost(const QtHost&) = delete;
  QtHost& operator=(const QtHost&) = delete;
  ~QtHost() override;

  /// Sets the icon of the program's windows, which is opened when the loop starts.
  void SetIcon(std::function<std::shared_ptr<const Picture>()> icon) { icon_ = std::move(icon); }

  /// Sets the maker of the network, which is called when the network is first used.
  void SetNetworkMaker(NetworkMaker maker) { makeNetwork_ = maker; }

  /// Takes the requests of later starts. `instance` must outlive this object.
  void Serve(SingleInstance& instance);

  /// The exit status of the process, once `Run` has returned.
  int ExitStatus() const { return exitStatus_; }

  /// The widget of `window`, for tests; nil if the window isn't shown.
  WindowWidget* WidgetOf(const Window& window) const;
  /// The window that stands in for the system's menu bar; nil while there is none.
  QWidget* StandIn() const;

  /// Adds a document that the system hands over. It is opened from the loop, when no box or dialog
  /// is open and no request waits for the network, and its window comes up with `activation`.
  void HandOver(const FolderItem& document, const Activation& activation = {});
  /// Takes the documents of another start, and comes to the front for it.
  void TakeOver(const StartRequest& request);

  void Show(Window& window) override;
  void Changed(Window& window) override;
  void Changed(RectControl& control) override;
  void Closed(Window& window) override;
  void ShowMessage(const String& text) override;
  std::optional<FolderItem> AskForFile(const FileRequest& request) override;
  void SetClipboardText(const String& text) override;
  void ShowURL(const String& url) override;
  void YieldFocus() override { yieldsFocus_ = true; }
  vintrace::Network& Network() override;
  void Run() override;
  void Quit(int exitStatus) override;

 private:
  class EventFilter;
  class ModalScope;

  void Start();
  void WaitChanges(bool begins);
  void CameUp(WindowWidget& widget, const Activation& activation);
  /// Keeps floating windows above others, except above boxes, dialogs and modal windows.
  void UpdateStayOnTop();
  /// Shows the stand-in window if no other window carries the menu bar, and hides it otherwise.
  void UpdateSystemBar();
  /// The application's menus; nil as long as it has none.
  MenuBarView* Menus();
  void RefreshMenus();
  void ComeToFront(Window& window);
  /// The modal window or box if there is one, otherwise the front window; nil for none.
  QWidget* Foremost() const;
  /// The front window if it is visible, otherwise the stand-in window; nil for none.
  QWidget* FrontWidget() const;

  int argc_ = 1;
  std::function<std::shared_ptr<const Picture>()> icon_;
  QtMessageHandler messageHandler_;  // The one before the constructor's.
  QApplication qtApplication_;
  std::unique_ptr<EventFilter> eventFilter_;
  std::unique_ptr<MenuBarView> menus_;
  std::unique_ptr<SystemBar> systemBar_;
  NetworkMaker makeNetwork_ = nullptr;
  std::unique_ptr<vintrace::Network> network_;
  SingleInstance* instance_ = nullptr;
  InputAfterWait inputAfterWait_;
  std::unordered_map<const Window*, WindowWidget*> widgets_;
  DocumentQueue queue_;
  std::vector<FolderItem> leftAside_;  // What was handed over since the last document.
  bool yieldsFocus_ = false;
  bool quitting_ = false;
  int modalDepth_ = 0;
  int exitStatus_ = 0;
};

}  // namespace vintrace::qt
