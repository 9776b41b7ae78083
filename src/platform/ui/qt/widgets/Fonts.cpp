#include "platform/ui/qt/widgets/Fonts.h"

#include <QFontDatabase>
#include <QStringList>
#include <algorithm>

namespace vintrace::qt {
namespace {

// Osaka comes with macOS. On other systems, the first installed family of this list replaces it, or
// else the system's fallback font for Japanese.
QStringList JapaneseFamilies() {
  return {"Osaka",       "Hiragino Sans", "Noto Sans CJK JP", "Noto Sans JP",
          "IPAexGothic", "IPAPGothic",    "VL PGothic",       "TakaoPGothic",
          "IPAGothic",   "VL Gothic",     "TakaoGothic",      "sans-serif"};
}

// A font with a single family: Qt looks up the system's fallbacks only when the family lacks a
// character. With a list of families, it looks them up at once, for every script.
const QString& JapaneseFamily() {
  static const QString family = [] {
    const QStringList families = JapaneseFamilies();
    const auto installed = std::ranges::find_if(families, &QFontDatabase::hasFamily);
    return installed == families.end() ? families.back() : *installed;
  }();
  return family;
}

}  // namespace

QFont FontOf(std::string_view family, int pixelSize, bool underline) {
  QFont font;
  if (family == "Osaka") font.setFamily(JapaneseFamily());
  constexpr int LayoutSize = 13;  // The layouts are in pixels, and drawn for this size.
  font.setPixelSize(pixelSize > 0 ? pixelSize : LayoutSize);
  font.setUnderline(underline);
  return font;
}

}  // namespace vintrace::qt
