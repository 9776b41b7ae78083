#pragma once

#include <span>
#include <string_view>

namespace vintrace {

/// An embedded resource file.
struct AppResource {
  std::string_view name;
  std::string_view bytes;
};

/// The files embedded in the program, which live as long as the process. The target that embeds
/// them defines this function.
std::span<const AppResource> AppResources();

}  // namespace vintrace
