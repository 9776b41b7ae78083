#include "platform/qt/Fonts.h"

#include <QStringList>

namespace vintrace::qt {
namespace {

// Osaka comes with macOS. Elsewhere the first of these that is installed takes its place; with none
// of them, whatever font the system falls back to for Japanese.
QStringList JapaneseFamilies() {
  return {"Osaka",       "Hiragino Sans", "Noto Sans CJK JP", "Noto Sans JP",
          "IPAexGothic", "IPAPGothic",    "VL PGothic",       "TakaoPGothic",
          "IPAGothic",   "VL Gothic",     "TakaoGothic",      "sans-serif"};
}

}  // namespace

QFont FontOf(std::string_view family, int pixelSize, bool underline) {
  QFont font;
  if (family == "Osaka") font.setFamilies(JapaneseFamilies());
  if (pixelSize > 0) font.setPixelSize(pixelSize);
  font.setUnderline(underline);
  return font;
}

}  // namespace vintrace::qt
