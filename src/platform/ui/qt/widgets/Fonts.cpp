#include "platform/ui/qt/widgets/Fonts.h"

#include <QFontDatabase>
#include <QStringList>
#include <algorithm>

namespace vintrace::qt {
namespace {

// Osaka comes with macOS. Elsewhere the first of these that is installed takes its place; with none
// of them, whatever font the system falls back to for Japanese.
QStringList JapaneseFamilies() {
  return {"Osaka",       "Hiragino Sans", "Noto Sans CJK JP", "Noto Sans JP",
          "IPAexGothic", "IPAPGothic",    "VL PGothic",       "TakaoPGothic",
          "IPAGothic",   "VL Gothic",     "TakaoGothic",      "sans-serif"};
}

// The one family that is used: for a list of several, Qt looks up the system's fallbacks of every
// script at once, and for one alone only when it lacks a character.
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
  if (pixelSize > 0) font.setPixelSize(pixelSize);
  font.setUnderline(underline);
  return font;
}

}  // namespace vintrace::qt
