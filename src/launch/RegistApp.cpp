#include "launch/RegistApp.h"

#include "launch/LocationStore.h"
#include "platform/files/SpecialFolder.h"
#include "platform/ui/OpenDialog.h"

namespace vintrace::launch {

bool RegistApp(const String& product, const std::optional<FolderItem>& file,
               std::vector<String>& locations, String& shp) {
  OpenDialog dialog;
  dialog.InitialDirectory = SpecialFolder::Applications();
  dialog.Title = product + "を選択して下さい。";
  const auto application = dialog.ShowModal();
  if (!application) return false;
  locations.push_back(application->ShellPath());
  shp = locations.back();
  RewriteLocations(file, locations);
  return true;
}

void DeleteApp(const std::optional<FolderItem>& file, std::vector<String>& locations,
               std::int64_t index) {
  locations.erase(locations.begin() + index);
  RewriteLocations(file, locations);
}

}  // namespace vintrace::launch
