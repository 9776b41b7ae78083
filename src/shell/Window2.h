#pragma once

#include "platform/ui/Window.h"

namespace vintrace {

/// The about window: a picture with the version, a line of description and two links. A click on
/// the picture closes it.
class Window2 : public Window {
 public:
  /// The open about window; a new one if there is none.
  static std::shared_ptr<Window2> Instance() { return _GetImplicitWindow<Window2>(); }

  void Layout() override;
  void CreateControls() override;
  virtual void _CreateControls0();

  virtual Label& StaticText1() const;
  virtual Label& StaticText2() const;
  virtual Label& StaticText5() const;
  virtual Label& Label1() const;

  virtual void StaticText1_MouseExit();
  virtual void StaticText1_MouseEnter();
  virtual bool StaticText1_MouseDown();
  virtual void StaticText1_MouseUp();
  virtual void StaticText2_MouseUp();
  virtual void StaticText2_MouseExit();
  virtual void StaticText2_MouseEnter();
  virtual bool StaticText2_MouseDown();

  void Event_Open() override;
  void Event_MouseUp() override;
  bool Event_MouseDown() override;
};

}  // namespace vintrace
