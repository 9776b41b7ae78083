#pragma once

#include <string_view>

#include "platform/String.h"

namespace vintrace::open {

/// The text under `key` in the dictionary that the property list `bytes` is, in its XML or in its
/// binary form; UTF-8, in the binary form ASCII alone. Empty when there is none or the list is
/// malformed. Takes time in proportion to the bytes, whatever they are.
String TextInPropertyList(std::string_view bytes, std::string_view key);

}  // namespace vintrace::open
