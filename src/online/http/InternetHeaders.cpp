#include "online/http/InternetHeaders.h"

#include <algorithm>

namespace vintrace::http {
namespace {

constexpr std::string_view LineEnd = "\r\n";

std::string_view NameIn(std::string_view key) { return key.substr(0, key.find(':')); }

String KeyFor(std::string_view name, std::int64_t index) {
  return index < 1 ? String(name) : String(name) + ':' + Str(index);
}

String Line(std::string_view name, std::string_view value) {
  return WithoutLineEnds(name) + ": " + WithoutLineEnds(value);
}

/// Header lines, joined with CR LF.
class Lines {
 public:
  void Add(std::string_view name, std::string_view value) {
    if (!text_.empty()) text_ += LineEnd;
    text_ += Line(name, value);
  }
  const String& Text() const { return text_; }

 private:
  String text_;
};

String Unfolded(std::string_view text, std::string_view end) {
  const String whole = ReplaceAll(text, String(end) + ' ', " ");
  return ReplaceAll(whole, String(end) + '\t', " ");
}

std::string_view WithoutLeadingSpace(std::string_view text) {
  const auto first = text.find_first_not_of(" \t\r\n\v\f");
  return first == std::string_view::npos ? std::string_view() : text.substr(first);
}

}  // namespace

String WithoutLineEnds(std::string_view text) {
  return ReplaceAll(ReplaceAll(text, "\r", ""), "\n", "");
}

std::string_view InternetHeaders::_DetermineEOLCharacter(std::string_view text) {
  for (const std::string_view end : {LineEnd, std::string_view("\n"), std::string_view("\r")}) {
    if (text.find(end) != std::string_view::npos) return end;
  }
  return LineEnd;
}

String InternetHeaders::Name(std::int64_t position) const {
  return String(NameIn(_Headers[static_cast<std::size_t>(position)].first));
}

String InternetHeaders::Value(std::int64_t position) const {
  if (position < 0 || position >= Count()) return {};
  return _Headers[static_cast<std::size_t>(position)].second;
}

String InternetHeaders::Value(std::string_view name, std::int64_t index) const {
  return _Headers.Lookup(KeyFor(name, index)).value_or(String());
}

std::int64_t InternetHeaders::NameCount(std::string_view name) const {
  if (!_HasHeader(name)) return 0;
  std::int64_t count = 1;
  while (_HasHeader(KeyFor(name, count))) ++count;
  return count;
}

String InternetHeaders::CommaSeparatedValues(std::string_view name) const {
  String values = Value(name);
  const auto count = NameCount(name);
  for (std::int64_t index = 1; index < count; ++index) values += ", " + Value(name, index);
  return values;
}

void InternetHeaders::AppendHeader(std::string_view name, std::string_view value) {
  if (!_HasHeader(name)) {
    _Headers.Set(name, String(value));
    return;
  }
  const auto bare = NameIn(name);
  // The key is taken: whatever its index, the value gets the first free index from 1 on.
  std::int64_t number = taken_.Lookup(bare).value_or(1);
  while (_HasHeader(KeyFor(bare, number))) ++number;
  _Headers.Set(KeyFor(bare, number), String(value));
  taken_.Set(bare, number + 1);
}

void InternetHeaders::SetHeader(std::string_view name, std::string_view value) {
  if (NameCount(name) > 1) Delete(name);
  _Headers.Set(name, String(value));
}

void InternetHeaders::SetHeader(std::string_view name, std::string_view value, std::int64_t index) {
  const String key = KeyFor(name, index);
  if (_HasHeader(key)) {
    _Headers.Set(key, String(value));
  } else {
    AppendHeader(key, value);
  }
}

void InternetHeaders::Delete(std::string_view name) {
  taken_.Remove(NameIn(name));
  for (auto index = NameCount(name) - 1; index >= 0; --index) _Headers.Remove(KeyFor(name, index));
}

void InternetHeaders::Delete(std::string_view name, std::int64_t index) {
  const String key = KeyFor(name, index);
  if (!_HasHeader(key)) return;
  taken_.Remove(NameIn(name));
  _Headers.Remove(key);
  for (auto next = std::max<std::int64_t>(index, 0) + 1; _HasHeader(KeyFor(name, next)); ++next) {
    _Headers.Set(KeyFor(name, next - 1), Value(name, next));
    _Headers.Remove(KeyFor(name, next));
  }
}

void InternetHeaders::DeleteAllHeaders() {
  _Headers = {};
  taken_ = {};
}

String InternetHeaders::Source() const {
  return _rawHeaders.empty() ? _FormatHTTPHeaders() : _rawHeaders;
}

String InternetHeaders::_FormatHTTPHeaders() const {
  Lines lines;
  for (const auto& [key, value] : _Headers) lines.Add(NameIn(key), value);
  return lines.Text();
}

String InternetHeaders::_FormatEmailHeaders() const {
  Lines lines;
  if (_HasHeader("Return-Path")) lines.Add("Return-Path", Value("Return-Path"));
  const auto received = NameCount("Received");
  for (std::int64_t index = 0; index < received; ++index) {
    lines.Add("Received", Value("Received", index));
  }
  for (const std::string_view name : {"Date", "Subject", "From"}) {
    if (_HasHeader(name)) lines.Add(name, Value(name));
  }
  for (const std::string_view name : {"To", "CC"}) {
    if (_HasHeader(name)) lines.Add(name, CommaSeparatedValues(name));
  }
  constexpr std::string_view DoneOrSecret = ":Date:Subject:From:To:CC:BCC:Received:Return-Path:";
  for (const auto& [key, value] : _Headers) {
    const auto name = NameIn(key);
    if (InStr(0, DoneOrSecret, ':' + String(name) + ':') == 0) lines.Add(name, value);
  }
  return lines.Text();
}

void InternetHeaders::_ParseHeaders(std::string_view text) {
  DeleteAllHeaders();
  _rawHeaders = text;
  const auto end = _DetermineEOLCharacter(text);
  const String lines = Unfolded(text, end);
  for (std::string_view rest = lines; !rest.empty();) {
    const auto line = rest.substr(0, rest.find(end));
    rest.remove_prefix(std::min(rest.size(), line.size() + end.size()));
    const auto colon = line.find(':');
    if (colon == std::string_view::npos) continue;
    AppendHeader(line.substr(0, colon), WithoutLeadingSpace(line.substr(colon + 1)));
  }
}

}  // namespace vintrace::http
