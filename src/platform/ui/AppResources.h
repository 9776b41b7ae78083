#pragma once

#include <span>
#include <string_view>

namespace vintrace {

/// One file among the application's resources.
struct AppResource {
  std::string_view name;
  std::string_view bytes;
};

/// The files that are embedded in the program, for the life of the process. The target that embeds
/// them defines this function.
std::span<const AppResource> AppResources();

}  // namespace vintrace
