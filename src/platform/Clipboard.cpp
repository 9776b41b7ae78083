#include "platform/Clipboard.h"

#include "platform/Exceptions.h"
#include "platform/Host.h"

namespace vintrace {

// NOLINTNEXTLINE(readability-make-member-function-const): what it stands for changes
void Clipboard::SetText(const String& text) {
  if (!open_) throw NilObjectException("Clipboard");
  Host::Current().SetClipboardText(text);
}

}  // namespace vintrace
