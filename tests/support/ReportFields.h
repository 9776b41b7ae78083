#pragma once

#include <ostream>
#include <string>

namespace vintrace::test {

/// The results of an inspection, as the document's window shows them.
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
