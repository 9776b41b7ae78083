#include "commands/inspect/Rows.h"

#include <nlohmann/json.hpp>

#include "inspection/VersionCheck.h"
#include "platform/text/Encodings.h"
#include "platform/text/Exceptions.h"
#include "platform/text/TextConverter.h"

namespace vintrace::inspect {
namespace {

using inspection::Signature;
using Object = nlohmann::ordered_json;

/// A report that only keeps what is written.
struct Report : inspection::InspectionReport {
  void SetDocument(const FolderItem&) override {}
  void SetDocumentName(const String& text) override { name = text; }
  void SetProductText(const String& text) override { product = text; }
  void SetPicture(std::string_view) override {}
  void SetBuildText(const String& text) override { build = text; }
  String BuildText() const override { return build; }
  void SetEditionText(const String& text) override { edition = text; }
  void SetOpenable(bool openable) override { isInTable = openable; }
  void SetFindings(const inspection::Findings& found) override { findings = found; }

  String name;
  String product;
  String edition;
  String build{inspection::UnwrittenBuildText};
  bool isInTable = true;
  inspection::Findings findings;
};

template <class Value>
Object OrNull(const std::optional<Value>& value) {
  return value ? Object(*value) : Object();
}

std::optional<String> NameOf(const std::optional<inspection::Edition>& edition) {
  if (!edition) return std::nullopt;
  return *edition == inspection::Edition::Macintosh ? "macintosh" : "windows";
}

String JSONLine(const Report& report, const String& path) {
  static const auto utf8 = GetTextEncoding(256, 0, 2);
  Object object = {{"path", path}};
  if (GetTextConverter(utf8, utf8).convert(path) != path)
    object["path_base64"] = EncodeBase64(path);
  const auto& found = report.findings;
  const bool isBig = found.order == inspection::DocumentByteOrder::Big;
  object["name"] = report.name;
  object["product"] = report.isInTable ? Object(report.product) : Object();
  object["major"] = OrNull(found.majorVersion);
  object["minor"] = OrNull(found.minorVersion);
  object["byte_order"] = isBig ? "big" : "little";
  object["edition"] = OrNull(NameOf(found.edition));
  object["build"] = OrNull(found.build);
  object["in_table"] = report.isInTable;
  // Bytes that aren't UTF-8 become U+FFFD.
  return object.dump(-1, ' ', false, Object::error_handler_t::replace) + '\n';
}

}  // namespace

String RowOf(const FolderItem& item, const Options& options) {
  const String& path = item.NativePath();
  if (options.any && !inspection::IsDocumentName(item.Name())) {
    throw RuntimeException(path + ": The name doesn't end in .indd");
  }
  Report report;
  VersionCheck(item, report, options.any ? Signature::Ignored : Signature::Required);
  if (options.json) return JSONLine(report, path);
  return OneLine(options.path ? path : report.name) + '\t' + OneLine(report.product) + '\t' +
         OneLine(report.edition) + '\t' + OneLine(report.build) + '\n';
}

String HeaderRow(const Options& options) {
  return String(options.path ? "path" : "name") + "\tproduct\tedition\tbuild\n";
}

}  // namespace vintrace::inspect
