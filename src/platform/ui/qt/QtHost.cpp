#include "platform/ui/qt/QtHost.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QFile>
#include <QFileOpenEvent>
#include <QMessageBox>
#include <QPointer>
#include <QSocketNotifier>
#include <QStringDecoder>
#include <QTimer>
#include <QUrl>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "platform/process/QuitSignals.h"
#include "platform/text/Exceptions.h"
#include "platform/ui/Control.h"
#include "platform/ui/Window.h"
#include "platform/ui/qt/AskForFile.h"
#include "platform/ui/qt/SystemBar.h"
#include "platform/ui/qt/widgets/ControlWidgets.h"
#include "platform/ui/qt/widgets/DisplayText.h"
#include "platform/ui/qt/widgets/LeanStyle.h"
#include "platform/ui/qt/widgets/MenuBarView.h"
#include "platform/ui/qt/widgets/PictureIcon.h"
#include "platform/ui/qt/widgets/WindowWidget.h"

namespace vintrace::qt {

/// Takes macOS's open-documents event, and updates the menu items before a key is tried as their
/// shortcut.
class QtHost::EventFilter : public QObject {
 public:
  explicit EventFilter(QtHost& host) : host_(host) {}

 protected:
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() == QEvent::ShortcutOverride) host_.RefreshMenus();
    if (event->type() != QEvent::FileOpen) return false;
    const QString file = static_cast<QFileOpenEvent*>(event)->file();
    if (!file.isEmpty()) host_.HandOver(FolderItem(QFile::encodeName(file).toStdString()));
    return true;
  }

 private:
  QtHost& host_;
};

/// Surrounds a box or dialog, which runs an event loop of its own.
class QtHost::ModalScope {
 public:
  explicit ModalScope(QtHost& host) : host_(host) {
    ++host_.modalDepth_;
    host_.UpdateStayOnTop();
    host_.inputAfterWait_.Handle();
  }
  ~ModalScope() {
    --host_.modalDepth_;
    host_.UpdateStayOnTop();
    host_.queue_.ContinueLater();
  }
  ModalScope(const ModalScope&) = delete;
  ModalScope& operator=(const ModalScope&) = delete;

 private:
  QtHost& host_;
};

namespace {

/// Handles Qt's messages while it starts. Ends the program where Qt would abort.
void EndInsteadOfAbort(QtMsgType type, const QMessageLogContext&, const QString& message) {
  std::fprintf(stderr, "vintrace: %s\n", qUtf8Printable(message));
  if (type != QtFatalMsg) return;
  std::fputs("vintrace: It can't show windows here. vintrace-inspect needs none.\n", stderr);
  std::_Exit(1);
}

/// Keeps an open modal window in front of windows that come up. If it stayed in front on the
/// screen, no activation has updated the window list.
void KeepModalInFront() {
  auto* modal = dynamic_cast<WindowWidget*>(QApplication::activeModalWidget());
  if (modal != nullptr) modal->Shown().Show();
}

}  // namespace

QtHost::QtHost(char* argv[])
    : messageHandler_(qInstallMessageHandler(EndInsteadOfAbort)),
      qtApplication_(argc_, argv),
      eventFilter_(std::make_unique<EventFilter>(*this)),
      queue_({.mayShow = [this] { return !quitting_ && modalDepth_ == 0; },
              .mayOpen = [this] { return !inputAfterWait_.IsDue(); },
              .cameUp = [this](auto& widget, const auto& by) { CameUp(widget, by); },
              .leftAside = [this](const FolderItem& item) { leftAside_.push_back(item); },
              .ranOut = [this] { UpdateSystemBar(); }}) {
  qInstallMessageHandler(messageHandler_);
  QApplication::setStyle(new LeanStyle);
  QApplication::setApplicationName("Vintrace");
  QApplication::setDesktopFileName("vintrace");
  QApplication::setQuitOnLastWindowClosed(false);
  qtApplication_.installEventFilter(eventFilter_.get());
  InstallAccessibility();
}

