#pragma once

#include <string>
#include <string_view>

namespace vintrace::test {

// What the window of one document shows after the inspection.
struct ReferenceReport {
  bool window = false;  // false: the name is no document's, nothing else is filled in
  std::string documentName;
  std::string productText;
  std::string picture;  // accessor name: "cs", "cs2", ..., "cc2019", "und"
  std::string editionText;
  std::string buildText;  // "サブバージョン不明", the window's design text, when none was written
  bool openable = true;  // visible state of the open button
};

// Inspects a document held whole in memory, with code that shares nothing with the program's own
// inspection, so that a difference between the two is an error in one of them. `name` is the leaf
// name of the file. Both arguments may hold any bytes and may be empty; nothing is raised apart
// from std::bad_alloc.
ReferenceReport InspectByReference(std::string_view name, std::string_view content);

}  // namespace vintrace::test
