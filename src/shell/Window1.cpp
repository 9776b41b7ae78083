#include "shell/Window1.h"

#include <array>

#include "launch/LocationStore.h"
#include "launch/OpenApp.h"
#include "launch/RegistApp.h"
#include "platform/ui/Clipboard.h"
#include "platform/ui/Desktop.h"
#include "resources/Endpoints.h"
#include "resources/Pictures.h"
#include "shell/App.h"
#include "shell/InformationCopy.h"
#include "shell/MainMenuBar.h"

namespace vintrace {
namespace {

constexpr int Width = 280;
constexpr int Height = 150;

constexpr Color LinkColor = RGB(0, 0, 255);
constexpr Color HoverColor = RGB(255, 0, 0);

enum class Kind { Label, PushButton, Canvas };

struct ControlRow {
  ControlDesign design;
  Kind kind;
  std::string_view text;
};

/// The controls in creation order. `InformationOfAllWindows` relies on their indices, and later
/// controls are on top: `PushButton3` covers the link `StaticText4`.
constexpr std::array<ControlRow, 9> ControlTable{{
    {{"PushButton2", 183, 111, 69, 20, 0, "Osaka", 12}, Kind::PushButton, "閉じる"},
    {{"StaticText1", 20, 10, 240, 20, 1, "Osaka", 12}, Kind::Label, "Vintrace CS"},
    {{"StaticText2", 104, 38, 161, 20, 2, "Osaka", 12}, Kind::Label, "Adobe InDesign CS3"},
    {{"StaticText3", 105, 57, 137, 18, 4, "Osaka", 10}, Kind::Label, "Macintosh Edition"},
    {{"StaticText5", 105, 78, 160, 25, 6, "Osaka", 14},
     Kind::Label,
     inspection::UnwrittenBuildText},
    {{"Label1", 183, 12, 91, 20, 7, "System", 0}, Kind::Label, "ファイル名"},
    {{"Canvas1", 34, 38, 48, 48, 3, "", 0, "製品のアイコン"}, Kind::Canvas, ""},
    {{"StaticText4", 20, 114, 114, 20, 5, "Osaka", 12}, Kind::Label, endpoints::WebPage},
    {{"PushButton3", 20, 111, 142, 20, 8, "Osaka", 12}, Kind::PushButton, "該当バージョンで開く"},
}};

enum Index {
  PushButton2At,
  StaticText1At,
  StaticText2At,
  StaticText3At,
  StaticText5At,
  Label1At,
  Canvas1At,
  StaticText4At,
  PushButton3At
};

void CloseFrontWindow() {
  if (const auto front = desktop::Window(0)) front->Close();
}

/// Makes room for the application that opens the document.
void MakeRoom() {
  desktop::YieldFocus();
  CloseFrontWindow();
}

}  // namespace

void Window1::Layout() {
  SetMenuBar(MainMenuBar::Instance());
  design_ = {.Width = Width,
             .Height = Height,
             .MinWidth = Width,
             .MinHeight = Height,
             .MaxWidth = Width,
             .MaxHeight = Height,
             .CloseButton = true,
             .Resizeable = false,
             .MaximizeButton = false,
             .MinimizeButton = false};
}

void Window1::CreateControls() { _CreateControls0(); }

void Window1::_CreateControls0() {
  for (const ControlRow& row : ControlTable) {
    switch (row.kind) {
      case Kind::Label:
        Add<Label>(row.design).SetText(String(row.text));
        break;
      case Kind::PushButton:
        Add<PushButton>(row.design).SetCaption(String(row.text));
        break;
      case Kind::Canvas:
        Add<Canvas>(row.design).SetTransparent(true);
        break;
    }
  }
  PushButton2().Action = [this] { PushButton2_Action(); };
  Label1().SetVisible(false);
  Label1().SetEnabled(false);
  StaticText4().SetTextColor(LinkColor);
  StaticText4().MouseExit = [this] { StaticText4_MouseExit(); };
  StaticText4().MouseEnter = [this] { StaticText4_MouseEnter(); };
  StaticText4().MouseUp = [this] { StaticText4_MouseUp(); };
  StaticText4().MouseDown = [this] { return StaticText4_MouseDown(); };
  PushButton3().Action = [this] { PushButton3_Action(); };
}

PushButton& Window1::PushButton2() const { return ControlAt<PushButton>(PushButton2At); }
Label& Window1::StaticText1() const { return ControlAt<Label>(StaticText1At); }
Label& Window1::StaticText2() const { return ControlAt<Label>(StaticText2At); }
Label& Window1::StaticText3() const { return ControlAt<Label>(StaticText3At); }
Label& Window1::StaticText5() const { return ControlAt<Label>(StaticText5At); }
Label& Window1::Label1() const { return ControlAt<Label>(Label1At); }
Canvas& Window1::Canvas1() const { return ControlAt<Canvas>(Canvas1At); }
Label& Window1::StaticText4() const { return ControlAt<Label>(StaticText4At); }
PushButton& Window1::PushButton3() const { return ControlAt<PushButton>(PushButton3At); }

void Window1::PushButton2_Action() { CloseFrontWindow(); }

void Window1::StaticText4_MouseExit() { StaticText4().SetTextColor(LinkColor); }

void Window1::StaticText4_MouseEnter() { StaticText4().SetTextColor(HoverColor); }

void Window1::StaticText4_MouseUp() { desktop::ShowURL(String(endpoints::WebPage)); }

bool Window1::StaticText4_MouseDown() { return true; }

void Window1::PushButton3_Action() {
  const std::vector<String>& locations = App::Instance().apploc;
  if (const auto known = launch::FindLocation(locations, StaticText2().Text())) {
    if (OpenApp(locations.at(static_cast<std::size_t>(*known)))) {
      MakeRoom();
      return;
    }
    DeleteApp(*known);
  }
  if (!RegistApp()) {
    desktop::MsgBox("該当するバージョンのInDesignが見つかりません。");
  } else if (!OpenApp(shp)) {
    desktop::MsgBox("該当するバージョンのInDesignで開く事が出来ませんでした。");
  } else {
    MakeRoom();
  }
}

MenuItem& Window1::EditMenu() const { return MenuBar()->Item("EditMenu"); }
ApplicationMenuItem& Window1::kono() const { return MenuBar()->Item<ApplicationMenuItem>("kono"); }
MenuItem& Window1::EditSeparator2() const { return MenuBar()->Item("EditSeparator2"); }
MenuItem& Window1::upchk() const { return MenuBar()->Item("upchk"); }
MenuItem& Window1::AllClose() const { return MenuBar()->Item("AllClose"); }
MenuItem& Window1::closewin() const { return MenuBar()->Item("closewin"); }
MenuItem& Window1::EditAllCopy() const { return MenuBar()->Item("EditAllCopy"); }
MenuItem& Window1::clcopy() const { return MenuBar()->Item("clcopy"); }
MenuItem& Window1::FileMenu() const { return MenuBar()->Item("FileMenu"); }
QuitMenuItem& Window1::FileQuit() const { return MenuBar()->Item<QuitMenuItem>("FileQuit"); }
MenuItem& Window1::hiraku() const { return MenuBar()->Item("hiraku"); }

void Window1::AddMenuHandlers() {
  AddMenuHandler("clcopy", [this] { return _clcopy_Action(); });
  AddMenuHandler("closewin", [this] { return _closewin_Action(); });
}

void Window1::Event_EnableMenuItems() {
  clcopy().Enable();
  closewin().Enable();
  EditAllCopy().Enable();
  AllClose().Enable();
}

bool Window1::_clcopy_Action() {
  const InformationFields fields = {Label1().Text(), StaticText2().Text(), StaticText3().Text(),
                                    StaticText5().Text()};
  Clipboard clipboard;
  clipboard.SetText(InformationRow(fields, InformationConverter()));
  clipboard.Close();
  desktop::MsgBox(Label1().Text() + "の情報をコピーしました");
  return false;
}

bool Window1::_closewin_Action() {
  Close();
  return false;
}

bool Window1::OpenApp(const String& path) { return launch::OpenApp(path, inddDoc); }

bool Window1::RegistApp() {
  App& app = App::Instance();
  return launch::RegistApp(StaticText2().Text(), app.myf, app.apploc, shp);
}

void Window1::DeleteApp(std::int64_t index) {
  App& app = App::Instance();
  launch::DeleteApp(app.myf, app.apploc, index);
}

void Window1::SetPicture(std::string_view name) { Canvas1().SetBackdrop(pictures::Named(name)); }

void Window1::SetDocumentName(const String& name) {
  SetTitle(name);
  Label1().SetText(name);
}

}  // namespace vintrace
