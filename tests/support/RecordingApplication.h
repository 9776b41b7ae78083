#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/files/FolderItem.h"

namespace vintrace::test {

/// An application that notes what it is started with.
class RecordingApplication {
 public:
  /// Makes the executable `path`, and the folders above it. It notes `words`, in a shell's words,
  /// and does `then` before it ends.
  explicit RecordingApplication(FolderItem path, std::string_view words = "\"$@\"",
                                std::string_view then = "");

  const FolderItem& Item() const { return path_; }

  /// Waits for its next start and tells what it has noted; nothing when it isn't started.
  std::vector<String> AwaitStart() const;

 private:
  FolderItem path_;
};

}  // namespace vintrace::test
