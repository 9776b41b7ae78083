#include "platform/ui/qt/widgets/MenuBarView.h"

#include <QKeySequence>
#include <QMenuBar>

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

MenuBarView::MenuBarView(const MenuBar& menuBar) {
  for (const auto& menu : menuBar.Menus()) menus_.push_back(MenuOf(*menu));
  Refresh();
}

MenuBarView::~MenuBarView() = default;

QMenuBar* MenuBarView::MakeBar(QWidget* window) {
  auto* bar = new QMenuBar(window);
  bar->setNativeMenuBar(window == nullptr);
  bar->setAccessibleName("メニューバー");
  bar->setFont(FontOf("Osaka", 12, false));
  for (const auto& menu : menus_) bar->addMenu(menu.get());
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

std::unique_ptr<QMenu> MenuBarView::MenuOf(const MenuItem& menu) {
  auto view = std::make_unique<QMenu>(TextOf(menu));
  view->menuAction()->setMenuRole(RoleOf(menu));
  connect(view.get(), &QMenu::aboutToShow, this, &MenuBarView::Refresh);
  for (const auto& item : menu.Items()) {
    if (item->IsSeparator()) {
      view->addSeparator()->setMenuRole(QAction::NoRole);
    } else {
      views_.push_back({item.get(), ActionOf(*item, *view)});
    }
  }
  return view;
}

QAction* MenuBarView::ActionOf(const MenuItem& item, QMenu& menu) {
  QAction* action = menu.addAction(TextOf(item));
  action->setObjectName(DisplayText(item.Name()));
  action->setShortcut(KeysOf(item.KeyboardShortcut()));
  action->setAutoRepeat(false);  // Holding the keys is one command.
  action->setMenuRole(RoleOf(item));
  connect(action, &QAction::triggered, this, [this, &item] { Choose(item); });
  return action;
}

void MenuBarView::Choose(const MenuItem& item) {
  ChooseMenuItem(item);
  Refresh();
}

}  // namespace vintrace::qt
