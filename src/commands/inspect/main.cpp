// vintrace-inspect: prints the inspections of documents as rows of text.

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <optional>
#include <span>
#include <string_view>

#include "inspection/InspectionReport.h"
#include "inspection/VersionCheck.h"
#include "platform/files/FolderItem.h"
#include "platform/text/Exceptions.h"
#include "platform/text/String.h"
#include "platform/text/VersionRecord.h"

namespace vintrace {
namespace {

enum ExitStatus { EveryFileGaveARow = 0, NotEveryFileGaveARow = 1, WrongUsage = 2 };

constexpr std::string_view Usage = "Usage: vintrace-inspect [--] FILE...\n";

constexpr std::string_view Help =
    "       vintrace-inspect --help | --version\n"
    "\n"
    "Prints one row for each InDesign document on standard output: the file's name,\n"
    "the product that last saved it, the edition and the build text, separated by tabs.\n"
    "U+FFFD replaces control characters and line breaks, so that each document is one\n"
    "row whatever its name.\n"
    "\n"
    "Files whose name doesn't end with .indd, or that can't be read, are reported on\n"
    "standard error. The exit status is 0 if every file gave a row, 1 if one didn't,\n"
    "and 2 for wrong usage.\n";

/// The report as four fields of text.
class ReportRow : public inspection::InspectionReport {
 public:
  void SetDocument(const FolderItem&) override {}
  void SetDocumentName(const String& name) override { name_ = name; }
  void SetProductText(const String& text) override { product_ = text; }
  void SetPicture(std::string_view) override {}
  void SetBuildText(const String& text) override { build_ = text; }
  String BuildText() const override { return build_; }
  void SetEditionText(const String& text) override { edition_ = text; }
  void SetOpenable(bool) override {}

  String Line() const {
    return OneLine(name_) + '\t' + OneLine(product_) + '\t' + OneLine(edition_) + '\t' +
           OneLine(build_) + '\n';
  }

 private:
  String name_;
  String product_;
  String edition_;
  String build_{inspection::UnwrittenBuildText};
};

void Complain(const String& reason) {
  const String line = "vintrace-inspect: " + OneLine(reason) + '\n';
  std::fwrite(line.data(), 1, line.size(), stderr);
}

/// False, with `errno` set, if standard output can't be written.
bool Print(std::string_view text) {
  return std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
}

/// Prints rows so that they stay whole when several processes share a pipe: each write ends with a
/// complete row, and has no more bytes than a pipe accepts atomically, unless a row is longer.
class RowPrinter {
 public:
  /// Returns like `Print`.
  bool operator()(std::string_view row) {
    if (waiting_ + row.size() > AtATime) {
      if (std::fflush(stdout) != 0) return false;
      waiting_ = 0;
    }
    waiting_ += row.size();
    return Print(row);
  }

 private:
  // PIPE_BUF on Linux, and the size of stdio's buffer.
  static constexpr std::size_t AtATime = 4096;

  std::size_t waiting_ = 0;
};

/// Reports the error, unless the reader has closed the pipe.
ExitStatus OutputLost(int error) {
  if (error != EPIPE) Complain(String("standard output: ") + std::strerror(error));
  return NotEveryFileGaveARow;
}

/// The row of the document at `path`; nil, after a line on standard error, if that fails.
std::optional<String> RowOf(const String& path) {
  try {
    const FolderItem item(path);
    if (!inspection::IsDocumentName(item.Name())) {
      Complain(path + ": The name doesn't end in .indd");
      return std::nullopt;
    }
    ReportRow row;
    inspection::VersionCheck(item, row);
    return row.Line();
  } catch (const RuntimeException& exception) {
    Complain(exception.what());
    return std::nullopt;
  }
}

ExitStatus PrintRows(std::span<char*> files) {
  ExitStatus status = EveryFileGaveARow;
  RowPrinter print;
  for (const char* file : files) {
    const auto row = RowOf(file);
    if (!row) {
      status = NotEveryFileGaveARow;
    } else if (!print(*row)) {
      return OutputLost(errno);
    }
  }
  return std::fflush(stdout) == 0 ? status : OutputLost(errno);
}

ExitStatus PrintText(std::initializer_list<std::string_view> texts) {
  const bool printed = std::ranges::all_of(texts, Print) && std::fflush(stdout) == 0;
  return printed ? EveryFileGaveARow : OutputLost(errno);
}

ExitStatus RefuseUsage() {
  std::fwrite(Usage.data(), 1, Usage.size(), stderr);
  return WrongUsage;
}

/// Options come before the first file, and `--` ends them.
ExitStatus Run(std::span<char*> arguments) {
  if (arguments.empty()) return RefuseUsage();
  const std::string_view first = arguments.front();
  if (first == "--help") return PrintText({Usage, Help});
  if (first == "--version") {
    return PrintText({"vintrace-inspect ", versionRecord::Version, "\n"});
  }
  if (first == "--") arguments = arguments.subspan(1);
  if (first.starts_with('-') && first != "--") return RefuseUsage();
  return arguments.empty() ? RefuseUsage() : PrintRows(arguments);
}

}  // namespace
}  // namespace vintrace

/// Replaces the one of the GNU C++ library, which decodes the names of C++ types and is a quarter of
/// the program otherwise.
namespace __gnu_cxx {
void __verbose_terminate_handler() { std::abort(); }
}  // namespace __gnu_cxx

int main(int argc, char* argv[]) {
  const std::span arguments(argv, static_cast<std::size_t>(argc));
  return vintrace::Run(arguments.subspan(argc > 0 ? 1 : 0));
}
