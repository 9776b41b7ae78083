#pragma once

#include <memory>
#include <string_view>

namespace vintrace {

/// A picture as two PNG files: one for ordinary screens, and its companion with twice the width and
/// height for dense ones. Objects are shared, and the host decodes each picture once.
class Picture {
 public:
  /// Opens the picture `name`, such as "cs.png", and its companion "cs@2x.png" from the
  /// application's resources. Raises `IOException` if either is missing.
  static std::shared_ptr<const Picture> _OpenFromApp(std::string_view name);

  Picture(std::string_view png, std::string_view pngAt2x) : png_(png), pngAt2x_(pngAt2x) {}

  /// The bytes of the two PNG files; they live as long as the process.
  std::string_view Png() const { return png_; }
  std::string_view PngAt2x() const { return pngAt2x_; }

 private:
  std::string_view png_;
  std::string_view pngAt2x_;
};

}  // namespace vintrace
