#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "platform/String.h"

namespace vintrace {

/// A kind of file that the program knows. File dialogs find it by its name once it is registered.
class FileType {
 public:
  String Name;
  String Extensions;  ///< Endings of file names, separated by semicolons, each with its point.
  String MacType;     ///< Four characters; "????" fits every file.
  String MacCreator;

  /// Registers the type for the life of the process and yields its name. A type that is registered
  /// under that name already is replaced.
  String Register() const;

  /// The endings of `Extensions`, one by one.
  std::vector<String> Suffixes() const;

  /// The registered type of that name.
  static std::optional<FileType> Registered(std::string_view name);
};

}  // namespace vintrace
