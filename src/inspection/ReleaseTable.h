#pragma once

#include <cstdint>
#include <string_view>

#include "platform/text/String.h"

namespace vintrace::inspection {

/// One release of the table.
struct VersionRow {
  std::uint8_t versionByte;      ///< The document's major version.
  std::string_view productText;  ///< The release's name; applications are looked up by it.
  std::string_view picture;      ///< The name of the release's picture.
  std::string_view buildPrefix;  ///< The major version in decimal and a point.
};

/// The row for a document of major version `versionByte`, one byte or none, with the byte
/// `minorVersion` behind the version, of which CS5.5 makes a row of its own. Nil for a release that
/// the table doesn't hold.
const VersionRow* FindRow(std::string_view versionByte, std::string_view minorVersion);

/// The row of CS5.5.
const VersionRow& RowOfCS55();

/// The product text for a document outside the table. `version`: its version byte, 0 to 255.
String OutOfTableText(std::int64_t version);

}  // namespace vintrace::inspection
