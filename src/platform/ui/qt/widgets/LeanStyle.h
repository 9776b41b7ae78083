#pragma once

#include <QProxyStyle>

namespace vintrace::qt {

/// The desktop's own style, without an icon that is never seen and would delay the start.
class LeanStyle : public QProxyStyle {
 public:
  /// Leaves out the arrow of menu bars that are too narrow for their menus. No window here needs
  /// it, and Qt loads every image plugin of the system to make it.
  QIcon standardIcon(StandardPixmap icon, const QStyleOption* option,
                     const QWidget* widget) const override {
    if (icon == SP_ToolBarHorizontalExtensionButton) return {};
    return QProxyStyle::standardIcon(icon, option, widget);
  }
};

}  // namespace vintrace::qt
