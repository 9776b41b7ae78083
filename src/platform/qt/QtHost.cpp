#include "platform/qt/QtHost.h"

#include <QAbstractNativeEventFilter>
#include <QClipboard>
#include <QDesktopServices>
#include <QFile>
#include <QFileOpenEvent>
#include <QKeyEvent>
#include <QMessageBox>
#include <QSocketNotifier>
#include <QStringDecoder>
#include <QTimer>
#include <QUrl>
#include <QWindow>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "platform/Control.h"
#include "platform/ExceptionHandling.h"
#include "platform/Network.h"
#include "platform/QuitSignals.h"
#include "platform/Window.h"
#include "platform/qt/Activation.h"
#include "platform/qt/AskForFile.h"
#include "platform/qt/ContentWidget.h"
#include "platform/qt/DisplayText.h"
#include "platform/qt/InstanceService.h"
#include "platform/qt/LeanStyle.h"
#include "platform/qt/MakeNetwork.h"
#include "platform/qt/MenuBarFace.h"
#include "platform/qt/PictureIcon.h"
#include "platform/qt/SystemBar.h"
#include "platform/qt/WindowWidget.h"

namespace vintrace::qt {

/// Takes the system's own open-documents event, where the system has one, and brings the menu items
/// up to date before a key is tried as their shortcut. A key that was pressed while somebody waited
/// acts in the window in which it was pressed, whatever has the focus when it comes.
class QtHost::EventFilter : public QObject, public QAbstractNativeEventFilter {
 public:
  explicit EventFilter(QtHost& host) : host_(host) {}

  bool nativeEventFilter(const QByteArray& type, void* message, qintptr* /*result*/) override {
    if (!host_.IsUsersTurn()) {
      presses_.clear();
    } else if (const auto press = KeyPressIn(type, message)) {
      presses_.push_back(*press);
    }
    return false;
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    switch (event->type()) {
      case QEvent::ShortcutOverride:
        if (QWidget* window = WindowOf(*event)) TurnTo(*window);
        host_.RefreshMenus();
        return false;
      case QEvent::KeyPress:
        return watched->isWindowType() && IsElsewhere(*watched, *event);
      case QEvent::FileOpen:
        HandOver(static_cast<QFileOpenEvent*>(event)->file());
        return true;
      default:
        return false;
    }
  }

 private:
  const KeyPress* PressOf(const QEvent& event) const {
    const auto time = static_cast<std::uint32_t>(static_cast<const QKeyEvent&>(event).timestamp());
    const auto press = std::ranges::find(presses_, time, &KeyPress::time);
    return press == presses_.end() ? nullptr : &*press;
  }

  /// The window in which that key was pressed; nil if it wasn't during a wait, or the window is
  /// gone.
  QWidget* WindowOf(const QEvent& event) const {
    const KeyPress* press = PressOf(event);
    return press == nullptr ? nullptr : QWidget::find(press->window);
  }

  // For the shortcuts, which are those of the active window.
  static void TurnTo(QWidget& window) {
    const QWidget* modal = QApplication::activeModalWidget();
    const bool blocked = modal != nullptr && modal != &window;
    if (!blocked && QApplication::activeWindow() != &window) QApplication::setActiveWindow(&window);
  }

  /// True when the key is none of this window's: it has gone to its own one, if that is still
  /// there.
  bool IsElsewhere(const QObject& surface, QEvent& event) {
    if (PressOf(event) == nullptr) return false;
    QWidget* window = WindowOf(event);
    if (window != nullptr && window->windowHandle() == &surface) return false;
    const bool takesKeys = window != nullptr && QApplication::activeModalWidget() == nullptr;
    QWidget* focus = takesKeys ? window->focusWidget() : nullptr;
    if (takesKeys) QCoreApplication::sendEvent(focus != nullptr ? focus : window, &event);
    return true;
  }

  void HandOver(const QString& file) {
    if (!file.isEmpty()) host_.HandOver(FolderItem(QFile::encodeName(file).toStdString()));
  }

  QtHost& host_;
  std::vector<KeyPress> presses_;
};

/// While a box or dialog has a loop of its own, documents and new windows wait.
class QtHost::ModalScope {
 public:
  explicit ModalScope(QtHost& host) : host_(host) {
    ++host_.modalDepth_;
    host_.EndStart();
    host_.LetFloat();
  }
  ~ModalScope() {
    --host_.modalDepth_;
    host_.LetFloat();
    host_.CatchUpLater();
  }
  ModalScope(const ModalScope&) = delete;
  ModalScope& operator=(const ModalScope&) = delete;

