#pragma once

#include <QProxyStyle>

namespace vintrace::qt {

/// The desktop's own style, without what costs a start time and is never seen.
class LeanStyle : public QProxyStyle {
 public:
  /// Each menu bar asks for the arrow of a bar too narrow for its menus, which no window here has,
  /// and the toolkit loads every image plugin of the system to make it.
  QIcon standardIcon(StandardPixmap icon, const QStyleOption* option,
                     const QWidget* widget) const override {
    if (icon == SP_ToolBarHorizontalExtensionButton) return {};
    return QProxyStyle::standardIcon(icon, option, widget);
  }
};

}  // namespace vintrace::qt
