#include "resources/Pictures.h"

#include <functional>
#include <map>

#include "platform/text/String.h"

namespace vintrace::pictures {

std::shared_ptr<const Picture> Named(std::string_view name) {
  static std::map<String, std::shared_ptr<const Picture>, std::less<>> opened;
  auto& picture = opened[String(name)];
  if (!picture) picture = Picture::_OpenFromApp(String(name) + ".png");
  return picture;
}

}  // namespace vintrace::pictures
