#include "shell/MainMenuBar.h"

#include <span>
#include <string_view>
#include <utility>

#include "platform/text/Exceptions.h"
#include "shell/App.h"

namespace vintrace {
namespace {

enum class Class { MenuItem, QuitMenuItem, ApplicationMenuItem };

struct ItemRow {
  std::string_view name;
  std::string_view text;
  std::string_view keyboardShortcut;
  Class itemClass = Class::MenuItem;
};

constexpr ItemRow FileMenu{"FileMenu", "ファイル", ""};
constexpr ItemRow FileItems[] = {
    {"hiraku", "開く", "Cmd+O"},
    {"FileQuit", "終了", "Cmd+Q", Class::QuitMenuItem},
};

constexpr ItemRow EditMenu{"EditMenu", "編集", ""};
constexpr ItemRow EditItems[] = {
    {"clcopy", "コピー", "Cmd+C"},
    {"EditAllCopy", "全てコピー", "Cmd+Option+C"},
    {"closewin", "閉じる", "Cmd+W"},
    {"AllClose", "全て閉じる", "Cmd+Option+W"},
    {"upchk", "Update Check", "Cmd+R"},
    {"EditSeparator2", "-", ""},
    {"kono", "Vintrace ...", "", Class::ApplicationMenuItem},
};

template <class ItemClass>
std::unique_ptr<MenuItem> Make(const ItemRow& row) {
  return std::make_unique<ItemClass>(String(row.name), String(row.text),
                                     String(row.keyboardShortcut));
}

std::unique_ptr<MenuItem> ItemOf(const ItemRow& row) {
  switch (row.itemClass) {
    case Class::QuitMenuItem:
      return Make<QuitMenuItem>(row);
    case Class::ApplicationMenuItem:
      return Make<ApplicationMenuItem>(row);
    case Class::MenuItem:
      break;
  }
  return Make<MenuItem>(row);
}

std::unique_ptr<MenuItem> MenuOf(const ItemRow& title, std::span<const ItemRow> items) {
  auto menu = ItemOf(title);
  for (const ItemRow& row : items) menu->Append(ItemOf(row));
  return menu;
}

const MenuBar& ApplicationMenuBar() {
  const auto& menuBar = App::Instance().MenuBar();
  if (!menuBar) throw NilObjectException("MenuBar");
  return *menuBar;
}

}  // namespace

const std::shared_ptr<MainMenuBar>& MainMenuBar::Instance() {
  static const std::shared_ptr<MainMenuBar> instance = [] {
    auto menuBar = std::make_shared<MainMenuBar>();
    menuBar->Constructor();
    return menuBar;
  }();
  return instance;
}

void MainMenuBar::Constructor() {
  Untitled0();
  Untitled1();
}

void MainMenuBar::Untitled0() { Append(MenuOf(FileMenu, FileItems)); }

void MainMenuBar::Untitled1() { Append(MenuOf(EditMenu, EditItems)); }

MenuItem& hiraku() { return ApplicationMenuBar().Item("hiraku"); }

ApplicationMenuItem& kono() { return ApplicationMenuBar().Item<ApplicationMenuItem>("kono"); }

MenuItem& upchk() { return ApplicationMenuBar().Item("upchk"); }

}  // namespace vintrace
