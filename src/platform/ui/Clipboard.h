#pragma once

#include "platform/text/String.h"

namespace vintrace {

/// The desktop's clipboard, for one command. What is put there stays when the object goes, and when
/// the program ends, as far as the desktop keeps it.
class Clipboard {
 public:
  Clipboard() = default;
  Clipboard(const Clipboard&) = delete;
  Clipboard& operator=(const Clipboard&) = delete;
  ~Clipboard() { Close(); }

  /// Replaces what the clipboard holds, of whatever kind, by plain text. `text`: UTF-8. Raises
  /// `NilObjectException` once the object is closed.
  void SetText(const String& text);

  /// Ends the use of the clipboard. A second call does nothing.
  void Close() { open_ = false; }

 private:
  bool open_ = true;
};

}  // namespace vintrace
