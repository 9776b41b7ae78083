#include "shell/App.h"

#include <exception>

#include "inspection/VersionCheck.h"
#include "launch/LocationStore.h"
#include "online/UpdateCheck.h"
#include "online/UpdateWin.h"
#include "platform/files/SpecialFolder.h"
#include "platform/text/Exceptions.h"
#include "platform/ui/Clipboard.h"
#include "platform/ui/Desktop.h"
#include "platform/ui/Host.h"
#include "shell/InformationCopy.h"
#include "shell/MainMenuBar.h"
#include "shell/Window1.h"
#include "shell/Window2.h"

namespace vintrace {
namespace {

constexpr std::string_view ApplicationIdentifier = "3";
constexpr std::string_view UpdateField = "Vintrace";
constexpr std::string_view LaunchReportField = "Vintrase";
constexpr std::string_view DocumentFileType = "indd";

/// The open window `index`, 0 for the front one. Raises `NilObjectException` if there is none.
std::shared_ptr<Window> WindowAt(int index) {
  auto window = desktop::Window(index);
  if (!window) throw NilObjectException("Window");
  return window;
}

String VersionTextOf(const App& app) {
  return ApplicationVersionText(app.MajorVersion(), app.MinorVersion(), app.BugVersion());
}

std::optional<FolderItem> AskForDocument() { return desktop::GetOpenFolderItem(DocumentFileType); }

}  // namespace

String ApplicationVersionText(int major, int minor, int bug) {
  return Str(major) + Str(minor) + Str(bug);
}

App& App::Instance() { return static_cast<App&>(Host::Current().Application()); }

void App::Event_EnableMenuItems() {
  hiraku().Enable();
  kono().Enable();
  upchk().Enable();
}

void App::Event_OpenDocument(const std::optional<FolderItem>& item) {
  if (const auto document = item ? item : AskForDocument()) VersionCheck(*document);
}

void App::Event_Open() {
  AppLocation();
  const String version = VersionTextOf(*this);
  Openupchk();
  kcheck(String(ApplicationIdentifier), version, String(LaunchReportField));
}

bool App::_hiraku_Action() {
  if (const auto document = AskForDocument()) VersionCheck(*document);
  return false;
}

bool App::_kono_Action() {
  Window2::Instance()->Show();
  return false;
}

bool App::_upchk_Action() {
  const String reply =
      UpdateCheck(String(ApplicationIdentifier), VersionTextOf(*this), String(UpdateField));
  if (TextEquals(reply, "true")) {
    online::UpdateWin::Instance()->Show();
  } else if (TextEquals(reply, "false")) {
    desktop::MsgBox("最新版を使用しています。");
  } else {
    desktop::MsgBox("通信に障害があり、確認できませんでした。");
  }
  return false;
}

bool App::_EditAllCopy_Action() {
  const String rows = InformationOfAllWindows();
  if (rows.empty()) return false;  // No inspection window is open.
  Clipboard clipboard;
  clipboard.SetText(rows);
  clipboard.Close();
  desktop::MsgBox(String("全てのウィンドウの情報をコピーしました。")
                      .append(EndOfLine)
                      .append("表計算アプリやテキストエディタにペーストしてご利用ください。"));
  return false;
}

bool App::_AllClose_Action() {
  // From back to front, so that the indices of the remaining windows stay valid.
  for (int index = desktop::WindowCount() - 1; index >= 0; --index) WindowAt(index)->Close();
  return false;
}

String App::UpdateCheck(const String& app_id, const String& ver, const String& regi) {
  return online::PostToService(online::UpdatePath, app_id, ver, regi);
}

void App::kcheck(const String& app_id, const String& ver, const String& regi) {
  online::PostToService(online::ReportPath, app_id, ver, regi);
}

void App::AppLocation() {
  const auto folder = SpecialFolder::ApplicationData();
  if (!folder) throw NilObjectException("the folder of application data");
  myf = folder->Child(launch::SettingsFileName);
  launch::LoadLocations(*myf, apploc);
}

void App::Openupchk() {
  const String reply =
      UpdateCheck(String(ApplicationIdentifier), VersionTextOf(*this), String(UpdateField));
  if (TextEquals(reply, "true")) online::UpdateWin::Instance()->Show();
}

void App::VersionCheck(const FolderItem& item) {
  try {
    if (!inspection::IsDocumentName(item.Name())) return;
    inspection::VersionCheck(item, *Window::New<Window1>());
  } catch (const std::exception&) {
    desktop::MsgBox(String("エラーが起こりましたので").append(EndOfLine).append("終了します"));
    desktop::Quit(0);
  }
}

}  // namespace vintrace
