#include "platform/qt/PictureIcon.h"

#include <QBuffer>
#include <QByteArray>
#include <QHash>
#include <QImageReader>
#include <QPixmap>
#include <string_view>

#include "platform/Picture.h"

namespace vintrace::qt {
namespace {

QPixmap Decoded(std::string_view png, qreal devicePixelRatio) {
  QByteArray bytes = QByteArray::fromRawData(png.data(), static_cast<qsizetype>(png.size()));
  QBuffer buffer(&bytes);
  // Without detection, which would load every image plugin of the system only to ask it.
  QImageReader reader(&buffer, "png");
  reader.setAutoDetectImageFormat(false);
  QPixmap pixmap = QPixmap::fromImageReader(&reader);
  pixmap.setDevicePixelRatio(devicePixelRatio);
  return pixmap;
}

}  // namespace

QIcon IconOf(const Picture& picture) {
  // Pictures live as long as the process, so that their addresses name them.
  static QHash<const Picture*, QIcon> icons;
  QIcon& icon = icons[&picture];
  if (icon.isNull()) {
    icon.addPixmap(Decoded(picture.Png(), 1));
    icon.addPixmap(Decoded(picture.PngAt2x(), 2));
  }
  return icon;
}

}  // namespace vintrace::qt
