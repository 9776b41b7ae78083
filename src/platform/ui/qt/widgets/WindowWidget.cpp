#include "platform/ui/qt/widgets/WindowWidget.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QMenuBar>
#include <QVBoxLayout>
#include <QWindow>
#include <algorithm>
#include <utility>
#include <vector>

#include "platform/ui/Control.h"
#include "platform/ui/Window.h"
#include "platform/ui/qt/widgets/Centre.h"
#include "platform/ui/qt/widgets/ContentWidget.h"
#include "platform/ui/qt/widgets/ControlWidgets.h"
#include "platform/ui/qt/widgets/DisplayText.h"
#include "platform/ui/qt/widgets/MenuBarView.h"

namespace vintrace::qt {
namespace {

// The windows' colours are made for a light background. All roles derive from these two, so that
// they never mix with the colours of a dark desktop theme.
QPalette LightPalette() {
  const QColor button(0xF6, 0xF6, 0xF6);
  const QColor ground(0xEC, 0xEC, 0xEC);
  return {button, ground};
}

Qt::WindowFlags FlagsOf(const WindowDesign& design) {
  Qt::WindowFlags flags = Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint;
  flags.setFlag(Qt::WindowCloseButtonHint, design.CloseButton);
  if (design.Frame == Frame::ModalDialog) return flags | Qt::Dialog;
  flags |= Qt::Window;
  // An ordinary window even if it floats, so that the user can find it again after minimising it.
  flags.setFlag(Qt::WindowStaysOnTopHint, design.Frame == Frame::GlobalFloating);
  flags.setFlag(Qt::WindowMinimizeButtonHint, design.MinimizeButton);
  flags.setFlag(Qt::WindowMaximizeButtonHint, design.MaximizeButton);
  return flags;
}

/// Escapes "[*]", which Qt replaces in titles with its mark for a changed document.
QString TitleOf(const String& title) { return DisplayText(title).replace("[*]", "[*][*]"); }

}  // namespace

WindowWidget::WindowWidget(std::shared_ptr<vintrace::Window> window, MenuBarView* menus,
                           std::function<void()> activated)
    : window_(std::move(window)),
      activated_(std::move(activated)),
      content_(new ContentWidget(*window_, *this)) {
  TakeDesign();
  if (menus != nullptr) TakeMenus(*menus);
  MakeControls();
  SetTabOrder();
  FindCovered();
  RefreshTitle();
  // No button has the focus until the user presses Tab, so that no stray key presses one.
  setFocus();
}

// The content and the views on it refer to the window and its controls, so they are deleted first.
WindowWidget::~WindowWidget() { delete content_; }

void WindowWidget::TakeDesign() {
  const WindowDesign& design = window_->Design();
  setWindowFlags(FlagsOf(design));
  setPalette(LightPalette());
  if (design.Frame == Frame::ModalDialog) setWindowModality(Qt::ApplicationModal);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(content_);
  content_->installEventFilter(this);
  TakeSize();
}

void WindowWidget::TakeSize() {
  const WindowDesign& design = window_->Design();
  if (design.Resizeable && design.Frame != Frame::ModalDialog) {
    setMinimumSize(design.MinWidth, design.MinHeight);
    setMaximumSize(design.MaxWidth, design.MaxHeight);
    resize(design.Width, design.Height);
  } else {
    content_->setFixedSize(design.Width, design.Height);
    layout()->setSizeConstraint(QLayout::SetFixedSize);
  }
}

void WindowWidget::TakeMenus(MenuBarView& menus) {
  if (!WindowsCarryTheBar) return;
  if (!window_->MenuBar()) return menus.AddShortcuts(*this);
  QMenuBar* bar = menus.MakeBar(this);
  bar->installEventFilter(this);
  layout()->setMenuBar(bar);
}

void WindowWidget::MakeControls() {
  for (const auto& control : window_->Controls()) {
    ControlView* view = MakeView(*control, *content_);
    view->Widget().installEventFilter(this);
    views_.emplace(control.get(), view);
  }
}

void WindowWidget::SetTabOrder() {
  std::vector<const RectControl*> order;
  for (const auto& control : window_->Controls()) order.push_back(control.get());
  std::ranges::sort(order, {}, [](const RectControl* c) { return c->Design().TabIndex; });
  for (std::size_t i = 1; i < order.size(); ++i) {
    setTabOrder(&views_.at(order[i - 1])->Widget(), &views_.at(order[i])->Widget());
  }
}

// A control under another one can't be seen or clicked, so the Tab key skips it.
void WindowWidget::FindCovered() {
  const auto& controls = window_->Controls();
  for (auto control = controls.begin(); control != controls.end(); ++control) {
    const QPoint centre = views_.at(control->get())->Widget().geometry().center();
    const bool covered = std::any_of(std::next(control), controls.end(), [&](const auto& above) {
      return above->Visible() && views_.at(above.get())->Widget().geometry().contains(centre);
    });
    views_.at(control->get())->SetCovered(covered);
  }
}

void WindowWidget::ComeUp() {
  // Otherwise the window would be created with another size and then resized, which takes several
  // round trips to the X server.
  layout()->activate();
  if (window_->Design().Placement == Placement::CentreOfMainScreen) MoveToCentre(*this);
  show();
}

void WindowWidget::AllowStayingOnTop(bool allowed) {
  QWindow* surface = windowHandle();
  if (window_->Design().Frame != Frame::GlobalFloating || surface == nullptr) return;
  surface->setFlag(Qt::WindowStaysOnTopHint, allowed);
}

void WindowWidget::RefreshTitle() { setWindowTitle(TitleOf(window_->Title())); }

void WindowWidget::Refresh(const RectControl& control) {
  views_.at(&control)->Refresh();
  FindCovered();
}

void WindowWidget::Dismiss() {
  hide();
  deleteLater();
}

bool WindowWidget::event(QEvent* event) {
  if (event->type() == QEvent::WindowActivate) IsInFront();
  return QWidget::event(event);
}

bool WindowWidget::eventFilter(QObject* watched, QEvent* event) {
  // Buttons act on the front window. A press makes this the front window before it is handled, even
  // if the window manager doesn't give it the focus.
  if (event->type() == QEvent::MouseButtonPress) IsInFront();
  const bool isKey = event->type() == QEvent::KeyPress && watched->parent() == content_;
  if (isKey && PressesDefault(static_cast<QKeyEvent&>(*event))) return true;
  return QWidget::eventFilter(watched, event);
}

void WindowWidget::IsInFront() {
  if (window_->IsOpen()) activated_();
}

bool WindowWidget::PressesDefault(const QKeyEvent& key) {
  if (key.key() != Qt::Key_Return && key.key() != Qt::Key_Enter) return false;
  if ((key.modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier) return false;
  for (const auto& control : window_->Controls()) {
    auto* button = dynamic_cast<PushButton*>(control.get());
    if (button == nullptr || !button->Default()) continue;
    if (!key.isAutoRepeat() && button->Visible() && button->Enabled()) button->RaiseAction();
    return true;
  }
  return false;
}

void WindowWidget::keyPressEvent(QKeyEvent* event) {
  if (PressesDefault(*event)) return;
  const bool dialog = window_->Design().Frame == Frame::ModalDialog;
  if (dialog && event->matches(QKeySequence::Cancel)) return window_->Close();
  QWidget::keyPressEvent(event);
}

void WindowWidget::closeEvent(QCloseEvent* event) {
  window_->Close();
  event->accept();
}

}  // namespace vintrace::qt
