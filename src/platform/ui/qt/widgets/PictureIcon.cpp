#include "platform/ui/qt/widgets/PictureIcon.h"

#include <QBuffer>
#include <QByteArray>
#include <QCoreApplication>
#include <QHash>
#include <QImageReader>
#include <QPixmap>
#include <string_view>

#include "platform/ui/Picture.h"

namespace vintrace::qt {
namespace {

QPixmap Decoded(std::string_view png, qreal devicePixelRatio) {
  QByteArray bytes = QByteArray::fromRawData(png.data(), static_cast<qsizetype>(png.size()));
  QBuffer buffer(&bytes);
  // Detection of the format would load every image plugin of the system.
  QImageReader reader(&buffer, "png");
  reader.setAutoDetectImageFormat(false);
  QPixmap pixmap = QPixmap::fromImageReader(&reader);
  pixmap.setDevicePixelRatio(devicePixelRatio);
  return pixmap;
}

/// The decoded pictures, by the address of their bytes, which live as long as the process. Qt
/// requires that none is left when its application object is destroyed.
QHash<const char*, QIcon>& Icons() {
  static QHash<const char*, QIcon> icons;
  if (icons.isEmpty()) qAddPostRoutine([] { icons.clear(); });
  return icons;
}

}  // namespace

QIcon IconOf(const Picture& picture) {
  QIcon& icon = Icons()[picture.Png().data()];
  if (icon.isNull()) {
    icon.addPixmap(Decoded(picture.Png(), 1));
    icon.addPixmap(Decoded(picture.PngAt2x(), 2));
  }
  return icon;
}

}  // namespace vintrace::qt
