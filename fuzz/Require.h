#pragma once

#include <cstdlib>

namespace vintrace::fuzz {

/// What is not so is a crash.
inline void Require(bool isSo) {
  if (!isSo) std::abort();
}

}  // namespace vintrace::fuzz
