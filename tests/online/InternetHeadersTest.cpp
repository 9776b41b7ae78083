#include "online/InternetHeaders.h"

#include <gtest/gtest.h>

namespace vintrace::online {
namespace {

InternetHeaders Parsed(std::string_view text) {
  InternetHeaders headers;
  headers._ParseHeaders(text);
  return headers;
}

TEST(InternetHeaders, TheValuesOfANameHaveUnbrokenIndices) {
  InternetHeaders headers;
  headers.AppendHeader("Received", "a");
  headers.AppendHeader("To", "x");
  headers.AppendHeader("received", "b");
  headers.AppendHeader("RECEIVED", "c");
  EXPECT_EQ(headers.Count(), 4);
  EXPECT_EQ(headers.NameCount("received"), 3);
  EXPECT_TRUE(headers._HasHeader("Received:1") && headers._HasHeader("received:2"));
  EXPECT_EQ(headers.CommaSeparatedValues("Received"), "a, b, c");
  EXPECT_EQ(headers.Name(3), "RECEIVED");
  EXPECT_EQ(headers.Value(1), "x");

  headers.Delete("Received", 0);
  EXPECT_EQ(headers.CommaSeparatedValues("Received"), "b, c");
  headers.AppendHeader("Received", "d");
  EXPECT_EQ(headers.CommaSeparatedValues("Received"), "b, c, d");
  headers.Delete("Received", 1);
  EXPECT_EQ(headers.CommaSeparatedValues("Received"), "b, d");
  headers.SetHeader("Received", "e", 1);
  headers.SetHeader("Received", "f", 2);
  EXPECT_EQ(headers.CommaSeparatedValues("Received"), "b, e, f");
  headers.SetHeader("Received", "alone");
  EXPECT_EQ(headers.CommaSeparatedValues("Received"), "alone");
  EXPECT_EQ(headers.NameCount("Received"), 1);
  headers.Delete("Received");
  headers.Delete("Received", 0);
  EXPECT_EQ(headers.Count(), 1);
}

TEST(InternetHeaders, WhatIsNotThereIsEmptyAndAnEmptyValueIsThere) {
  InternetHeaders headers;
  EXPECT_EQ(headers.Value(0), "");
  EXPECT_EQ(headers.Value("x"), "");
  EXPECT_EQ(headers.NameCount("x"), 0);
  EXPECT_EQ(headers.CommaSeparatedValues("x"), "");
  EXPECT_EQ(headers.Source(), "");
  headers.AppendHeader("x", "");
  EXPECT_EQ(headers.NameCount("X"), 1);
  EXPECT_EQ(headers._FormatHTTPHeaders(), "x: ");
}

TEST(InternetHeaders, AValueBehindAGapIsFoundByItsIndexAlone) {
  InternetHeaders headers;
  headers.AppendHeader("a", "0");
  headers.SetHeader("a", "5", 5);
  EXPECT_EQ(headers.NameCount("a"), 1);
  EXPECT_EQ(headers.Value("a", 5), "5");
  headers.AppendHeader("a", "1");
  EXPECT_EQ(headers.Value("a", 1), "1");
}

TEST(InternetHeaders, EveryLineEndIsFoundOut) {
  const struct {
    std::string_view text;
    String formatted;
  } cases[] = {
      {"HTTP/1.0 200 OK\r\nA: 1\r\nB:2", "A: 1\r\nB: 2"},
      {"A: 1\nB: 2\n", "A: 1\r\nB: 2"},
      {"A: 1\rB: 2", "A: 1\r\nB: 2"},
      {"A: 1\r\n  folded\r\n\ttwice\r\nA:\t 3", "A: 1  folded twice\r\nA: 3"},
      {"A: b: c\nno colon\n: nameless\nD:", "A: b: c\r\n: nameless\r\nD: "},
      {"A: 1\n\n\nB: 2", "A: 1\r\nB: 2"},
      {"HTTP/1.0 200 it: is\nA: 1", "HTTP/1.0 200 it: is\r\nA: 1"},
      {"A: one\rcarriage\nB: 2", "A: onecarriage\r\nB: 2"},
      {"", ""},
  };
  for (const auto& [text, formatted] : cases) {
    auto headers = Parsed(text);
    EXPECT_EQ(headers._FormatHTTPHeaders(), formatted) << text;
    headers.SetHeader("More", "later");
    EXPECT_EQ(headers.Source(), text.empty() ? "More: later" : text);
  }
}

TEST(InternetHeaders, MailHasItsOrderAndNoBlindCopies) {
  const auto headers = Parsed(
      "Bcc: secret\nX-A: 1\nReceived: by a\nTo: t1\nSubject: s\nReceived: by b\nTo: t2\nDate: d\n"
      "Return-Path: r\nFrom: f\nfrom: f2\nX-A: 2");
  EXPECT_EQ(headers._FormatEmailHeaders(),
            "Return-Path: r\r\nReceived: by a\r\nReceived: by b\r\nDate: d\r\nSubject: s\r\n"
            "From: f\r\nTo: t1, t2\r\nX-A: 1\r\nX-A: 2");
}

TEST(InternetHeaders, NoValueBeginsAnotherLine) {
  InternetHeaders headers;
  headers.SetHeader("A\r\nB", "1\r\n\r\nPOST / HTTP/1.0\r\rC: 2\n");
  EXPECT_EQ(headers._FormatHTTPHeaders(), "AB: 1POST / HTTP/1.0C: 2");
}

TEST(InternetHeaders, ManyOfOneNameTakeNoTimeToSpeakOf) {
  String text;
  for (int i = 0; i < 20'000; ++i) text += "a:\n";
  EXPECT_EQ(Parsed(text).NameCount("a"), 20'000);
}

}  // namespace
}  // namespace vintrace::online
