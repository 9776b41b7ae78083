#pragma once

#include <functional>

#include "commands/inspect/Options.h"
#include "platform/text/String.h"

namespace vintrace::inspect {

/// Receives what the options select.
struct PathVisitor {
  /// Called with each file to inspect, in order. Returns false to end the visit.
  std::function<bool(const String& path)> file;
  /// Called with a path and the reason why it can't be visited.
  std::function<void(const String& path, const String& reason)> problem;
};

/// Visits the files that `options` select. With `recursive`, walks folders in the order of their
/// names, without following links, and takes files that end in .indd or .indt.
void VisitPaths(const Options& options, const PathVisitor& visitor);

}  // namespace vintrace::inspect