 private:
  QtHost& host_;
};

namespace {

/// Takes the toolkit's messages while it starts: where it would abort, as without a display, the
/// program ends.
void EndWhereItAborts(QtMsgType type, const QMessageLogContext& /*context*/,
                      const QString& message) {
  std::fprintf(stderr, "vintrace: %s\n", qUtf8Printable(message));
  if (type != QtFatalMsg) return;
  std::fputs("vintrace: It can't show windows here. vintrace-inspect needs none.\n", stderr);
  std::_Exit(1);
}

}  // namespace

QtHost::QtHost(char* argv[])
    : messages_(qInstallMessageHandler(EndWhereItAborts)),
      qtApplication_(argc_, argv),
      eventFilter_(std::make_unique<EventFilter>(*this)) {
  qInstallMessageHandler(messages_);
  QApplication::setStyle(new LeanStyle);
  QApplication::setApplicationName("Vintrace");
  QApplication::setDesktopFileName("vintrace");
  QApplication::setQuitOnLastWindowClosed(false);
  qtApplication_.installEventFilter(eventFilter_.get());
  qtApplication_.installNativeEventFilter(eventFilter_.get());
}

QtHost::~QtHost() {
  // What a widget raises as it goes finds no widgets any more.
  const auto widgets = std::exchange(widgets_, {});
  for (const auto& [window, widget] : widgets) delete widget;
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

WindowWidget* QtHost::WidgetOf(const Window& window) const {
  const auto found = widgets_.find(&window);
  return found == widgets_.end() ? nullptr : found->second;
}

QWidget* QtHost::StandIn() const { return systemBar_ ? systemBar_->StandIn() : nullptr; }

void QtHost::HandOver(const FolderItem& document, const Activation& activation) {
  handedOver_.push_back({document, activation});
  CatchUpLater();
}

void QtHost::Serve(InstanceSeat seat) { seat_ = std::move(seat); }

void QtHost::EndStart() {
  if (!seat_) return;
  instances_ = std::make_unique<InstanceService>(
      std::move(*seat_), [this](const StartRequest& request) { TakeOver(request); });
  seat_.reset();
}

void QtHost::TakeOver(const StartRequest& request) {
  const Activation activation{.token = request.activationToken, .startupId = request.startupId};
  QWidget* foremost = Foremost();
  // Wayland's token can be used once, and is kept for the window that is about to come.
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
  // Later: the handler that runs now fills the window, and it is to come up complete or not at all.
  unshown_.emplace_back(widget);
  CatchUpLater();
}

void QtHost::Changed(Window& window) {
  if (auto* widget = WidgetOf(window)) widget->RefreshTitle();
}

void QtHost::Changed(RectControl& control) {
  if (auto* widget = WidgetOf(control.Owner())) widget->Refresh(control);
}

void QtHost::Closed(Window& window) {
  auto* widget = WidgetOf(window);
  widgets_.erase(&window);
  if (widget != nullptr) widget->Dismiss();
  RefreshMenus();
  LetFloat();
  CatchUpLater();
}

void QtHost::ShowMessage(const String& text) {
  const ModalScope scope(*this);
  LetUserGoFirst();
  if (quitting_) return;
  // It goes with its parent, should that be destroyed while it is open.
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
  LetUserGoFirst();
  if (quitting_) return std::nullopt;
  return qt::AskForFile(request, FrontWidget());
}

void QtHost::SetClipboardText(const String& text) {
  // Of itself, the toolkit drops a byte-order mark that a text begins with.
  QStringDecoder decode(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
  QApplication::clipboard()->setText(decode(QByteArrayView(text)));
}

void QtHost::ShowURL(const String& url) {
  QDesktopServices::openUrl(QUrl::fromEncoded(QByteArray::fromStdString(url)));
}

Network& QtHost::Network() {
  if (!network_) {
    const auto waits = [this](bool begins) {
      awaitsNetwork_ = begins;
      userGoesFirst_ = true;
      if (!begins) QTimer::singleShot(0, &qtApplication_, [this] { CatchUpBehindUser(); });
    };
    network_ = MakeNetwork({.waits = waits, .quits = [this] { return quitting_; }});
  }
  return *network_;
}

void QtHost::Run() {
  if (quitting_) return;
  const QuitSignals quitSignals;
  QSocketNotifier signalled(quitSignals.Descriptor(), QSocketNotifier::Read);
  QObject::connect(&signalled, &QSocketNotifier::activated, [this, &signalled] {
    signalled.setEnabled(false);  // Nobody reads it, and a loop would turn on it.
    Quit(NormalEnd);
  });
  QTimer::singleShot(0, &qtApplication_, [this] { Start(); });
  const int status = QApplication::exec();
  if (!quitting_) exitStatus_ = status;
  quitting_ = true;
}

void QtHost::Start() {
  _CallFunctionWithExceptionHandling([this] { TakeIcon(); });
  OpenFirstDocuments();
  if (quitting_) return;
  AllHandedOver();
  Application().RaiseOpen();
  started_ = true;
  CatchUpLater();
}

void QtHost::OpenFirstDocuments() {
  while (!quitting_ && !handedOver_.empty()) {
    HandOverNext();
    ShowWhatWaits();
    while (!quitting_ && IsAwaitingPaint()) {
      QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents |
                                      QEventLoop::WaitForMoreEvents);
    }
  }
}

void QtHost::CatchUpLater() {
  QTimer::singleShot(0, &qtApplication_, [this] { CatchUp(); });
}

void QtHost::CatchUpBehindUser() {
  if (awaitsNetwork_) return;  // The next wait has begun.
  LetUserGoFirst();
  CatchUp();
}

void QtHost::LetUserGoFirst() {
  constexpr std::chrono::milliseconds AtMost(500);
  if (awaitsNetwork_ || !std::exchange(userGoesFirst_, false)) return;
  ++userTurns_;
  QCoreApplication::processEvents(QEventLoop::AllEvents, AtMost.count());
  --userTurns_;
}

void QtHost::CatchUp() {
  if (quitting_ || modalDepth_ > 0) return;
  ShowWhatWaits();
  if (!started_ || IsUsersTurn()) return;
  if (handedOver_.empty()) return AllHandedOver();
  if (!IsAwaitingPaint()) HandOverNext();
}

bool QtHost::IsAwaitingPaint() {
  if (!awaited_) return false;
  if (!awaitedUntil_.hasExpired()) return true;
  awaited_.clear();
  seen_ = false;
  EndStart();
  return false;
}

void QtHost::ShowWhatWaits() {
  for (const auto& widget : std::exchange(unshown_, {})) {
    if (widget && widget->Shown().IsOpen()) ShowAndAwait(*widget);
  }
}

void QtHost::HandOverNext() {
  const HandedOver next = handedOver_.front();
  handedOver_.pop_front();
  activation_ = next.activation;
  Application().RaiseOpenDocument(next.document);
  CatchUpLater();
}

void QtHost::AllHandedOver() {
  activation_ = {};
  EndStart();
  UpdateSystemBar();
}

void QtHost::UpdateSystemBar() {
  if (Menus() == nullptr) return;
  const bool carried = std::ranges::any_of(
      widgets_, [](const auto& entry) { return entry.first->MenuBar() != nullptr; });
  if (!systemBar_) {
    systemBar_ = MakeSystemBar(
        *menus_, [this](const FolderItem& document) { HandOver(document); },
        [this] { Quit(NormalEnd); });
  }
  systemBar_->SetNeeded(!carried);
}

// A document is inspected in one go, however long that takes, and the window of the one before it
// would stand there undrawn.
void QtHost::ShowAndAwait(WindowWidget& widget) {
  // A window on another desktop isn't drawn, and after one that wasn't none is waited for.
  constexpr std::chrono::milliseconds Patience(250);
  if (seen_) {
    awaited_ = &widget;
    awaitedUntil_.setRemainingTime(Patience);
    QTimer::singleShot(Patience, &qtApplication_, [this] { CatchUp(); });
  }
  widget.Content().WhenPainted([this, &widget] {
    if (awaited_ == &widget) awaited_.clear();
    seen_ = true;
    EndStart();
    CatchUp();
  });
  widget.ComeUp();
  if (activation_) BringToFront(widget, activation_);
  LetFloat();
  KeepModalInFront();
}

void QtHost::LetFloat() {
  const bool modal = modalDepth_ > 0 || QApplication::activeModalWidget() != nullptr;
  for (const auto& [window, widget] : widgets_) {
    QWindow* surface = widget->windowHandle();
    if (window->Design().frame != Frame::GlobalFloating || surface == nullptr) continue;
    surface->setFlag(Qt::WindowStaysOnTopHint, !modal);
  }
}

void QtHost::KeepModalInFront() {
  const auto* modal = dynamic_cast<WindowWidget*>(QApplication::activeModalWidget());
  // It may never have lost its place on the screen, and then tells nothing of coming back.
  if (modal != nullptr) modal->Shown().Show();
}

void QtHost::TakeIcon() {
  if (icon_) QApplication::setWindowIcon(IconOf(*icon_()));
}

MenuBarFace* QtHost::Menus() {
  if (!menus_ && Application().MenuBar()) {
    menus_ = std::make_unique<MenuBarFace>(*Application().MenuBar());
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
  instances_.reset();
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
