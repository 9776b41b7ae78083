// The functions that format requests and parse replies.

#include <gtest/gtest.h>

#include "online/http/Authentication.h"
#include "online/http/InternetHeaders.h"
#include "online/http/RequestText.h"

namespace vintrace::http {
namespace {

TEST(EncodeFields, EscapesAFixedSetOfCharacters) {
  Dictionary<String> form;
  EXPECT_EQ(EncodeFields(form), "");
  form.Set("b", "1 + 1=2&\r\n\\/][{}`()*^$#!;<>,%25");
  form.Set("", "a-b_c.d:e?f@g'h\"i|j\tk~\xE6");
  EXPECT_EQ(EncodeFields(form),
            "b=1+%2B+1%3D2%26%0D%0A%5C%2F%5D%5B%7B%7D%60%28%29%2A%5E%24%23%21%3B%3C%3E%2C%2525&"
            "=a%2Db%5Fc.d:e?f@g'h\"i|j\tk%7E\xE6");
}

TEST(ParseChallenge, KeepsSeparatorsAndEscapesInQuotedValues) {
  const auto [scheme, parameters] = ParseChallenge(
      R"(Digest realm="a, b=c", nonce="x==" ,opaque="", algorithm=MD5, e="\", \\", x, y=)");
  EXPECT_EQ(scheme, "Digest");
  String values;
  for (const auto& [name, value] : parameters) {
    values.append(name).append(":").append(value).append("|");
  }
  EXPECT_EQ(values, R"(realm:a, b=c|nonce:x==|opaque:|algorithm:D|e:\", \\|x:|y:|)");
}

TEST(BasicAnswer, IsInBase64) {
  EXPECT_EQ(BasicAnswer("Aladdin", "open sesame"), "Basic QWxhZGRpbjpvcGVuIHNlc2FtZQ==");
  EXPECT_EQ(BasicAnswer("\xFB\xFF", "\xFE??"), "Basic +/86/j8/");
}

TEST(InternetHeaders, TheIndicesOfANameStayContiguous) {
  InternetHeaders headers;
  for (const std::string_view value : {"a", "b", "c"}) headers.AppendHeader("Received", value);
  headers.AppendHeader("To\r\n", "");
  headers.AppendHeader("RECEIVED", "d");
  EXPECT_EQ(headers._FormatHTTPHeaders(),
            "Received: a\r\nReceived: b\r\nReceived: c\r\nTo: \r\nRECEIVED: d");
  EXPECT_EQ(headers.Name(4) + headers.Value(4) + headers.Value(5) + headers.Value(-1), "RECEIVEDd");
  headers.Delete("Received", 0);
  headers.AppendHeader("Received", "e");
  headers.Delete("received", 1);
  EXPECT_EQ(headers.CommaSeparatedValues("Received"), "b, d, e");
  headers.SetHeader("Received", "f", 1);
  headers.SetHeader("Received", "g", 3);
  EXPECT_EQ(headers.CommaSeparatedValues("Received"), "b, f, e, g");
  headers.SetHeader("Received", "alone");
  headers.AppendHeader("Received", "again");
  EXPECT_EQ(headers.CommaSeparatedValues("Received"), "alone, again");
}

TEST(InternetHeaders, TheKindOfLineEndIsDetected) {
  const std::pair<std::string_view, std::string_view> rows[] = {
      {"HTTP/1.0 200 OK\r\nA: 1\r\n  folded\r\n\ttwice\r\nA:\t 3", "A: 1  folded twice\r\nA: 3"},
      {"A: b: c\nno colon\n: nameless\n\n\nD:", "A: b: c\r\n: nameless\r\nD: "},
      {"A: one\rcarriage\nB: 2", "A: onecarriage\r\nB: 2"},
      {"", ""},
  };
  for (const auto& [text, formatted] : rows) {
    InternetHeaders headers;
    headers._ParseHeaders(text);
    EXPECT_EQ(headers._FormatHTTPHeaders(), formatted);
    headers.SetHeader("More", "later");
    EXPECT_EQ(headers.Source(), text.empty() ? "More: later" : text);
  }
}

TEST(InternetHeaders, MailFormatOrdersTheHeadersAndOmitsBcc) {
  InternetHeaders headers;
  headers._ParseHeaders(
      "Bcc: secret\nB: 1\nReceived: by a\nTo: t1\nSubject: s\nReceived: by b\nTo: t2\nDate: d\n"
      "Return-Path: r\nFrom: f\nfrom: f2\nB: 2");
  EXPECT_EQ(headers._FormatEmailHeaders(),
            "Return-Path: r\r\nReceived: by a\r\nReceived: by b\r\nDate: d\r\nSubject: s\r\n"
            "From: f\r\nTo: t1, t2\r\nB: 1\r\nB: 2");
}

}  // namespace
}  // namespace vintrace::http
