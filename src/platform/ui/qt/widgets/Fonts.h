#pragma once

#include <QFont>
#include <string_view>

namespace vintrace::qt {

/// The font of a control. `family`: "System" is the platform's own font, "Osaka" an installed
/// Japanese gothic font. `pixelSize`: 0 is 13 pixels, for which the
/// layouts were drawn.
QFont FontOf(std::string_view family, int pixelSize, bool underline);

}  // namespace vintrace::qt
