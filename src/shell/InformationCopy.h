#pragma once

#include <array>

#include "platform/text/TextConverter.h"

namespace vintrace {

/// The texts of an inspection window in the order of the columns: file name, product, edition and
/// build. They may hold any bytes.
using InformationFields = std::array<String, 4>;

/// One row: the fields, unescaped and joined by tabs, without a line end. Always valid UTF-8:
/// U+FFFD replaces invalid bytes.
String InformationRow(const InformationFields& fields, const TextConverter& converter);

/// The converter to pass to `InformationRow`.
TextConverter InformationConverter();

/// The rows of all inspection windows, front to back, each followed by a line end. Empty if there
/// is no inspection window.
String InformationOfAllWindows();

}  // namespace vintrace
