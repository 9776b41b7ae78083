#include "shell/Window2.h"

#include <array>

#include "platform/ui/Desktop.h"
#include "resources/Endpoints.h"
#include "resources/Pictures.h"
#include "shell/App.h"

namespace vintrace {
namespace {

constexpr Color LinkColor = RGB(255, 255, 255);
constexpr Color HoverColor = RGB(255, 0, 0);

struct ControlRow {
  ControlDesign design;
  std::string_view text;
};

/// The controls, all of them labels, in creation order.
constexpr std::array<ControlRow, 4> ControlTable{{
    {{"StaticText1", 249, 210, 150, 20, 1, "Osaka", 0}, endpoints::WebPageWithoutSlash},
    {{"StaticText2", 249, 234, 150, 20, 3, "Osaka", 0}, endpoints::Mail},
    {{"StaticText5", 249, 180, 107, 22, 5, "Osaka", 0}, "Ver.1.20"},
    {{"Label1", 249, 93, 176, 75, 6, "System", 0},
     "I check the last making application version of documents made after InDesign CS."},
}};

enum Index { StaticText1At, StaticText2At, StaticText5At, Label1At };

}  // namespace

void Window2::Layout() {
  SetBackdrop(pictures::splash());
  SetTitle("Vintrace CS");
  design_ = {.Width = 460,
             .Height = 300,
             .MinWidth = 300,
             .MinHeight = 180,
             .MaxWidth = 300,
             .MaxHeight = 180,
             .Frame = Frame::ModalDialog,
             .Placement = Placement::CentreOfMainScreen,
             .CloseButton = true,
             .Resizeable = true,
             .MaximizeButton = true,
             .MinimizeButton = true,
             .HasBackColor = true,
             .BackColor = White};
}

void Window2::CreateControls() { _CreateControls0(); }

void Window2::_CreateControls0() {
  for (const ControlRow& row : ControlTable) {
    auto& label = Add<Label>(row.design);
    label.SetText(String(row.text));
    label.SetTextColor(LinkColor);
    label.SetTransparent(true);
  }
  StaticText1().SetUnderline(true);
  StaticText1().MouseExit = [this] { StaticText1_MouseExit(); };
  StaticText1().MouseEnter = [this] { StaticText1_MouseEnter(); };
  StaticText1().MouseDown = [this] { return StaticText1_MouseDown(); };
  StaticText1().MouseUp = [this] { StaticText1_MouseUp(); };
  StaticText2().SetUnderline(true);
  StaticText2().MouseUp = [this] { StaticText2_MouseUp(); };
  StaticText2().MouseExit = [this] { StaticText2_MouseExit(); };
  StaticText2().MouseEnter = [this] { StaticText2_MouseEnter(); };
  StaticText2().MouseDown = [this] { return StaticText2_MouseDown(); };
  Label1().SetMultiline(true);
}

Label& Window2::StaticText1() const { return ControlAt<Label>(StaticText1At); }
Label& Window2::StaticText2() const { return ControlAt<Label>(StaticText2At); }
Label& Window2::StaticText5() const { return ControlAt<Label>(StaticText5At); }
Label& Window2::Label1() const { return ControlAt<Label>(Label1At); }

void Window2::StaticText1_MouseExit() { StaticText1().SetTextColor(LinkColor); }

void Window2::StaticText1_MouseEnter() { StaticText1().SetTextColor(HoverColor); }

bool Window2::StaticText1_MouseDown() { return true; }

void Window2::StaticText1_MouseUp() { desktop::ShowURL(String(endpoints::WebPage)); }

void Window2::StaticText2_MouseUp() { desktop::ShowURL(String(endpoints::Mail)); }

void Window2::StaticText2_MouseExit() { StaticText2().SetTextColor(LinkColor); }

void Window2::StaticText2_MouseEnter() { StaticText2().SetTextColor(HoverColor); }

bool Window2::StaticText2_MouseDown() { return true; }

void Window2::Event_Open() { StaticText5().SetText("Ver. " + App::Instance().LongVersion()); }

void Window2::Event_MouseUp() { Close(); }

bool Window2::Event_MouseDown() { return true; }

}  // namespace vintrace
