#include "platform/qt/WindowWidget.h"

#include <QCloseEvent>
#include <QTimer>
#include <algorithm>
#include <utility>
#include <vector>

#include "platform/Control.h"
#include "platform/Window.h"
#include "platform/qt/ControlWidgets.h"
#include "platform/qt/DisplayText.h"

namespace vintrace::qt {
namespace {

// The windows' colours are made for a light ground. All roles come from these two, so that no text
// of a dark desktop theme meets the light ground or the other way round.
QPalette LightPalette() {
  const QColor button(0xF6, 0xF6, 0xF6);
  const QColor ground(0xEC, 0xEC, 0xEC);
  return {button, ground};
}

Qt::WindowFlags FlagsOf(const WindowDesign& design) {
  Qt::WindowFlags flags =
      Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint;
  flags.setFlag(Qt::WindowCloseButtonHint, design.closeButton);
  flags.setFlag(Qt::WindowMinimizeButtonHint, design.minimizeButton);
  flags.setFlag(Qt::WindowMaximizeButtonHint, design.maximizeButton);
  return flags;
}

/// Qt takes "[*]" in a title for the place of its own mark of a changed document.
QString TitleOf(const String& title) { return DisplayText(title).replace("[*]", "[*][*]"); }

}  // namespace

WindowWidget::WindowWidget(std::shared_ptr<vintrace::Window> window,
                           std::function<void()> activated)
    : window_(std::move(window)), activated_(std::move(activated)) {
  TakeDesign();
  MakeControls();
  SetTabOrder();
  RefreshTitle();
}

// The faces refer to the window's controls, and so go before it.
WindowWidget::~WindowWidget() {
  for (const auto& [control, face] : faces_) delete face;
}

void WindowWidget::TakeDesign() {
  const WindowDesign& design = window_->Design();
  setWindowFlags(FlagsOf(design));
  if (design.resizeable) {
    setMinimumSize(design.minWidth, design.minHeight);
    setMaximumSize(design.maxWidth, design.maxHeight);
    resize(design.width, design.height);
  } else {
    setFixedSize(design.width, design.height);
  }
  setPalette(LightPalette());
}

void WindowWidget::MakeControls() {
  for (const auto& control : window_->Controls()) {
    ControlFace* face = MakeFace(*control, *this);
    face->Widget().installEventFilter(this);
    faces_.emplace(control.get(), face);
  }
}

void WindowWidget::SetTabOrder() {
  std::vector<const RectControl*> order;
  for (const auto& control : window_->Controls()) order.push_back(control.get());
  std::ranges::sort(order, {}, [](const RectControl* c) { return c->Design().tabIndex; });
  for (std::size_t i = 1; i < order.size(); ++i) {
    setTabOrder(&faces_.at(order[i - 1])->Widget(), &faces_.at(order[i])->Widget());
  }
}

void WindowWidget::RefreshTitle() { setWindowTitle(TitleOf(window_->Title())); }

void WindowWidget::Refresh(const RectControl& control) { faces_.at(&control)->Refresh(); }

void WindowWidget::Dismiss() {
  hide();
  deleteLater();
}

void WindowWidget::paintEvent(QPaintEvent* event) {
  QWidget::paintEvent(event);
  // The controls are drawn after their window, in the same turn of the loop.
  if (auto painted = std::exchange(painted_, nullptr))
    QTimer::singleShot(0, this, std::move(painted));
}

bool WindowWidget::event(QEvent* event) {
  if (event->type() == QEvent::WindowActivate) ComeToFront();
  return QWidget::event(event);
}

bool WindowWidget::eventFilter(QObject* watched, QEvent* event) {
  // A press in a window to which the window manager gives no focus makes it the front one all the
  // same, before the press is acted upon: the buttons work on the window in front.
  if (event->type() == QEvent::MouseButtonPress) ComeToFront();
  return QWidget::eventFilter(watched, event);
}

void WindowWidget::ComeToFront() {
  if (window_->IsOpen()) activated_();
}

void WindowWidget::closeEvent(QCloseEvent* event) {
  window_->Close();
  event->accept();
}

}  // namespace vintrace::qt
