#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "platform/text/String.h"

namespace vintrace {

/// A type of file. Once it is registered, file dialogs find it by its name.
class FileType {
 public:
  String Name;
  String Extensions;  ///< Endings of file names with their dots, separated by semicolons.
  String MacType;     ///< Four characters; "????" matches every file.
  String MacCreator;

  /// Registers the type for the life of the process and returns its name. Replaces a registered
  /// type of the same name.
  String Register() const;

  /// The endings in `Extensions`.
  std::vector<String> Suffixes() const;

  /// The registered type of that name, case-sensitively; nil if there is none.
  static std::optional<FileType> Registered(std::string_view name);
};

}  // namespace vintrace
