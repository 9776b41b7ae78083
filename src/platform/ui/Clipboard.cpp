#include "platform/ui/Clipboard.h"

#include "platform/text/Exceptions.h"
#include "platform/ui/Host.h"

namespace vintrace {

// NOLINTNEXTLINE(readability-make-member-function-const): changes the clipboard
void Clipboard::SetText(const String& text) {
  if (!open_) throw NilObjectException("Clipboard");
  Host::Current().SetClipboardText(text);
}

}  // namespace vintrace
