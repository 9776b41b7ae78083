#include "platform/qt/Places.h"

#include <QFile>
#include <QStandardPaths>
#include <algorithm>
#include <cstdlib>
#include <system_error>
#include <utility>

namespace vintrace::qt {
namespace {

std::filesystem::path StandardFolder(QStandardPaths::StandardLocation location) {
  return QFile::encodeName(QStandardPaths::writableLocation(location)).toStdString();
}

}  // namespace

std::vector<Place> UsualPlaces() {
  std::vector<Place> places;
  for (auto& [kind, folder] :
       {Place{Place::Home, HomeFolder()},
        Place{Place::Desktop, StandardFolder(QStandardPaths::DesktopLocation)},
        Place{Place::Documents, StandardFolder(QStandardPaths::DocumentsLocation)},
        Place{Place::Root, "/"}}) {
    std::error_code error;
    Place place{kind, NormalPath(folder)};
    const bool isKnown = std::any_of(places.begin(), places.end(), [&](const Place& known) {
      return known.folder == place.folder;
    });
    if (!isKnown && std::filesystem::is_directory(place.folder, error)) {
      places.push_back(std::move(place));
    }
  }
  return places;
}

std::filesystem::path HomeFolder() {
  const char* home = std::getenv("HOME");
  return home != nullptr && home[0] == '/' ? home : "/";
}

std::filesystem::path NormalPath(const std::filesystem::path& path) {
  auto normal = path.lexically_normal();
  return normal.has_filename() ? normal : normal.parent_path();
}

std::filesystem::path TypedPath(std::string_view text, const std::filesystem::path& folder) {
  if (text == "~" || text.substr(0, 2) == "~/") {
    return NormalPath(HomeFolder().concat(text.substr(1)));
  }
  return NormalPath(folder / text);
}

}  // namespace vintrace::qt
