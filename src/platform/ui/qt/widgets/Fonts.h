#pragma once

#include <QFont>
#include <string_view>

namespace vintrace::qt {

/// The font of a layout. `family`: "System" is the platform's own font, "Osaka" a Japanese gothic
/// that is there. `pixelSize` 0: the platform's own size.
QFont FontOf(std::string_view family, int pixelSize, bool underline);

}  // namespace vintrace::qt
