#pragma once

#include <filesystem>

namespace vintrace::test {

/// Makes a folder the working directory while it lives.
class WorkingFolder {
 public:
  explicit WorkingFolder(const std::filesystem::path& folder) {
    std::filesystem::current_path(folder);
  }
  WorkingFolder(const WorkingFolder&) = delete;
  WorkingFolder& operator=(const WorkingFolder&) = delete;
  ~WorkingFolder() { std::filesystem::current_path(before_); }

 private:
  std::filesystem::path before_ = std::filesystem::current_path();
};

}  // namespace vintrace::test
