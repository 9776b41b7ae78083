#pragma once

#include "platform/ui/Window.h"

namespace vintrace::online {

/// The notice of a newer release, with links to its download page and to the web site.
class UpdateWin : public Window {
 public:
  /// The open notice; a new one if there is none.
  static std::shared_ptr<UpdateWin> Instance() { return _GetImplicitWindow<UpdateWin>(); }

  void Layout() override;
  void CreateControls() override;
  virtual void _CreateControls0();

  virtual Label& Label1() const;
  virtual PushButton& PushButton1() const;
  virtual PushButton& PushButton2() const;
  virtual Label& Label2() const;
  virtual Canvas& Canvas1() const;

  virtual void PushButton1_Action();
  virtual void PushButton2_Action();
  virtual void Label2_MouseUp();
  virtual bool Label2_MouseDown();
  virtual void Label2_MouseEnter();
  virtual void Label2_MouseExit();

  void Event_Open() override;
};

}  // namespace vintrace::online
