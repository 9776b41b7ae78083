#pragma once

#include <cstdint>
#include <string_view>

#include "platform/text/Dictionary.h"
#include "platform/text/String.h"

namespace vintrace::http {

/// `text` without carriage returns and line feeds, which would start another line of a request.
String WithoutLineEnds(std::string_view text);

/// Header lines of a message: names, compared without regard to ASCII case, with one or more values
/// each. Names and values are bytes as they are. The values of one name have the indices 0, 1, 2 …;
/// they are kept under the keys NAME, NAME:1, NAME:2 …, as a name holds no colon.
class InternetHeaders {
 public:
  using Headers = Dictionary<String>;

  /// The number of values, those of one name counted each.
  std::int64_t Count() const { return static_cast<std::int64_t>(_Headers.Count()); }

  /// The name at the 0-based place `position`, which is below `Count`.
  String Name(std::int64_t position) const;
  /// The value at the 0-based place `position`; empty outside the places.
  String Value(std::int64_t position) const;
  /// The value of `name` with the 0-based index `index`; empty when there is none. An index below 0
  /// counts as 0.
  String Value(std::string_view name, std::int64_t index = 0) const;
  /// The number of values of `name`.
  std::int64_t NameCount(std::string_view name) const;
  /// All values of `name`, joined with ", ".
  String CommaSeparatedValues(std::string_view name) const;

  /// Adds a value behind the others of `name`.
  void AppendHeader(std::string_view name, std::string_view value);
  /// Makes `value` the only value of `name`.
  void SetHeader(std::string_view name, std::string_view value);
  /// Replaces the value with that index; adds it, under a key with that index, if there is none.
  void SetHeader(std::string_view name, std::string_view value, std::int64_t index);
  /// Takes all values of `name` out.
  void Delete(std::string_view name);
  /// Takes one value out; those behind it move up.
  void Delete(std::string_view name, std::int64_t index);
  void DeleteAllHeaders();

  /// The text that was parsed last, as it came; without one the lines as they are now, with no line
  /// end behind the last.
  String Source() const;

  /// The lines, joined with CR LF. Carriage returns and line feeds in names and values are left
  /// out, so that no value can begin another line.
  String _FormatHTTPHeaders() const;
  /// The lines in the order of mail, without the blind copies, joined with CR LF and cleaned like
  /// those of `_FormatHTTPHeaders`.
  String _FormatEmailHeaders() const;

  /// True when that very key, whose index is part of it, is there.
  bool _HasHeader(std::string_view key) const { return _Headers.HasKey(key); }

  /// Replaces everything by the lines of `text`, whose line end is found out. Folded lines are
  /// joined, and lines without a colon left out.
  void _ParseHeaders(std::string_view text);
  /// CR LF if it occurs anywhere in `text`; otherwise LF if it occurs; otherwise CR if it occurs;
  /// otherwise CR LF.
  static std::string_view _DetermineEOLCharacter(std::string_view text);

 private:
  Headers _Headers;
  String _rawHeaders;
  // The numbers below these are taken, by name. Only speeds the search for a free one up.
  Dictionary<std::int64_t> taken_;
};

}  // namespace vintrace::http
