// What goes into requests and is found in replies, as functions of bytes.

#include <gtest/gtest.h>

#include "online/Authentication.h"
#include "online/InternetHeaders.h"
#include "online/RequestText.h"
#include "platform/qt/QtNetwork.h"

namespace vintrace::online {
namespace {

TEST(SplitURL, TakesEveryTextApart) {
  const std::pair<std::string_view, std::string_view> rows[] = {
      {"https://a.example:8443/b/c.php?d=e://f", "a.example:8443|a.example|8443|/b/c.php?d=e://f"},
      {"a?b", "a?b|a?b|0|/"},
      {"a:12x:7", "a:12x:7|a|12|/"},
      {"a:x/\xFF", "a:x|a|0|/\xFF"},
      {"/b", "||0|/b"},
      {"://", "||0|/"},
  };
  for (const auto& [url, parts] : rows) {
    const auto [server, host, port, path] = SplitURL(url);
    String joined = server + '|';
    EXPECT_EQ(joined.append(host).append("|").append(Str(port)).append("|").append(path), parts);
  }
}

TEST(EncodeFields, EscapesItsOwnListOfCharacters) {
  Dictionary<String> form;
  EXPECT_EQ(EncodeFields(form), "");
  form.Set("b", "1 + 1=2&\r\n\\/][{}`()*^$#!;<>,%25");
  form.Set("", "a-b_c.d:e?f@g'h\"i|j\tk~\xE6");
  EXPECT_EQ(EncodeFields(form),
            "b=1+%2B+1%3D2%26%0D%0A%5C%2F%5D%5B%7B%7D%60%28%29%2A%5E%24%23%21%3B%3C%3E%2C%2525&"
            "=a%2Db%5Fc.d:e?f@g'h\"i|j\tk%7E\xE6");
}

TEST(ParseChallenge, QuotedValuesAreWholeWhateverIsInThem) {
  const auto [scheme, parameters] =
      ParseChallenge(R"(Digest realm="a, b=c", nonce="x==" ,opaque="", algorithm=MD5, e="\", \\")");
  EXPECT_EQ(scheme, "Digest");
  String values;
  for (const auto& [name, value] : parameters) {
    values.append(name).append(":").append(value).append("|");
  }
  EXPECT_EQ(values, R"(realm:a, b=c|nonce:x==|opaque:|algorithm:D|e:\", \\|)");
  for (const std::string_view odd : {"", ",,,", "a", "a=", "=", "a=\"", "\"", "a=\"b,c", "a=\\"}) {
    const auto parsed = ParseAuthenticationParams(odd);
    EXPECT_LE(parsed.Count(), 1U) << odd;
    EXPECT_EQ(parsed.Lookup("a").value_or(""), odd == "a=\"b,c" ? "b," : "") << odd;
  }
}

TEST(Answers, AreThoseOfTheExamplesInRFC2617) {
  EXPECT_EQ(BasicAnswer("Aladdin", "open sesame"), "Basic QWxhZGRpbjpvcGVuIHNlc2FtZQ==");
  EXPECT_EQ(BasicAnswer("\xFB\xFF", "\xFE??"), "Basic +/86/j8/");
  auto parameters = ParseAuthenticationParams(
      R"(realm="testrealm@host.com", qop="auth,auth-int", nonce="dcd98b7102dd2f0e8b11d0f600bfb0c093", opaque="5ccc069c403ebaf9f0171e9517f40e41")");
  parameters.Set("uri", "/dir/index.html");
  DigestSources sources{.clientNonce = "0a4f113b",
                        .hash = [](auto text) { return qt::QtNetwork().MD5(text); }};
  EXPECT_EQ(DigestAnswer("Mufasa", "Circle Of Life", parameters, sources),
            R"(Digest username="Mufasa", realm="testrealm@host.com", )"
            R"(nonce="dcd98b7102dd2f0e8b11d0f600bfb0c093", uri="/dir/index.html", qop=auth, )"
            R"(nc=00000001, cnonce="0a4f113b", response="6629fae49393a05397450978507c4ef1", )"
            R"(opaque="5ccc069c403ebaf9f0171e9517f40e41")");
  sources.uses = 0x1A2B3C4D;
  EXPECT_NE(DigestAnswer("u", "p", {}, sources).find("nc=1a2b3c4d, "), String::npos);
}

TEST(InternetHeaders, TheValuesOfANameHaveUnbrokenIndices) {
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
  headers.SetHeader("Received", "behind a gap", 9);
  EXPECT_EQ(headers.CommaSeparatedValues("Received"), "b, f, e, g");
  headers.AppendHeader("Received", "h");
  EXPECT_EQ(headers.Value("Received", 4) + headers.Value("Received", 9), "hbehind a gap");
  headers.SetHeader("Received", "alone");
  headers.AppendHeader("Received", "again");
  EXPECT_EQ(headers.CommaSeparatedValues("Received"), "alone, again");
}

TEST(InternetHeaders, EveryLineEndIsFoundOut) {
  const std::pair<std::string_view, std::string_view> rows[] = {
      {"HTTP/1.0 200 OK\r\nA: 1\r\n  folded\r\n\ttwice\r\nA:\t 3", "A: 1  folded twice\r\nA: 3"},
      {"A: b: c\nno colon\n: nameless\n\n\nD:", "A: b: c\r\n: nameless\r\nD: "},
      {"A: 1\rB: 2", "A: 1\r\nB: 2"},
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

TEST(InternetHeaders, MailHasItsOrderAndNoBlindCopies) {
  InternetHeaders headers;
  headers._ParseHeaders(
      "Bcc: secret\nB: 1\nReceived: by a\nTo: t1\nSubject: s\nReceived: by b\nTo: t2\nDate: d\n"
      "Return-Path: r\nFrom: f\nfrom: f2\nB: 2");
  EXPECT_EQ(headers._FormatEmailHeaders(),
            "Return-Path: r\r\nReceived: by a\r\nReceived: by b\r\nDate: d\r\nSubject: s\r\n"
            "From: f\r\nTo: t1, t2\r\nB: 1\r\nB: 2");
  InternetHeaders few;
  few._ParseHeaders("B: 1");
  EXPECT_EQ(few._FormatEmailHeaders(), "B: 1");
}

}  // namespace
}  // namespace vintrace::online
