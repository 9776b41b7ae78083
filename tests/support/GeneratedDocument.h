#pragma once

#include <string>
#include <string_view>

namespace vintrace::test {

/// The bytes of a document that `choices` decide on, which can be any bytes: two of them for each
/// decision. Its parts lie near the borders of the body's blocks, where something changes.
std::string GeneratedDocument(std::string_view choices);

}  // namespace vintrace::test
