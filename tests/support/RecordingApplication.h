#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/files/FolderItem.h"

namespace vintrace::test {

/// An application that records its arguments.
class RecordingApplication {
 public:
  /// Makes the script `path` and its parent folders. It records `words`, in shell syntax, and then
  /// runs the command `then`.
  explicit RecordingApplication(FolderItem path, std::string_view words = "\"$@\"",
                                std::string_view then = "");

  const FolderItem& Item() const { return path_; }

  /// Waits up to 15 seconds for its next start. Returns the recorded words; none without a start.
  std::vector<String> AwaitStart() const;

 private:
  FolderItem path_;
};

}  // namespace vintrace::test
