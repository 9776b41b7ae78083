#pragma once

#include <filesystem>
#include <string_view>
#include <vector>

namespace vintrace::qt {

/// The folders that users look for first, as far as there are any, each once and in the order to be
/// shown: home, desktop, documents, root.
struct Place {
  enum Kind { Home, Desktop, Documents, Root } kind;
  std::filesystem::path folder;
};
std::vector<Place> UsualPlaces();

/// The folder that HOME names; the root if it names none.
std::filesystem::path HomeFolder();

/// `path` without ".", ".." and a slash at the end. ".." goes back the way that the path came, also
/// out of a folder that is a link.
std::filesystem::path NormalPath(const std::filesystem::path& path);

/// What a user means by `text`, typed while `folder` is shown: an absolute path, one from the home
/// ("~", "~/…") or one from `folder`. Nothing is trimmed.
std::filesystem::path TypedPath(std::string_view text, const std::filesystem::path& folder);

}  // namespace vintrace::qt
