#include "platform/ui/qt/DocumentQueue.h"

#include <QCoreApplication>
#include <QTimer>
#include <chrono>
#include <utility>

#include "platform/ui/Host.h"
#include "platform/ui/Window.h"
#include "platform/ui/qt/widgets/ContentWidget.h"
#include "platform/ui/qt/widgets/WindowWidget.h"

namespace vintrace::qt {

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
    ShowWindows();
    while (hooks_.mayShow() && IsAwaitingPaint()) {
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
  if (!IsAwaitingPaint()) OpenNext();
}

void DocumentQueue::ShowWindows() {
  for (const auto& window : std::exchange(unshown_, {})) {
    if (window && window->Shown().IsOpen()) ShowAndAwaitPaint(*window);
  }
}

void DocumentQueue::ShowAndAwaitPaint(WindowWidget& window) {
  // Windows on another workspace aren't painted, so no further window is awaited after a timeout.
  constexpr std::chrono::milliseconds Patience(250);
  if (paintsWhenShown_) {
    awaitsPaint_ = &window;
    awaitsUntil_.setRemainingTime(Patience);
    QTimer::singleShot(Patience, &context_, [this] { Continue(); });
  }
  window.Content().WhenPainted([this, &window] {
    if (awaitsPaint_ == &window) awaitsPaint_.clear();
    paintsWhenShown_ = true;
    Continue();
  });
  window.ComeUp();
  hooks_.cameUp(window, activation_);
}

bool DocumentQueue::IsAwaitingPaint() {
  if (!awaitsPaint_) return false;
  if (!awaitsUntil_.hasExpired()) return true;
  awaitsPaint_.clear();
  paintsWhenShown_ = false;
  return false;
}

void DocumentQueue::OpenNext() {
  const Entry next = documents_.front();
  documents_.pop_front();
  activation_ = next.activation;
  const auto unshown = unshown_.size();
  Host::Current().Application().RaiseOpenDocument(next.document);
  if (unshown_.size() == unshown) hooks_.leftAside(next.document);
  ContinueLater();
}

void DocumentQueue::RunOut() {
  activation_ = {};
  hooks_.ranOut();
}

}  // namespace vintrace::qt
