#include "platform/ui/qt/widgets/ControlWidgets.h"

#include <QAccessibleWidget>
#include <QEnterEvent>
#include <QFontMetrics>
#include <QIcon>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QStyleOptionButton>

#include "platform/ui/Control.h"
#include "platform/ui/Host.h"
#include "platform/ui/Window.h"
#include "platform/ui/qt/widgets/DisplayText.h"
#include "platform/ui/qt/widgets/Fonts.h"
#include "platform/ui/qt/widgets/PictureIcon.h"

namespace vintrace::qt {
namespace {

void RefreshCommon(const RectControl& control, QWidget& widget) {
  widget.setVisible(control.Visible());
  // Assistive technology can press a hidden widget that is enabled.
  widget.setEnabled(control.Enabled() && control.Visible());
}

void Prepare(const RectControl& control, QWidget& widget) {
  const ControlDesign& design = control.Design();
  widget.setGeometry(design.Left, design.Top, design.Width, design.Height);
  widget.setObjectName(DisplayText(design.Name));
}

class LabelView : public QLabel, public ControlView {
 public:
  LabelView(Label& label, QWidget& parent) : QLabel(&parent), label_(label) {
    Prepare(label, *this);
    setTextFormat(Qt::PlainText);
    setMargin(0);
    setIndent(0);
  }

  QWidget& Widget() override { return *this; }

  /// A label that handles clicks is a link.
  bool IsLink() const { return static_cast<bool>(label_.MouseUp); }
  /// False if another control covers the label.
  bool IsReachable() const { return !testAttribute(Qt::WA_TransparentForMouseEvents); }

  /// Follows the link as a click does.
  void Press() {
    if (IsReachable() && label_.RaiseMouseDown()) label_.RaiseMouseUp();
  }

  void SetCovered(bool covered) override {
    setAttribute(Qt::WA_TransparentForMouseEvents, covered);
    setFocusPolicy(IsLink() && !covered ? Qt::TabFocus : Qt::NoFocus);
  }

  void Refresh() override {
    RefreshCommon(label_, *this);
    setFont(FontOf(label_.Design().TextFont, label_.Design().TextSize, label_.Underline()));
    setAlignment(Qt::AlignTop | HorizontalOf(label_.TextAlign()));
    setWordWrap(label_.Multiline());
    setAutoFillBackground(!label_.Transparent());
    RefreshColor();
    RefreshText();
  }

 protected:
  void showEvent(QShowEvent*) override { RefreshText(); }
  void enterEvent(QEnterEvent*) override { label_.RaiseMouseEnter(); }
  void leaveEvent(QEvent*) override { label_.RaiseMouseExit(); }

  void mousePressEvent(QMouseEvent* event) override {
    if (event->button() != Qt::LeftButton) return event->ignore();
    pressed_ = label_.RaiseMouseDown();
    event->setAccepted(pressed_);
  }

  void mouseReleaseEvent(QMouseEvent* event) override {
    if (event->button() != Qt::LeftButton || !pressed_) return event->ignore();
    pressed_ = false;
    label_.RaiseMouseUp();
  }

  void keyPressEvent(QKeyEvent* event) override {
    const bool presses = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter ||
                         event->key() == Qt::Key_Space;
    if (!presses) return event->ignore();
    if (!event->isAutoRepeat()) Press();
  }

  void paintEvent(QPaintEvent* event) override {
    QLabel::paintEvent(event);
    if (hasFocus()) DrawFocus();
  }

 private:
  static Qt::AlignmentFlag HorizontalOf(TextAlign align) {
    return align == TextAlign::Center ? Qt::AlignHCenter : Qt::AlignLeft;
  }

  /// The frame has the text's colour, which contrasts with any background of the label.
  void DrawFocus() {
    QPainter painter(this);
    painter.setPen(QPen(palette().color(QPalette::WindowText), 1, Qt::DotLine));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
  }

  void RefreshColor() {
    const Color wanted = label_.TextColor();
    const QColor color(wanted.red, wanted.green, wanted.blue);
    if (palette().color(QPalette::WindowText) == color) return;
    QPalette colors = palette();
    colors.setColor(QPalette::WindowText, color);
    setPalette(colors);
  }

  /// A line that is too long ends in an ellipsis, and the tool tip shows all of it. Hidden text
  /// isn't measured, because measuring loads a font for each of its scripts.
  void RefreshText() {
    const QString text = DisplayText(label_.Text());
    const bool oneLineSeen = isVisible() && !label_.Multiline();
    const QFontMetrics metrics(font());
    // By its ink: the blank after a full stop at the end may be cut.
    const bool fits = !oneLineSeen || metrics.horizontalAdvance(text) <= width() ||
                      metrics.tightBoundingRect(text).right() < width();
    const QString fitting = fits ? text : metrics.elidedText(text, Qt::ElideRight, width());
    setText(fitting);
    setToolTip(fitting == text ? QString() : ToolTipText(text));
    setAccessibleName(text);
  }

