#pragma once

#include <ostream>
#include <string>

#include "resources/Pictures.h"

namespace vintrace::test {

/// What the window of one document shows after the inspection, below its title.
struct ReportFields {
  std::string productText;
  PictureAccessor picture = nullptr;
  std::string editionText;
  std::string buildText = "サブバージョン不明";
  bool openable = true;

  bool operator==(const ReportFields&) const = default;

  /// For the messages of a failed comparison.
  friend std::ostream& operator<<(std::ostream& out, const ReportFields& fields) {
    return out << fields.productText << " | " << reinterpret_cast<const void*>(fields.picture)
               << " | " << fields.editionText << " | " << fields.buildText << " | "
               << fields.openable;
  }
};

}  // namespace vintrace::test
