#include "commands/inspect/Paths.h"

#include <fts.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace vintrace::inspect {
namespace {

bool IsNamedLikeADocument(std::string_view name) {
  return TextEndsWith(name, ".indd") || TextEndsWith(name, ".indt");
}

/// Temporary files come and go in folders in use.
bool HasVanished(const FTSENT& entry) {
  return entry.fts_errno == ENOENT && entry.fts_level > FTS_ROOTLEVEL &&
         !IsNamedLikeADocument(entry.fts_name);
}

/// One entry of a walk. False to end the visit.
bool VisitEntry(const FTSENT& entry, const PathVisitor& visitor) {
  const String path = entry.fts_path;
  const bool isGiven = entry.fts_level == FTS_ROOTLEVEL;
  switch (entry.fts_info) {
    case FTS_D:
    case FTS_DP:
      return true;
    case FTS_DC:
      visitor.problem(path, "The folder contains itself");
      return true;
    case FTS_DNR:
    case FTS_ERR:
    case FTS_NS:
      if (HasVanished(entry)) return true;
      visitor.problem(path, std::strerror(entry.fts_errno));
      return true;
    case FTS_SL:
    case FTS_SLNONE:
      return !isGiven || visitor.file(path);
    default:
      return !(isGiven || IsNamedLikeADocument(entry.fts_name)) || visitor.file(path);
  }
}

/// False to end the visit.
bool Walk(String path, const PathVisitor& visitor) {
  char* paths[] = {path.data(), nullptr};
  const auto byName = [](const FTSENT** one, const FTSENT** other) {
    return std::strcmp((*one)->fts_name, (*other)->fts_name);
  };
  const std::unique_ptr<FTS, decltype(&fts_close)> walk(
      fts_open(paths, FTS_COMFOLLOW | FTS_NOCHDIR | FTS_PHYSICAL, byName), fts_close);
  while (walk) {
    errno = 0;
    const FTSENT* entry = fts_read(walk.get());
    if (entry == nullptr) break;
    if (!VisitEntry(*entry, visitor)) return false;
  }
  if (!walk || errno != 0) visitor.problem(path, std::strerror(errno));
  return true;
}

bool Visit(const String& path, bool recursive, const PathVisitor& visitor) {
  if (path.empty()) {
    visitor.problem("", "The path is empty");
    return true;
  }
  return recursive ? Walk(path, visitor) : visitor.file(path);
}

void VisitList(const String& list, bool recursive, const PathVisitor& visitor) {
  const bool isInput = list == "-";
  const std::unique_ptr<FILE, int (*)(FILE*)> file(isInput ? stdin : std::fopen(list.c_str(), "re"),
                                                   std::fclose);
  char* text = nullptr;
  std::size_t size = 0;
  int error = file ? 0 : errno;
  while (error == 0) {
    errno = 0;
    const ssize_t length = getdelim(&text, &size, '\0', file.get());
    // After an error, the text is a part of a path.
    if (length < 0 || std::ferror(file.get()) != 0) {
      error = errno;
      break;
    }
    if (!Visit(text, recursive, visitor)) break;
  }
  if (error != 0) visitor.problem(isInput ? "standard input" : list, std::strerror(error));
  std::free(text);
}

}  // namespace

void VisitPaths(const Options& options, const PathVisitor& visitor) {
  if (options.files0From) return VisitList(*options.files0From, options.recursive, visitor);
  for (const String& path : options.paths) {
    if (!Visit(path, options.recursive, visitor)) return;
  }
}

}  // namespace vintrace::inspect
