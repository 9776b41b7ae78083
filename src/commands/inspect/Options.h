#pragma once

#include <optional>
#include <span>
#include <vector>

#include "platform/text/String.h"

namespace vintrace::inspect {

/// What the command line asks for.
struct Options {
  enum class Action { Inspect, Help, Version };

  Action action = Action::Inspect;
  bool any = false;        ///< Take files by their names, without a look at the signature.
  bool header = false;     ///< Begin with a row of the columns' names.
  bool json = false;       ///< Print objects instead of rows.
  bool path = false;       ///< Print paths in place of names.
  bool recursive = false;  ///< Walk folders.
  std::optional<String> files0From;  ///< A list of paths; "-" is standard input.
  std::vector<String> paths;
};

/// Parses the arguments of `main`. Options may stand anywhere before `--`. Nil for wrong usage,
/// after a line on standard error.
std::optional<Options> ParseOptions(std::span<char*> arguments);

/// The text of `--help`, which begins with the usage, a line.
extern const std::string_view Help;

}  // namespace vintrace::inspect
