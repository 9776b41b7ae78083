#pragma once

#include <cstdint>
#include <string_view>

#include "platform/text/String.h"

namespace vintrace::inspection {

/// A release of the table.
struct VersionRow {
  std::uint8_t VersionByte;      ///< The major version in the document.
  std::string_view productText;  ///< The release's name, by which applications are found.
  std::string_view picture;      ///< The name of the release's picture.
  std::string_view BuildPrefix;  ///< The major version in decimal and a dot.
};

/// The row for a document with the major version `versionByte`, one byte or none, followed by the
/// byte `minorVersion`, which distinguishes CS5.5 from CS5. Nil for a release outside the table.
const VersionRow* FindRow(std::string_view versionByte, std::string_view minorVersion);

/// The row of CS5.5.
const VersionRow& RowOfCS55();

/// The product text for a document outside the table. `version`: its major version, 0 to 255.
String OutOfTableText(std::int64_t version);

}  // namespace vintrace::inspection