QtHost::~QtHost() {
  if (instance_ != nullptr) instance_->Serve(nullptr);
  // Emptied first, so that events during the deletion find no widget.
  const auto widgets = std::exchange(widgets_, {});
  for (const auto& [window, widget] : widgets) delete widget;
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

WindowWidget* QtHost::WidgetOf(const Window& window) const {
  const auto found = widgets_.find(&window);
  return found == widgets_.end() ? nullptr : found->second;
}

QWidget* QtHost::StandIn() const { return systemBar_ ? systemBar_->StandIn() : nullptr; }

void QtHost::Serve(SingleInstance& instance) {
  instance_ = &instance;
  instance.Serve([this](const StartRequest& request) { TakeOver(request); });
}

void QtHost::HandOver(const FolderItem& document, const Activation& activation) {
  queue_.Add(document, activation);
}

void QtHost::TakeOver(const StartRequest& request) {
  const Activation& activation = request.activation;
  QWidget* foremost = Foremost();
  // Wayland's token can be used once, and is kept for the window of the first document.
  const bool kept = !activation.token.empty() && !request.documents.empty() && modalDepth_ == 0;
  if (foremost != nullptr && !kept) BringToFront(*foremost, activation);
  for (const FolderItem& document : request.documents) HandOver(document, activation);
  EndStartup(activation);
}

void QtHost::Show(Window& window) {
  if (auto* shown = WidgetOf(window)) {
    if (shown->isVisible()) BringToFront(*shown, {});
    return;
  }
  auto* widget = new WindowWidget(window.shared_from_this(), Menus(),
                                  [this, &window] { ComeToFront(window); });
  widgets_.emplace(&window, widget);
  queue_.Add(*widget);
}

void QtHost::Changed(Window& window) {
  if (auto* widget = WidgetOf(window)) widget->RefreshTitle();
}

void QtHost::Changed(RectControl& control) {
  if (auto* widget = WidgetOf(control.Owner())) widget->Refresh(control);
}

void QtHost::Closed(Window& window) {
  const auto closed = widgets_.extract(&window);
  if (closed) closed.mapped()->Dismiss();
  RefreshMenus();
  UpdateStayOnTop();
  queue_.ContinueLater();
}

void QtHost::ShowMessage(const String& text) {
  const ModalScope scope(*this);
  if (quitting_) return;
  // Its parent may be destroyed while it is open, and destroys it too.
  const QPointer<QMessageBox> box = new QMessageBox(FrontWidget());
  box->setWindowTitle(QApplication::applicationName());
  box->setTextFormat(Qt::PlainText);
  box->setText(DisplayLines(text));
  box->addButton("OK", QMessageBox::AcceptRole);
  box->exec();
  delete box;
}

std::optional<FolderItem> QtHost::AskForFile(const FileRequest& request) {
  const ModalScope scope(*this);
  if (quitting_) return std::nullopt;
  return qt::AskForFile(request, FrontWidget());
}

void QtHost::SetClipboardText(const String& text) {
  // By default, Qt drops a byte-order mark at the start of a text.
  QStringDecoder decode(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
  QApplication::clipboard()->setText(decode(QByteArrayView(text)));
}

void QtHost::ShowURL(const String& url) {
  QDesktopServices::openUrl(QUrl::fromEncoded(QByteArray::fromStdString(url)));
}

Network& QtHost::Network() {
  if (!network_) {
    if (makeNetwork_ == nullptr) throw NilObjectException("Network");
    network_ = makeNetwork_({.waits = [this](bool begins) { WaitChanges(begins); },
                             .quits = [this] { return quitting_; }});
  }
  return *network_;
}

void QtHost::WaitChanges(bool begins) {
  if (begins) return inputAfterWait_.WaitBegins();
  inputAfterWait_.WaitEnds();
  QTimer::singleShot(0, &qtApplication_, [this] {
    if (inputAfterWait_.IsWaiting()) return;  // The next wait has begun.
    inputAfterWait_.Handle();
    queue_.Continue();
  });
}

void QtHost::Run() {
  if (quitting_) return;
  const QuitSignals quitSignals;
  QSocketNotifier signalled(quitSignals.Number(), QSocketNotifier::Read);
  QObject::connect(&signalled, &QSocketNotifier::activated, [this, &signalled] {
    signalled.setEnabled(false);  // The pipe stays readable.
    Quit(NormalEnd);
  });
  QTimer::singleShot(0, &qtApplication_, [this] { Start(); });
  const int status = QApplication::exec();
  if (!quitting_) exitStatus_ = status;
  quitting_ = true;
}

void QtHost::Start() {
  _RuntimeCall([this] {
    if (icon_) QApplication::setWindowIcon(IconOf(*icon_()));
  });
  queue_.OpenAtStart();
  if (quitting_) return;
  Application().RaiseOpen();
  queue_.Start();
}

void QtHost::CameUp(WindowWidget& widget, const Activation& activation) {
  if (widget.Shown().MenuBar()) leftAside_.clear();
  if (activation) BringToFront(widget, activation);
  UpdateStayOnTop();
  KeepModalInFront();
}

void QtHost::UpdateStayOnTop() {
  const bool modal = modalDepth_ > 0 || QApplication::activeModalWidget() != nullptr;
  for (const auto& [window, widget] : widgets_) widget->AllowStayingOnTop(!modal);
}

void QtHost::UpdateSystemBar() {
  if (Menus() == nullptr) return;
  if (!systemBar_) {
    systemBar_ = MakeSystemBar(
        *menus_, [this](const auto& document) { HandOver(document); }, [this] { Quit(NormalEnd); });
  }
  const bool carried = std::ranges::any_of(
      widgets_, [](const auto& entry) { return entry.first->MenuBar() != nullptr; });
  systemBar_->SetNeeded(!carried, !std::exchange(yieldsFocus_, false), leftAside_);
}

MenuBarView* QtHost::Menus() {
  if (!menus_ && Application().MenuBar()) {
    menus_ = std::make_unique<MenuBarView>(*Application().MenuBar());
  }
  return menus_.get();
}

void QtHost::RefreshMenus() {
  if (menus_) menus_->Refresh();
}

void QtHost::ComeToFront(Window& window) {
  Windows().BringToFront(window.shared_from_this());
  RefreshMenus();
}

void QtHost::Quit(int exitStatus) {
  if (quitting_) return;
  quitting_ = true;
  exitStatus_ = exitStatus;
  if (instance_ != nullptr) instance_->Release();
  QApplication::exit(exitStatus);
}

QWidget* QtHost::Foremost() const {
  QWidget* modal = QApplication::activeModalWidget();
  return modal != nullptr ? modal : FrontWidget();
}

QWidget* QtHost::FrontWidget() const {
  const auto front = Host::Current().Windows().At(0);
  QWidget* widget = front ? WidgetOf(*front) : nullptr;
  return widget != nullptr && widget->isVisible() ? widget : StandIn();
}

}  // namespace vintrace::qt
