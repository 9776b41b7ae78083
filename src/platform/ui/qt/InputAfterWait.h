#pragma once

namespace vintrace::qt {

/// The user's input during a wait for the network, which Qt holds back. After the wait it
/// is handled before any message box comes up or any document is opened, as their windows would
/// receive input meant for earlier ones.
class InputAfterWait {
 public:
  void WaitBegins();
  void WaitEnds() { isWaiting_ = false; }
  bool IsWaiting() const { return isWaiting_; }

  /// True from the start of a wait until the input has been handled.
  bool IsDue() const { return isDue_ || handling_ > 0; }

  /// Handles the input if it is due, for at most half a second. Does nothing during a wait, or
  /// while handling it.
  void Handle();

 private:
  bool isWaiting_ = false;
  bool isDue_ = false;
  int handling_ = 0;  // Nesting depth of `Handle`.
};

}  // namespace vintrace::qt
