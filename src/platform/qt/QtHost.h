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

namespace vintrace {
class Picture;
}

namespace vintrace::qt {

class WindowWidget;

/// The real desktop, on Qt.
class QtHost : public Host {
 public:
  /// Every argument behind the program's own name is the path of a document, absolute or relative
  /// to the working directory, raw bytes; each becomes an open-documents event of its own once the
  /// loop runs. None is read as an option, of Qt neither.
  QtHost(int argc, char* argv[]);
  QtHost(const QtHost&) = delete;
  QtHost& operator=(const QtHost&) = delete;
  ~QtHost() override;

  /// The icon of the program's windows, opened when the first of them is shown.
  void SetIcon(std::function<std::shared_ptr<const Picture>()> icon) { icon_ = std::move(icon); }

  /// The status that the process is to end with, once `Run` has returned.
  int ExitStatus() const { return exitStatus_; }

  /// The widget of `window`, for the tests that look at it; nil when the window isn't shown.
  WindowWidget* WidgetOf(const Window& window) const;

  /// Takes a document that the system hands over; it is raised as soon as the loop runs and no box
  /// or dialog is open.
  void HandOver(const FolderItem& document);

  void Show(Window& window) override;
  void Changed(Window& window) override;
  void Changed(RectControl& control) override;
  void Closed(Window& window) override;
  void ShowMessage(const String& text) override;
  std::optional<FolderItem> AskForFile(const FileRequest& request) override;
  void ShowURL(const String& url) override;
  void Run() override;
  void Quit(int exitStatus) override;

 private:
  class FileOpenFilter;
  class ModalScope;

  void Start();
  /// Shows the windows and raises, one at a time, the documents that wait, as soon as the loop
  /// comes round and no box or dialog is open.
  void CatchUpLater();
  void CatchUp();
  void ShowAndAwait(WindowWidget& widget);
  /// The widget of the front window; nil when there is none or it isn't shown yet.
  QWidget* FrontWidget() const;

  int argc_ = 1;
  std::function<std::shared_ptr<const Picture>()> icon_;
  QApplication qtApplication_;
  std::unique_ptr<FileOpenFilter> fileOpenFilter_;
  std::unordered_map<const Window*, WindowWidget*> widgets_;
  std::vector<QPointer<WindowWidget>> unshown_;
  std::deque<FolderItem> handedOver_;
  QPointer<WindowWidget> awaited_;  // Shown, and to be painted before the next document comes.
  QDeadlineTimer awaitedUntil_;
  bool started_ = false;
  bool quitting_ = false;
  int modalDepth_ = 0;
  int exitStatus_ = 0;
};

}  // namespace vintrace::qt
