// vintrace-inspect: prints the inspections of documents as rows of text or as JSON.

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <span>
#include <string_view>

#include "commands/inspect/Options.h"
#include "commands/inspect/Paths.h"
#include "commands/inspect/Progress.h"
#include "commands/inspect/Rows.h"
#include "platform/files/FolderItem.h"
#include "platform/text/Exceptions.h"
#include "platform/text/String.h"
#include "platform/text/VersionRecord.h"

namespace vintrace::inspect {
namespace {

enum ExitStatus { EveryFileGaveARow = 0, NotEveryFileGaveARow = 1, WrongUsage = 2 };

/// False, with `errno` set, if standard output can't be written.
bool Print(std::string_view text) {
  return std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
}

void Complain(const String& reason) {
  const String line = "vintrace-inspect: " + OneLine(reason) + '\n';
  std::fwrite(line.data(), 1, line.size(), stderr);
}

/// Reports the error, unless the reader has closed the pipe.
ExitStatus OutputLost(int error) {
  if (error != EPIPE) Complain(String("standard output: ") + std::strerror(error));
  return NotEveryFileGaveARow;
}

/// Prints rows so that they stay whole when several processes share a pipe: each write ends with a
/// complete row, and has no more bytes than a pipe accepts atomically, unless a row is longer.
class RowPrinter {
 public:
  RowPrinter() { std::setvbuf(stdout, nullptr, _IOFBF, AtATime); }

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
  // PIPE_BUF on Linux.
  static constexpr std::size_t AtATime = 4096;

  std::size_t waiting_ = 0;
};

/// Prints the row of each file that `options` select, and complains about the others.
class Inspection {
 public:
  explicit Inspection(const Options& options) : options_(options) {}

  ExitStatus Run() {
    if (options_.header) outputError_ = print_(HeaderRow(options_)) ? 0 : errno;
    VisitPaths(options_,
               {.file = [this](const String& path) { return PrintRow(path); },
                .problem = [this](const String& path,
                                  const String& reason) { Refuse(path + ": " + reason); }});
    progress_.Clear();
    if (outputError_ == 0 && std::fflush(stdout) != 0) outputError_ = errno;
    return outputError_ == 0 ? status_ : OutputLost(outputError_);
  }

 private:
  /// False if no further row can be printed or is wanted.
  bool PrintRow(const String& path) {
    if (Interrupt() != 0) return false;
    try {
      const String row = RowOf(FolderItem(path), options_);
      if (outputError_ == 0 && !print_(row)) outputError_ = errno;
    } catch (const IOException& exception) {
      const bool isFolder = exception.ErrorNumber() == EISDIR;
      Refuse(exception.what() + String(isFolder ? " (--recursive walks folders)" : ""));
    } catch (const RuntimeException& exception) {
      Refuse(exception.what());
    }
    progress_.Count();
    return outputError_ == 0;
  }

  void Refuse(const String& reason) {
    progress_.Clear();
    Complain(reason);
    status_ = NotEveryFileGaveARow;
  }

  const Options& options_;
  RowPrinter print_;
  Progress progress_;
  ExitStatus status_ = EveryFileGaveARow;
  int outputError_ = 0;
};

ExitStatus PrintText(std::initializer_list<std::string_view> texts) {
  const bool printed = std::ranges::all_of(texts, Print) && std::fflush(stdout) == 0;
  return printed ? EveryFileGaveARow : OutputLost(errno);
}

ExitStatus Run(std::span<char*> arguments) {
  const auto options = ParseOptions(arguments);
  if (!options) {
    const std::string_view usage = Help.substr(0, Help.find("\n\n") + 1);
    std::fwrite(usage.data(), 1, usage.size(), stderr);
    return WrongUsage;
  }
  if (options->action == Options::Action::Help) return PrintText({Help});
  if (options->action == Options::Action::Version) {
    return PrintText({"vintrace-inspect ", versionRecord::Version, "\n"});
  }
  DeferInterrupts();
  const ExitStatus status = Inspection(*options).Run();
  if (Interrupt() != 0) EndByInterrupt();
  return status;
}

}  // namespace
}  // namespace vintrace::inspect

/// Replaces the one of the GNU C++ library, which decodes the names of C++ types and is a quarter
/// of the program otherwise.
namespace __gnu_cxx {
void __verbose_terminate_handler() { std::abort(); }
}  // namespace __gnu_cxx

int main(int argc, char* argv[]) {
  return vintrace::inspect::Run(std::span(argv, static_cast<std::size_t>(argc)));
}
