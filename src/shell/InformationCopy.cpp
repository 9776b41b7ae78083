#include "shell/InformationCopy.h"

#include <memory>

#include "platform/text/Exceptions.h"
#include "platform/ui/Desktop.h"
#include "shell/Window1.h"

namespace vintrace {
namespace {

/// The text of the label `controlIndex` in creation order. Raises `NilObjectException` if that
/// control is missing or not a label.
const String& TextOf(const Window& window, int controlIndex) {
  const auto* label = dynamic_cast<const Label*>(window.Control(controlIndex));
  if (label == nullptr) throw NilObjectException("Label");
  return label->Text();
}

bool ShowsADocument(const std::shared_ptr<Window>& window) {
  return std::dynamic_pointer_cast<Window1>(window) != nullptr;
}

}  // namespace

String InformationRow(const InformationFields& fields, const TextConverter& converter) {
  const auto& [name, product, edition, build] = fields;
  return converter.convert(name + '\t' + product + '\t' + edition + '\t' + build);
}

TextConverter InformationConverter() {
  const TextEncoding utf8 = GetTextEncoding(256, 0, 2);
  return GetTextConverter(utf8, utf8);
}

String InformationOfAllWindows() {
  const TextConverter converter = InformationConverter();
  String rows;
  for (int index = 0; index < desktop::WindowCount(); ++index) {
    const auto window = desktop::Window(index);
    if (!ShowsADocument(window)) continue;
    rows += InformationRow(
        {window->Title(), TextOf(*window, 2), TextOf(*window, 3), TextOf(*window, 4)}, converter);
    rows += EndOfLine;
  }
  return rows;
}

}  // namespace vintrace
