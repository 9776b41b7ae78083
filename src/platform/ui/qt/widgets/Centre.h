#pragma once

class QWidget;

namespace vintrace::qt {

/// Moves a window that isn't shown yet to the centre of the main screen.
void MoveToCentre(QWidget& window);

}  // namespace vintrace::qt
