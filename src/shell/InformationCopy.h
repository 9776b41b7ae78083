#pragma once

#include <array>

#include "platform/text/TextConverter.h"

namespace vintrace {

/// What an inspection window tells, in the order of the columns: file name, product name, edition
/// and build text, any bytes.
using InformationFields = std::array<String, 4>;

/// One row: the fields as they stand, joined by tabs, with no line end; valid UTF-8, in which
/// U+FFFD stands for what was none.
String InformationRow(const InformationFields& fields, const TextConverter& converter);

/// Makes the converter of a command's rows.
TextConverter InformationConverter();

/// The rows of all inspection windows, front to back, each with a line end behind it. The other
/// windows tell nothing of a document and are left out. Empty when there is no inspection window.
String InformationOfAllWindows();

}  // namespace vintrace
