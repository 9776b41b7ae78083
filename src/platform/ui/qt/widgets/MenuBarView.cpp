#include "platform/ui/qt/widgets/MenuBarView.h"

#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>
#include <QShortcut>
#include <algorithm>

#include "platform/ui/Commands.h"
#include "platform/ui/Menu.h"
#include "platform/ui/qt/widgets/DisplayText.h"
#include "platform/ui/qt/widgets/Fonts.h"

namespace vintrace::qt {
namespace {

/// Qt's "Ctrl" is the command key on macOS, and its "Alt" the option key.
QKeySequence KeysOf(const String& shortcut) {
  const QString keys = DisplayText(shortcut).replace("Cmd", "Ctrl").replace("Option", "Alt");
  return QKeySequence::fromString(keys, QKeySequence::PortableText);
}

/// Set for every item; otherwise the platform would move items because of their text.
QAction::MenuRole RoleOf(const MenuItem& item) {
  if (dynamic_cast<const QuitMenuItem*>(&item) != nullptr) return QAction::QuitRole;
  if (dynamic_cast<const ApplicationMenuItem*>(&item) != nullptr) {
    return QAction::ApplicationSpecificRole;
  }
  return QAction::NoRole;
}

QString TextOf(const MenuItem& item) { return DisplayText(item.Text()).replace('&', "&&"); }

}  // namespace

MenuBarView::MenuBarView(const MenuBar& menuBar) : menuBar_(menuBar) {
  for (const auto& menu : menuBar.Menus()) {
    for (const auto& item : menu->Items()) {
      if (!item->IsSeparator()) MakeAction(*item);
    }
  }
  Refresh();
}

QMenuBar* MenuBarView::MakeBar(QWidget* window) {
  auto* bar = new QMenuBar(window);
  bar->setNativeMenuBar(window == nullptr);
  bar->setAccessibleName("メニューバー");
  bar->setFont(FontOf("Osaka", 12, false));
  for (const auto& menu : menuBar_.Menus()) AddMenu(*menu, *bar);
  if (window != nullptr) {
    new QShortcut(Qt::Key_F10, bar, [bar] { bar->setActiveAction(bar->actions().constFirst()); });
  }
  return bar;
}

void MenuBarView::AddShortcuts(QWidget& window) const {
  for (const View& view : views_) window.addAction(view.action);
}

void MenuBarView::Refresh() {
  UpdateMenuItems();
  for (const View& view : views_) {
    view.action->setEnabled(view.item->Enabled());
    view.action->setVisible(view.item->Visible);
  }
}

void MenuBarView::MakeAction(const MenuItem& item) {
  auto* action = new QAction(TextOf(item), this);
  action->setObjectName(DisplayText(item.Name()));
  action->setShortcut(KeysOf(item.KeyboardShortcut()));
  action->setAutoRepeat(false);  // Holding the keys is one command.
  action->setMenuRole(RoleOf(item));
  connect(action, &QAction::triggered, this, [this, &item] { Choose(item); });
  views_.push_back({&item, action});
}

void MenuBarView::AddMenu(const MenuItem& menu, QMenuBar& bar) {
  QMenu* view = bar.addMenu(TextOf(menu));
  view->menuAction()->setMenuRole(RoleOf(menu));
  connect(view, &QMenu::aboutToShow, this, &MenuBarView::Refresh);
  for (const auto& item : menu.Items()) {
    if (item->IsSeparator()) {
      view->addSeparator()->setMenuRole(QAction::NoRole);
    } else {
      view->addAction(ActionOf(*item));
    }
  }
}

QAction* MenuBarView::ActionOf(const MenuItem& item) const {
  return std::ranges::find(views_, &item, &View::item)->action;
}

void MenuBarView::Choose(const MenuItem& item) {
  ChooseMenuItem(item);
  Refresh();
}

}  // namespace vintrace::qt
