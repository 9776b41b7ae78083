#pragma once

#include <string>
#include <string_view>

namespace vintrace::test {

/// The bytes of a document. Any bytes will do for `choices`: each two of them make one decision on
/// it. Its parts lie near the borders of the body's blocks, where something changes.
std::string GeneratedDocument(std::string_view choices);

}  // namespace vintrace::test
