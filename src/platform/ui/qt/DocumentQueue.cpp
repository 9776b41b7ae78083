#include "platform/ui/qt/DocumentQueue.h"

#include <QCoreApplication>
#include <chrono>
#include <utility>

#include "platform/ui/Host.h"
#include "platform/ui/Window.h"
#include "platform/ui/qt/widgets/ContentWidget.h"
#include "platform/ui/qt/widgets/WindowWidget.h"

namespace vintrace::qt {

DocumentQueue::DocumentQueue(Hooks hooks) : hooks_(std::move(hooks)) {
  constexpr std::chrono::milliseconds Patience(250);
  patience_.setSingleShot(true);
  patience_.setInterval(Patience);
  QObject::connect(&patience_, &QTimer::timeout, [this] {
    // Windows on another workspace aren't painted, so no further window is awaited.
    if (awaitsPaint_) paintsWhenShown_ = false;
    awaitsPaint_.clear();
    Continue();
  });
}

void DocumentQueue::Add(const FolderItem& document, const Activation& activation) {
  documents_.push_back({document, activation});
  ContinueLater();
}

void DocumentQueue::Add(WindowWidget& window) {
  unshown_.emplace_back(&window);
  ContinueLater();
}

void DocumentQueue::OpenAtStart() {
  while (hooks_.mayShow() && !documents_.empty()) {
    OpenNext();
    while (hooks_.mayShow() && awaitsPaint_) {
      QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents |
                                      QEventLoop::WaitForMoreEvents);
    }
  }
  if (hooks_.mayShow()) RunOut();
}

void DocumentQueue::Start() {
  started_ = true;
  ContinueLater();
}

void DocumentQueue::ContinueLater() {
  QTimer::singleShot(0, &context_, [this] { Continue(); });
}

void DocumentQueue::Continue() {
  if (!hooks_.mayShow()) return;
  ShowWindows();
  if (!started_ || !hooks_.mayOpen()) return;
  if (documents_.empty()) return RunOut();
  if (!awaitsPaint_) OpenNext();
}

void DocumentQueue::ShowWindows() {
  for (const auto& window : std::exchange(unshown_, {})) {
    if (window && window->Shown().IsOpen()) ShowAndAwaitPaint(*window);
  }
}

void DocumentQueue::ShowAndAwaitPaint(WindowWidget& window) {
  if (paintsWhenShown_) {
    awaitsPaint_ = &window;
    patience_.start();
  }
  window.Content().WhenPainted([this, &window] {
    if (awaitsPaint_ == &window) awaitsPaint_.clear();
    paintsWhenShown_ = true;
    Continue();
  });
  window.ComeUp();
  hooks_.cameUp(window, activation_);
}

void DocumentQueue::OpenNext() {
  const Entry next = documents_.front();
  documents_.pop_front();
  activation_ = next.activation;
  const auto unshown = unshown_.size();
  Host::Current().Application().RaiseOpenDocument(next.document);
  if (unshown_.size() == unshown) {
    hooks_.leftAside(next.document);
    ContinueLater();
  } else if (hooks_.mayShow()) {
    ShowWindows();
  }
}

void DocumentQueue::RunOut() {
  activation_ = {};
  hooks_.ranOut();
}

}  // namespace vintrace::qt
