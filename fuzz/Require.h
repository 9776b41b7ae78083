#pragma once

#include <cstdlib>

namespace vintrace::fuzz {

/// Crashes unless `isSo`, which libFuzzer reports.
inline void Require(bool isSo) {
  if (!isSo) std::abort();
}

}  // namespace vintrace::fuzz
