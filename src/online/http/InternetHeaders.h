#pragma once

#include <cstdint>
#include <string_view>

#include "platform/text/Dictionary.h"
#include "platform/text/String.h"

namespace vintrace::http {

/// `text` without carriage returns and line feeds, which would start another line of a request.
String WithoutLineEnds(std::string_view text);

/// The header lines of a message. Names are compared without regard to ASCII case. A name can have
/// several values, with the indices 0, 1, 2 …, stored under the keys NAME, NAME:1, NAME:2 …; names
/// contain no colon. Otherwise, names and values may hold any bytes.
class InternetHeaders {
 public:
  using Headers = Dictionary<String>;

  /// The number of values of all names.
  std::int64_t Count() const { return static_cast<std::int64_t>(_Headers.Count()); }

  /// The name of the value at the 0-based `position`, which must be below `Count`.
  String Name(std::int64_t position) const;
  /// The value at the 0-based `position`; empty if there is none.
  String Value(std::int64_t position) const;
  /// The value of `name` with the 0-based index `index`; empty if there is none. A negative index
  /// means 0.
  String Value(std::string_view name, std::int64_t index = 0) const;
  /// The number of values of `name` with consecutive indices from 0.
  std::int64_t NameCount(std::string_view name) const;
  /// These values, joined with ", ".
  String CommaSeparatedValues(std::string_view name) const;

  /// Adds a value after the others of `name`.
  void AppendHeader(std::string_view name, std::string_view value);
  /// Makes `value` the only value of `name`.
  void SetHeader(std::string_view name, std::string_view value);
  /// Replaces the value with that index, or adds one, even if lower indices are missing.
  void SetHeader(std::string_view name, std::string_view value, std::int64_t index);
  /// Removes the values of `name` with consecutive indices from 0.
  void Delete(std::string_view name);
  /// Removes one value; the indices of later values decrease by 1.
  void Delete(std::string_view name, std::int64_t index);
  void DeleteAllHeaders();

  /// The text last parsed, even if headers have changed since; if there is none, the result of
  /// `_FormatHTTPHeaders`.
  String Source() const;

  /// The lines, joined with CR LF. Carriage returns and line feeds in names and values are removed,
  /// so that no value can begin another line.
  String _FormatHTTPHeaders() const;
  /// The same in the usual order of mail headers, without BCC and with one line each for To and CC.
  String _FormatEmailHeaders() const;

  /// True if there is a value under `key`, such as NAME or NAME:1.
  bool _HasHeader(std::string_view key) const { return _Headers.HasKey(key); }

  /// Replaces all headers with the lines of `text`, which end as `_DetermineEOLCharacter` detects.
  /// Joins folded lines, and skips lines without a colon.
  void _ParseHeaders(std::string_view text);
  /// The line end used in `text`: CR LF, LF or CR, in this order of preference; CR LF if there is
  /// none.
  static std::string_view _DetermineEOLCharacter(std::string_view text);

 private:
  Headers _Headers;
  String _rawHeaders;
  // By name, where the search for a free index starts: those from 1 to below it are in use.
  Dictionary<std::int64_t> taken_;
};

}  // namespace vintrace::http
