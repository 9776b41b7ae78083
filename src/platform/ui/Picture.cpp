#include "platform/ui/Picture.h"

#include <algorithm>
#include <cerrno>

#include "platform/text/Exceptions.h"
#include "platform/ui/AppResources.h"

namespace vintrace {
namespace {

std::string_view ResourceBytes(std::string_view name) {
  const auto resources = AppResources();
  const auto found = std::ranges::find(resources, name, &AppResource::name);
  if (found == resources.end()) throw IOException(ENOENT, "No resource " + String(name));
  return found->bytes;
}

String CompanionName(std::string_view name) {
  const auto point = std::min(name.rfind('.'), name.size());
  return String(name.substr(0, point)).append("@2x").append(name.substr(point));
}

}  // namespace

std::shared_ptr<const Picture> Picture::_OpenFromApp(std::string_view name) {
  return std::make_shared<const Picture>(ResourceBytes(name), ResourceBytes(CompanionName(name)));
}

}  // namespace vintrace