  Label& label_;
  bool pressed_ = false;  // The label took the press and gets the release.
};

class ButtonView : public QPushButton, public ControlView {
 public:
  ButtonView(PushButton& button, QWidget& parent) : QPushButton(&parent), button_(button) {
    Prepare(button, *this);
    setAutoDefault(true);  // Return presses it, as Space does.
    connect(this, &QPushButton::clicked, this, [this] { Press(); });
  }

  QWidget& Widget() override { return *this; }

  void Refresh() override {
    RefreshCommon(button_, *this);
    setFont(FontOf(button_.Design().TextFont, button_.Design().TextSize, false));
    setText(DisplayText(button_.Caption()).replace('&', "&&"));
    setDefault(button_.Default());
  }

 protected:
  /// Gives all buttons one palette, which is the same in every window. The style caches pictures of
  /// buttons by the palette's number, which differs from window to window, and Qt never drops the
  /// names of cached pictures.
  void initStyleOption(QStyleOptionButton* option) const override {
    static const QPalette shared = palette();
    QPushButton::initStyleOption(option);
    const auto group = option->palette.currentColorGroup();
    option->palette = shared;
    option->palette.setCurrentColorGroup(group);
  }

 private:
  // Buttons act on the front window, and assistive technology can press one without bringing its
  // window to the front.
  void Press() {
    if (!button_.Owner().IsOpen()) return;  // Its widget is deleted later.
    Host::Current().Windows().BringToFront(button_.Owner().shared_from_this());
    button_.RaiseAction();
  }

  PushButton& button_;
};

class CanvasView : public QWidget, public ControlView {
 public:
  CanvasView(Canvas& canvas, QWidget& parent) : QWidget(&parent), canvas_(canvas) {
    Prepare(canvas, *this);
    setAccessibleName(DisplayText(canvas.Design().description));
  }

  QWidget& Widget() override { return *this; }

  void Refresh() override {
    RefreshCommon(canvas_, *this);
    setAutoFillBackground(!canvas_.Transparent());
    icon_ = canvas_.Backdrop() ? IconOf(*canvas_.Backdrop()) : QIcon();
    update();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    icon_.paint(&painter, rect(), Qt::AlignLeft | Qt::AlignTop);
  }

 private:
  Canvas& canvas_;
  QIcon icon_;
};

/// Presents a label as a link to assistive technology.
class AccessibleLink : public QAccessibleWidget {
 public:
  explicit AccessibleLink(LabelView& view)
      : QAccessibleWidget(&view, QAccessible::Link), view_(view) {}

  QStringList actionNames() const override {
    return view_.IsReachable() ? QStringList{pressAction(), setFocusAction()} : QStringList();
  }

  void doAction(const QString& name) override {
    if (name != pressAction()) return QAccessibleWidget::doAction(name);
    view_.Press();
  }

 private:
  LabelView& view_;
};

/// True for a window of the program's own class. Qt presents boxes, dialogs and menus itself.
bool IsOwnWindow(const QObject& object) {
  return object.metaObject() == &QWidget::staticMetaObject &&
         static_cast<const QWidget&>(object).isWindow();
}

QAccessibleInterface* MakeAccessible(const QString& /*className*/, QObject* object) {
  if (object == nullptr) return nullptr;
  auto* label = dynamic_cast<LabelView*>(object);
  if (label != nullptr && label->IsLink()) return new AccessibleLink(*label);
  auto* canvas = dynamic_cast<CanvasView*>(object);
  if (canvas != nullptr) return new QAccessibleWidget(canvas, QAccessible::Graphic);
  if (!IsOwnWindow(*object)) return nullptr;
  auto* window = static_cast<QWidget*>(object);
  return new QAccessibleWidget(
      window, window->windowType() == Qt::Dialog ? QAccessible::Dialog : QAccessible::Window);
}

class ViewMaker : public ControlVisitor {
 public:
  explicit ViewMaker(QWidget& parent) : parent_(parent) {}
  void Visit(Label& label) override { made = new LabelView(label, parent_); }
  void Visit(PushButton& button) override { made = new ButtonView(button, parent_); }
  void Visit(Canvas& canvas) override { made = new CanvasView(canvas, parent_); }

  ControlView* made = nullptr;

 private:
  QWidget& parent_;
};

}  // namespace

void InstallAccessibility() { QAccessible::installFactory(MakeAccessible); }

ControlView* MakeView(RectControl& control, QWidget& parent) {
  ViewMaker maker(parent);
  control.Accept(maker);
  maker.made->Refresh();
  return maker.made;
}

}  // namespace vintrace::qt
