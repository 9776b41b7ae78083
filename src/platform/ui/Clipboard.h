#pragma once

#include "platform/text/String.h"

namespace vintrace {

/// The desktop's clipboard. Its text stays when this object is destroyed; whether it also stays
/// when the program ends depends on the desktop.
class Clipboard {
 public:
  Clipboard() = default;
  Clipboard(const Clipboard&) = delete;
  Clipboard& operator=(const Clipboard&) = delete;
  ~Clipboard() { Close(); }

  /// Replaces the clipboard's contents, of any kind, with plain text. `text`: UTF-8. Raises
  /// `NilObjectException` after `Close`.
  void SetText(const String& text);

  /// Ends the use of the clipboard. A second call does nothing.
  void Close() { open_ = false; }

 private:
  bool open_ = true;
};

}  // namespace vintrace
