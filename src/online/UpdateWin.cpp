#include "online/UpdateWin.h"

#include "platform/ui/Desktop.h"
#include "platform/ui/Host.h"
#include "resources/Endpoints.h"
#include "resources/Pictures.h"

namespace vintrace::online {
namespace {

constexpr Color LinkColor = RGB(0, 0, 255);
constexpr Color HoverColor = RGB(255, 0, 0);

enum Index { Label1At, PushButton1At, PushButton2At, Label2At, Canvas1At };

}  // namespace

void UpdateWin::Layout() {
  SetTitle("Vintrace CS");
  design_ = {.Width = 337,
             .Height = 115,
             .MinWidth = 64,
             .MinHeight = 64,
             .MaxWidth = 32000,
             .MaxHeight = 32000,
             .Frame = Frame::GlobalFloating,
             .Placement = Placement::CentreOfMainScreen,
             .CloseButton = true,
             .Resizeable = true,
             .MaximizeButton = false,
             .MinimizeButton = true};
}

void UpdateWin::CreateControls() { _CreateControls0(); }

void UpdateWin::_CreateControls0() {
  Add<Label>({"Label1", 87, 14, 230, 20, 0, "System", 0})
      .SetText("新しいバージョンが公開されています。");

  auto& close = Add<PushButton>({"PushButton1", 251, 75, 66, 20, 1, "System", 12});
  close.SetCaption("閉じる");
  close.Action = [this] { PushButton1_Action(); };

  auto& download = Add<PushButton>({"PushButton2", 87, 75, 152, 20, 2, "System", 12});
  download.SetCaption("最新版をダウンロード");
  download.SetDefault(true);
  download.Action = [this] { PushButton2_Action(); };

  auto& link = Add<Label>({"Label2", 97, 42, 210, 20, 3, "System", 12});
  link.SetText(String("サイトを見に行く ").append(endpoints::WebPage));
  link.SetTextAlign(TextAlign::Center);
  link.SetTextColor(LinkColor);
  link.MouseUp = [this] { Label2_MouseUp(); };
  link.MouseDown = [this] { return Label2_MouseDown(); };
  link.MouseEnter = [this] { Label2_MouseEnter(); };
  link.MouseExit = [this] { Label2_MouseExit(); };

  auto& icon = Add<Canvas>({"Canvas1", 20, 14, 48, 48, 4, "", 0, "Vintraceのアイコン"});
  icon.SetBackdrop(pictures::icon48());
  icon.SetTransparent(true);
}

Label& UpdateWin::Label1() const { return ControlAt<Label>(Label1At); }
PushButton& UpdateWin::PushButton1() const { return ControlAt<PushButton>(PushButton1At); }
PushButton& UpdateWin::PushButton2() const { return ControlAt<PushButton>(PushButton2At); }
Label& UpdateWin::Label2() const { return ControlAt<Label>(Label2At); }
Canvas& UpdateWin::Canvas1() const { return ControlAt<Canvas>(Canvas1At); }

void UpdateWin::PushButton1_Action() { Close(); }

void UpdateWin::PushButton2_Action() {
  desktop::ShowURL(String(endpoints::DownloadPage));
  Close();
}

void UpdateWin::Label2_MouseUp() { desktop::ShowURL(String(endpoints::WebPage)); }

bool UpdateWin::Label2_MouseDown() { return true; }

void UpdateWin::Label2_MouseEnter() { Label2().SetTextColor(HoverColor); }

void UpdateWin::Label2_MouseExit() { Label2().SetTextColor(LinkColor); }

void UpdateWin::Event_Open() {
  SetTitle("Vintrace CS Ver." + Host::Current().Application().LongVersion());
}

}  // namespace vintrace::online
