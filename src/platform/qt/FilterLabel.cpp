#include "platform/qt/FilterLabel.h"

#include <QStringList>

#include "platform/FileType.h"
#include "platform/qt/DisplayText.h"

namespace vintrace::qt {

QString FilterLabel(const FileType& type) {
  QStringList patterns;
  for (const auto& suffix : type.Suffixes()) patterns << '*' + DisplayText(suffix);
  return DisplayText(type.Name) + " (" + patterns.join(' ') + ')';
}

}  // namespace vintrace::qt
