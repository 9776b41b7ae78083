// What goes into requests and is found in replies, as functions of bytes.

#include <gtest/gtest.h>

#include "online/Authentication.h"
#include "online/ReplyText.h"
#include "online/RequestText.h"
#include "platform/Encodings.h"
#include "platform/qt/QtNetwork.h"

namespace vintrace::online {
namespace {

TEST(SplitURL, TakesEveryTextApart) {
  const struct {
    std::string_view url;
    RequestURL parts;
  } cases[] = {
      {"https://a.example/b/c.php?d=e://f", {"a.example", "a.example", 0, "/b/c.php?d=e://f"}},
      {"http://a.example", {"a.example", "a.example", 0, "/"}},
      {"a.example:8443/b", {"a.example:8443", "a.example", 8443, "/b"}},
      {"a:0", {"a:0", "a", 0, "/"}},
      {"a:x/", {"a:x", "a", 0, "/"}},
      {"a:12x:7", {"a:12x:7", "a", 12, "/"}},
      {"a:99999999999999999999", {"a:99999999999999999999", "a", INT64_MAX, "/"}},
      {"/b", {"", "", 0, "/b"}},
      {"", {"", "", 0, "/"}},
      {"://", {"", "", 0, "/"}},
      {"a?b", {"a?b", "a?b", 0, "/"}},
      {"\xFF:1/\xFF", {"\xFF:1", "\xFF", 1, "/\xFF"}},
  };
  for (const auto& [url, parts] : cases) {
    const auto split = SplitURL(url);
    EXPECT_EQ(split.server, parts.server) << url;
    EXPECT_EQ(split.host, parts.host) << url;
    EXPECT_EQ(split.port, parts.port) << url;
    EXPECT_EQ(split.path, parts.path) << url;
  }
}

TEST(EncodeFields, EscapesItsOwnListOfCharacters) {
  Dictionary<String> form;
  EXPECT_EQ(EncodeFields(form), "");
  form.Set("b", "1 + 1=2&");
  form.Set("A", "a-b_c.d:e?f@g'h\"i|j\tk~");
  form.Set("B", "100%25");
  form.Set("x\r\n", "\\/][{}`()*^$#!;<>,");
  form.Set("", "\xE6\x97\xA5");
  EXPECT_EQ(EncodeFields(form),
            "b=100%2525&A=a%2Db%5Fc.d:e?f@g'h\"i|j\tk%7E&"
            "x%0D%0A=%5C%2F%5D%5B%7B%7D%60%28%29%2A%5E%24%23%21%3B%3C%3E%2C&=\xE6\x97\xA5");
}

TEST(FindHeaderEnd, TakesTheFirstFormThatIsThere) {
  const struct {
    std::string_view bytes;
    std::size_t position, blankLine;
  } cases[] = {
      {"A\r\n\r\nbody", 1, 4}, {"A\n\nbody", 1, 2}, {"A\r\rbody", 1, 2},
      {"A\n\nb\r\nc", 1, 2},   {"A\r\n\nb", 2, 2},  {"A\rB\r\r\n\r\nb", 4, 4},
      {"\r\n\r\n", 0, 4},      {"A\nB\r\rc", 3, 2},
  };
  for (const auto& [bytes, position, blankLine] : cases) {
    const auto end = FindHeaderEnd(bytes);
    ASSERT_TRUE(end) << bytes;
    EXPECT_EQ(end->position, position) << bytes;
    EXPECT_EQ(end->blankLine, blankLine) << bytes;
  }
  for (const std::string_view none : {"", "A", "A\r\n", "A\r\n\r", "\r\n", "A\rB\r", "A\n"}) {
    EXPECT_FALSE(FindHeaderEnd(none)) << none;
  }
}

TEST(StatusIn, IsTheNumberInTheSecondField) {
  const std::pair<std::string_view, std::int64_t> cases[] = {
      {"HTTP/1.1 404 Not Found\r\nA: 1", 404},
      {"x 200", 200},
      {"HTTP/1.0 200.7", 200},
      {"HTTP/1.0  200", 0},
      {"garbage", 0},
      {"", 0},
      {"A: 1\nHTTP/1.0 200", 1},
      {"HTTP/1.0 -200", 0},
      {"HTTP/1.0\r\n200 x", 0},
  };
  for (const auto& [headers, status] : cases) EXPECT_EQ(StatusIn(headers), status) << headers;
}

TEST(ParseChallenge, QuotedValuesAreWholeWhateverIsInThem) {
  const auto challenge = ParseChallenge(
      R"(Digest realm="a, b=c", nonce="x==" ,opaque="", qop="auth,auth-int", algorithm=MD5, e="\", \\")");
  EXPECT_EQ(challenge.scheme, "Digest");
  const std::pair<std::string_view, std::string_view> parameters[] = {
      {"REALM", "a, b=c"},      {"nonce", "x=="},   {"opaque", ""},
      {"qop", "auth,auth-int"}, {"algorithm", "D"}, {"e", R"(\", \\)"}};
  for (const auto& [name, value] : parameters) {
    EXPECT_EQ(challenge.parameters.Lookup(name), value) << name;
  }
  EXPECT_EQ(ParseChallenge("Basic").scheme, "Basic");
  EXPECT_EQ(ParseChallenge("").parameters.Count(), 0U);
  for (const std::string_view odd :
       {",,,", "a", "a=", "=", "a=\"", "\"", "a=\"b,c", "\\", "a=\\"}) {
    const auto parsed = ParseAuthenticationParams(odd);
    EXPECT_LE(parsed.Count(), 1U) << odd;
    EXPECT_EQ(parsed.Lookup("a").value_or("").size(), odd == "a=\"b,c" ? 2U : 0U) << odd;
  }
}

DigestSources Sources(std::int64_t uses, const String& clientNonce) {
  return {.uses = uses, .clientNonce = clientNonce, .hash = [](std::string_view text) {
            return qt::QtNetwork().MD5(text);
          }};
}

TEST(DigestAnswer, IsThatOfTheExampleInRFC2617) {
  auto parameters = ParseAuthenticationParams(
      R"(realm="testrealm@host.com", qop="auth,auth-int", nonce="dcd98b7102dd2f0e8b11d0f600bfb0c093", opaque="5ccc069c403ebaf9f0171e9517f40e41")");
  parameters.Set("uri", "/dir/index.html");
  EXPECT_EQ(DigestAnswer("Mufasa", "Circle Of Life", parameters, Sources(1, "0a4f113b")),
            R"(Digest username="Mufasa", realm="testrealm@host.com", )"
            R"(nonce="dcd98b7102dd2f0e8b11d0f600bfb0c093", uri="/dir/index.html", qop=auth, )"
            R"(nc=00000001, cnonce="0a4f113b", response="6629fae49393a05397450978507c4ef1", )"
            R"(opaque="5ccc069c403ebaf9f0171e9517f40e41")");
}

TEST(DigestAnswer, WithoutOpaqueEndsWithACommaAndCountsInHexadecimal) {
  const String answer = DigestAnswer("u", "p", {}, Sources(26, "c"));
  EXPECT_NE(answer.find("nc=0000001a, "), String::npos);
  EXPECT_TRUE(answer.ends_with("\", "));
}

TEST(BasicAnswer, IsBase64OfUserNameAndPassword) {
  EXPECT_EQ(BasicAnswer("Aladdin", "open sesame"), "Basic QWxhZGRpbjpvcGVuIHNlc2FtZQ==");
  EXPECT_EQ(BasicAnswer("u", ""), "Basic dTo=");
}

TEST(EncodeBase64, PadsEveryLength) {
  const std::pair<std::string_view, std::string_view> cases[] = {
      {"", ""},        {"f", "Zg=="},        {"fo", "Zm8="},
      {"foo", "Zm9v"}, {"foob", "Zm9vYg=="}, {"\xFB\xFF\xFE", "+//+"}};
  for (const auto& [bytes, text] : cases) EXPECT_EQ(EncodeBase64(bytes), text);
}

TEST(ClientNonce, TakesEveryDigitAndLetter) {
  int next = 37;
  EXPECT_EQ(ClientNonce([&](int least, int most) {
              EXPECT_EQ(most - least, 61);
              return next++ % 62;
            }),
            "bcdefghijklmnopqrstuvwxyz");
}

}  // namespace
}  // namespace vintrace::online
