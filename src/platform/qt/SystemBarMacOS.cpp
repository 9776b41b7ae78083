#include <QMenuBar>

#include "platform/qt/MenuBarFace.h"
#include "platform/qt/SystemBar.h"

namespace vintrace::qt {
namespace {

/// The one bar at the top of the screen.
class GlobalBar : public SystemBar {
 public:
  explicit GlobalBar(MenuBarFace& face) : bar_(face.MakeBar(nullptr)) {}
  void SetNeeded(bool /*needed*/) override {}
  QWidget* StandIn() const override { return nullptr; }

 private:
  std::unique_ptr<QMenuBar> bar_;
};

}  // namespace

bool WindowsCarryTheBar() { return false; }

std::unique_ptr<SystemBar> MakeSystemBar(MenuBarFace& face,
                                         std::function<void(const FolderItem&)> /*dropped*/,
                                         std::function<void()> /*quit*/) {
  return std::make_unique<GlobalBar>(face);
}

}  // namespace vintrace::qt
