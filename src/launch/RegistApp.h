#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/files/FolderItem.h"
#include "platform/text/String.h"

namespace vintrace::launch {

/// Asks the user for the application of `product`, a release's name, and adds its location in shell
/// form at the end of `locations` and of `file`. The choice is not checked. `shp` gets the location
/// too. False on cancel, which changes nothing. Raises like `RewriteLocations`; `locations` and
/// `shp` have the new location even then.
bool RegistApp(const String& product, const std::optional<FolderItem>& file,
               std::vector<String>& locations, String& shp);

/// Removes the entry `index`, which must exist, from `locations` and `file`. Raises like
/// `RewriteLocations`; `locations` has lost the entry even then.
void DeleteApp(const std::optional<FolderItem>& file, std::vector<String>& locations,
               std::int64_t index);

}  // namespace vintrace::launch
