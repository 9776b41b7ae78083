#include "platform/qt/MenuBarFace.h"

#include <QKeySequence>
#include <QMenuBar>

#include "platform/Commands.h"
#include "platform/Menu.h"
#include "platform/qt/DisplayText.h"
#include "platform/qt/Fonts.h"

namespace vintrace::qt {
namespace {

/// Qt's "Ctrl" is the command key on macOS, and its "Alt" the option key.
QKeySequence KeysOf(const String& shortcut) {
  const QString keys = DisplayText(shortcut).replace("Cmd", "Ctrl").replace("Option", "Alt");
  return QKeySequence::fromString(keys, QKeySequence::PortableText);
}

/// Always told, so that the platform moves nothing by its text.
QAction::MenuRole RoleOf(const MenuItem& item) {
  if (dynamic_cast<const QuitMenuItem*>(&item) != nullptr) return QAction::QuitRole;
  if (dynamic_cast<const ApplicationMenuItem*>(&item) != nullptr) {
    return QAction::ApplicationSpecificRole;
  }
  return QAction::NoRole;
}

QString TextOf(const MenuItem& item) { return DisplayText(item.Text()).replace('&', "&&"); }

}  // namespace

MenuBarFace::MenuBarFace(const MenuBar& menuBar) {
  for (const auto& menu : menuBar.Menus()) menus_.push_back(MenuOf(*menu));
  Refresh();
}

MenuBarFace::~MenuBarFace() = default;

QMenuBar* MenuBarFace::MakeBar(QWidget* window) {
  auto* bar = new QMenuBar(window);
  bar->setNativeMenuBar(window == nullptr);
  bar->setAccessibleName("メニューバー");
  bar->setFont(FontOf("Osaka", 12, false));
  for (const auto& menu : menus_) bar->addMenu(menu.get());
  return bar;
}

void MenuBarFace::AddShortcuts(QWidget& window) const {
  for (const Face& face : faces_) window.addAction(face.action);
}

void MenuBarFace::Refresh() {
  UpdateMenuItems();
  for (const Face& face : faces_) face.action->setEnabled(face.item->Enabled());
}

std::unique_ptr<QMenu> MenuBarFace::MenuOf(const MenuItem& menu) {
  auto face = std::make_unique<QMenu>(TextOf(menu));
  face->menuAction()->setMenuRole(RoleOf(menu));
  connect(face.get(), &QMenu::aboutToShow, this, &MenuBarFace::Refresh);
  for (const auto& item : menu.Items()) {
    if (item->IsSeparator()) {
      face->addSeparator()->setMenuRole(QAction::NoRole);
    } else {
      faces_.push_back({item.get(), ActionOf(*item, *face)});
    }
  }
  return face;
}

QAction* MenuBarFace::ActionOf(const MenuItem& item, QMenu& menu) {
  QAction* action = menu.addAction(TextOf(item));
  action->setObjectName(DisplayText(item.Name()));
  action->setShortcut(KeysOf(item.KeyboardShortcut()));
  action->setAutoRepeat(false);  // A key that is held is one command.
  action->setMenuRole(RoleOf(item));
  connect(action, &QAction::triggered, this, [this, &item] { Choose(item); });
  return action;
}

void MenuBarFace::Choose(const MenuItem& item) {
  ChooseMenuItem(item);
  Refresh();
}

}  // namespace vintrace::qt
