#pragma once

#include <ostream>
#include <string>

namespace vintrace::test {

/// What the window of one document shows after the inspection, below its title.
struct ReportFields {
  std::string productText;
  std::string picture;
  std::string editionText;
  std::string buildText = "サブバージョン不明";
  bool openable = true;

  bool operator==(const ReportFields&) const = default;

  /// For the messages of a failed comparison.
  friend std::ostream& operator<<(std::ostream& out, const ReportFields& fields) {
    return out << fields.productText << " | " << fields.picture << " | " << fields.editionText
               << " | " << fields.buildText << " | " << fields.openable;
  }
};

}  // namespace vintrace::test
