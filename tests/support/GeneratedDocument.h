#pragma once

#include <string>
#include <string_view>

namespace vintrace::test {

/// The bytes of a document. `choices`: any bytes, of which each pair makes one decision. Patterns
/// lie near the boundaries of the body's blocks, where the inspection has its edge cases.
std::string GeneratedDocument(std::string_view choices);

}  // namespace vintrace::test
