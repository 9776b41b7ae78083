#include <QMenuBar>

#include "platform/ui/qt/SystemBar.h"
#include "platform/ui/qt/widgets/MenuBarView.h"

namespace vintrace::qt {
namespace {

/// The menu bar at the top of the screen.
class GlobalBar : public SystemBar {
 public:
  explicit GlobalBar(MenuBarView& view) : bar_(view.MakeBar(nullptr)) {}
  void SetNeeded(bool, bool, const std::vector<FolderItem>&) override {}
  QWidget* StandIn() const override { return nullptr; }

 private:
  std::unique_ptr<QMenuBar> bar_;
};

}  // namespace

std::unique_ptr<SystemBar> MakeSystemBar(MenuBarView& view,
                                         std::function<void(const FolderItem&)> /*dropped*/,
                                         std::function<void()> /*quit*/) {
  return std::make_unique<GlobalBar>(view);
}

}  // namespace vintrace::qt
