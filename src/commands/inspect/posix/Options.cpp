#include "commands/inspect/Options.h"

#include <getopt.h>

#include <cstdio>

namespace vintrace::inspect {
namespace {

enum LongOption { Any = 256, Files0From, Header, Json, Path };

constexpr option LongOptions[] = {
    {"any", no_argument, nullptr, Any},
    {"files0-from", required_argument, nullptr, Files0From},
    {"header", no_argument, nullptr, Header},
    {"help", no_argument, nullptr, 'h'},
    {"json", no_argument, nullptr, Json},
    {"path", no_argument, nullptr, Path},
    {"recursive", no_argument, nullptr, 'r'},
    {"version", no_argument, nullptr, 'V'},
    {},
};

std::optional<Options> Refuse(const char* reason) {
  std::fprintf(stderr, "vintrace-inspect: %s\n", reason);
  return std::nullopt;
}

/// False if it isn't one of the program's options.
bool Take(int option, Options& options) {
  switch (option) {
    case 'h':
      options.action = Options::Action::Help;
      return true;
    case 'V':
      options.action = Options::Action::Version;
      return true;
    case 'r':
      return options.recursive = true;
    case Any:
      return options.any = true;
    case Header:
      return options.header = true;
    case Json:
      return options.json = true;
    case Path:
      return options.path = true;
    case Files0From:
      options.files0From = optarg;
      return true;
    default:
      return false;
  }
}

}  // namespace

const std::string_view Help =
    "Usage: vintrace-inspect [OPTION]... [--] FILE...\n"
    "       vintrace-inspect [OPTION]... --files0-from=FILE\n"
    "\n"
    "Prints one row for each InDesign document on standard output: the file's name,\n"
    "the product that last saved it, the edition and the build text, separated by tabs.\n"
    "U+FFFD replaces control characters and line breaks, so that each document is one\n"
    "row whatever its name.\n"
    "\n"
    "  -r, --recursive         walk folders, in the order of names, for .indd and .indt\n"
    "      --files0-from=FILE  take the paths from FILE, each ended by a zero byte;\n"
    "                            - is standard input\n"
    "      --any               take files named .indd whatever they begin with\n"
    "      --path              print the path in place of the name\n"
    "      --header            begin with a row of the columns' names\n"
    "      --json              print a JSON object a line, in no language\n"
    "  -h, --help              print this text\n"
    "  -V, --version           print the version\n"
    "\n"
    "Files that aren't documents or can't be read are reported on standard error. The\n"
    "exit status is 0 if every file gave a row and all could be printed, 1 if not, and\n"
    "2 for wrong usage.\n";

std::optional<Options> ParseOptions(std::span<char*> arguments) {
  Options options;
  const int count = static_cast<int>(arguments.size());
  int option = 0;
  while ((option = getopt_long(count, arguments.data(), "hrV", LongOptions, nullptr)) != -1) {
    if (!Take(option, options)) return std::nullopt;  // getopt_long has named it.
  }
  for (const char* path : arguments.subspan(static_cast<std::size_t>(optind))) {
    options.paths.emplace_back(path);
  }
  if (options.action != Options::Action::Inspect) return options;
  if (options.json && options.header) return Refuse("--json has no header");
  if (options.files0From && !options.paths.empty()) {
    return Refuse("files can't be given together with --files0-from");
  }
  if (!options.files0From && options.paths.empty()) return Refuse("no file is given");
  return options;
}

}  // namespace vintrace::inspect
