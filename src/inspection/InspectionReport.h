#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/files/FolderItem.h"
#include "platform/text/String.h"

namespace vintrace::inspection {

/// The build text of a report before an inspection has written one.
inline constexpr std::string_view UnwrittenBuildText = "サブバージョン不明";

/// The text for a build or an edition that the document doesn't reveal.
inline constexpr std::string_view UnknownText = "不明";

enum class DocumentByteOrder { Little, Big };
enum class Edition { Macintosh, Windows };

/// What an inspection found, without texts for the user. Nil or empty is what the document doesn't
/// tell.
struct Findings {
  DocumentByteOrder order = DocumentByteOrder::Little;
  std::optional<std::int64_t> majorVersion;  ///< Of the header; 0 to 255.
  std::optional<std::int64_t> minorVersion;
  std::optional<Edition> edition;
  std::optional<String> build;
};

/// The report of one inspection, as its window or printer receives it. Texts may hold any bytes,
/// and the last one written counts. A new report is openable and has `UnwrittenBuildText`.
class InspectionReport {
 public:
  virtual ~InspectionReport() = default;

  virtual void SetDocument(const FolderItem& document) = 0;
  virtual void SetDocumentName(const String& name) = 0;
  virtual void SetProductText(const String& text) = 0;
  /// `name`: the name of a picture of the program, such as "cs6". Raises what opening it raises.
  virtual void SetPicture(std::string_view name) = 0;
  virtual void SetBuildText(const String& text) = 0;
  /// The build text as the report holds it.
  virtual String BuildText() const = 0;
  virtual void SetEditionText(const String& text) = 0;
  /// True if the document's release is known, so that an application can open it.
  virtual void SetOpenable(bool openable) = 0;
  /// Called last.
  virtual void SetFindings(const Findings& /*findings*/) {}
};

}  // namespace vintrace::inspection
