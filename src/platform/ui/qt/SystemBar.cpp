#include "platform/ui/qt/SystemBar.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDropEvent>
#include <QLabel>
#include <QMenuBar>
#include <QMimeData>
#include <QVBoxLayout>
#include <utility>

#include "platform/ui/qt/FileAddress.h"
#include "platform/ui/qt/widgets/Centre.h"
#include "platform/ui/qt/widgets/DisplayText.h"
#include "platform/ui/qt/widgets/MenuBarView.h"

namespace vintrace::qt {
namespace {

constexpr int Margin = 28;

/// The line of text in the stand-in window.
QString LineOn(const std::vector<FolderItem>& leftAside, const QFontMetrics& metrics) {
  constexpr int WidestName = 200;  // Pixels.
  if (leftAside.empty()) {
    return QStringLiteral("ここに書類をドロップするか、メニューから開いてください。");
  }
  const String leaf = leftAside.front().Name();
  const QString whole = DisplayText(leaf.empty() ? leftAside.front().NativePath() : leaf);
  const QString name = metrics.elidedText(whole, Qt::ElideMiddle, WidestName);
  const QString others =
      leftAside.size() == 1 ? QString() : QStringLiteral("ほか%1件").arg(leftAside.size() - 1);
  return QStringLiteral("「%1」%2は書類ではないため、開きませんでした。").arg(name, others);
}

class StandInWindow : public QWidget {
 public:
  StandInWindow(MenuBarView& view, std::function<void(const FolderItem&)> dropped,
                std::function<void()> quit)
      : dropped_(std::move(dropped)), quit_(std::move(quit)) {
    setObjectName("StandIn");
    setWindowTitle(QApplication::applicationName());
    setWindowFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                   Qt::WindowSystemMenuHint | Qt::WindowMinimizeButtonHint |
                   Qt::WindowCloseButtonHint);
    setAcceptDrops(true);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(Margin, Margin, Margin, Margin);
    layout->setMenuBar(view.MakeBar(this));
    layout->setSizeConstraint(QLayout::SetFixedSize);
    line_->setTextFormat(Qt::PlainText);
    layout->addWidget(line_);
  }

  void SetLeftAside(const std::vector<FolderItem>& items) {
    line_->setText(LineOn(items, line_->fontMetrics()));
  }

 protected:
  void dragEnterEvent(QDragEnterEvent* event) override {
    if (!FilesIn(*event).empty()) AcceptAsCopy(*event);
  }

  void dropEvent(QDropEvent* event) override {
    AcceptAsCopy(*event);
    for (const FolderItem& file : FilesIn(*event)) dropped_(file);
  }

  void closeEvent(QCloseEvent* event) override {
    event->accept();
    quit_();
  }

 private:
  static std::vector<FolderItem> FilesIn(const QDropEvent& event) {
    return FilesOf(event.mimeData()->data("text/uri-list"));
  }

  // Never as a move, even if the source proposes one: it would delete the document.
  static void AcceptAsCopy(QDropEvent& event) {
    event.setDropAction(Qt::CopyAction);
    event.accept();
  }

  QLabel* line_ = new QLabel(this);
  std::function<void(const FolderItem&)> dropped_;
  std::function<void()> quit_;
};

/// Creates its window when it is first needed, as a start with documents doesn't need it.
class StandInBar : public SystemBar {
 public:
  StandInBar(MenuBarView& view, std::function<void(const FolderItem&)> dropped,
             std::function<void()> quit)
      : view_(view), dropped_(std::move(dropped)), quit_(std::move(quit)) {}

  void SetNeeded(bool needed, bool takesFocus, const std::vector<FolderItem>& leftAside) override {
    if (needed && !window_) window_ = std::make_unique<StandInWindow>(view_, dropped_, quit_);
    if (needed) window_->SetLeftAside(leftAside);
    if (needed == (StandIn() != nullptr)) return;
    if (!needed) return window_->hide();
    MoveToCentre(*window_);
    window_->setAttribute(Qt::WA_ShowWithoutActivating, !takesFocus);
    window_->show();
  }

  QWidget* StandIn() const override {
    return window_ && window_->isVisible() ? window_.get() : nullptr;
  }

 private:
  MenuBarView& view_;
  std::function<void(const FolderItem&)> dropped_;
  std::function<void()> quit_;
  std::unique_ptr<StandInWindow> window_;
};

}  // namespace

std::unique_ptr<SystemBar> MakeSystemBar(MenuBarView& view,
                                         std::function<void(const FolderItem&)> dropped,
                                         std::function<void()> quit) {
  return std::make_unique<StandInBar>(view, std::move(dropped), std::move(quit));
}

}  // namespace vintrace::qt
