#include "platform/Clipboard.h"

#include "platform/Exceptions.h"
#include "platform/Host.h"

namespace vintrace {

void Clipboard::SetText(const String& text) {
  if (!open_) throw NilObjectException("Clipboard");
  Host::Current().SetClipboardText(text);
}

}  // namespace vintrace
