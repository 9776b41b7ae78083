#pragma once

#include <string_view>

#include "platform/files/FolderItem.h"
#include "platform/text/String.h"

namespace vintrace::inspection {

/// The build text of a report into which no inspection has written one.
inline constexpr std::string_view UnwrittenBuildText = "サブバージョン不明";

/// The text of a build or an edition that the document doesn't tell.
inline constexpr std::string_view UnknownText = "不明";

/// What an inspection of one document found, as the face that a window, or whatever else shows or
/// prints the report, turns to the inspection. Each field keeps its last value; a text may hold any
/// bytes. A new report is openable and has `UnwrittenBuildText`.
class InspectionReport {
 public:
  virtual ~InspectionReport() = default;

  virtual void SetDocument(const FolderItem& document) = 0;
  virtual void SetDocumentName(const String& name) = 0;
  virtual void SetProductText(const String& text) = 0;
  /// `name`: the picture's name among the program's pictures, such as "cs6". Raises what opening it
  /// raises.
  virtual void SetPicture(std::string_view name) = 0;
  virtual void SetBuildText(const String& text) = 0;
  /// The build text as the report holds it.
  virtual String BuildText() const = 0;
  virtual void SetEditionText(const String& text) = 0;
  /// Whether the document can be opened in a release that is known.
  virtual void SetOpenable(bool openable) = 0;
};

}  // namespace vintrace::inspection
