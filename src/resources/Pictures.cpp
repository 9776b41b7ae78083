#include "resources/Pictures.h"

namespace vintrace::pictures {
namespace {

using Holder = std::shared_ptr<const Picture>;

const Holder& Filled(Holder& holder, std::string_view fileName) {
  if (!holder) holder = Picture::_OpenFromApp(fileName);
  return holder;
}

}  // namespace

#define VINTRACE_PICTURE(name)            \
  std::shared_ptr<const Picture> name() { \
    static Holder holder;                 \
    return Filled(holder, #name ".png");  \
  }

VINTRACE_PICTURE(cs)
VINTRACE_PICTURE(cs2)
VINTRACE_PICTURE(cs3)
VINTRACE_PICTURE(cs4)
VINTRACE_PICTURE(cs5)
VINTRACE_PICTURE(cs55)
VINTRACE_PICTURE(cs6)
VINTRACE_PICTURE(cc)
VINTRACE_PICTURE(cc2014)
VINTRACE_PICTURE(cc2015)
VINTRACE_PICTURE(cc2017)
VINTRACE_PICTURE(cc2018)
VINTRACE_PICTURE(cc2019)
VINTRACE_PICTURE(und)
VINTRACE_PICTURE(splash)
VINTRACE_PICTURE(icon48)

#undef VINTRACE_PICTURE

}  // namespace vintrace::pictures
