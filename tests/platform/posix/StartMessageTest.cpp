#include "platform/posix/StartMessage.h"

#include <gtest/gtest.h>

namespace vintrace::test {
namespace {

using posix::DecodeStartMessage;
using posix::EncodeStartMessage;
using posix::MayBecomeStartMessage;

StartRequest RequestOf(const std::vector<String>& paths) {
  StartRequest request;
  for (const auto& path : paths) request.documents.emplace_back(path);
  return request;
}

TEST(StartMessage, KeepsEveryByteOfTheTexts) {
  StartRequest request = RequestOf({"/\xFF\xC3\n\t \"'\\", "", "/" + String(4096, '\xE3')});
  request.activationToken = "token\n1";
  request.startupId = "id_TIME2";
  const auto decoded = DecodeStartMessage(EncodeStartMessage(request).value());
  ASSERT_TRUE(decoded);
  EXPECT_EQ(decoded->activationToken, "token\n1");
  EXPECT_EQ(decoded->startupId, "id_TIME2");
  ASSERT_EQ(decoded->documents.size(), 3U);
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(decoded->documents[i].NativePath(), request.documents[i].NativePath());
  }
}

TEST(StartMessage, APartOfOneMayBecomeOneAndIsNone) {
  const String message = EncodeStartMessage(RequestOf({"/a", "/bc"})).value();
  for (std::size_t size = 0; size < message.size(); ++size) {
    EXPECT_TRUE(MayBecomeStartMessage(message.substr(0, size))) << size;
    EXPECT_FALSE(DecodeStartMessage(message.substr(0, size))) << size;
  }
}

// The head of a message of one document "/a": 16 bytes of the mark, the body's size, the number of
// documents, the sizes of two empty texts, and the document behind its size.
TEST(StartMessage, OtherBytesAreNone) {
  const String good = EncodeStartMessage(RequestOf({"/a"})).value();
  ASSERT_EQ(good.substr(16), String("\0\0\0\x12\0\0\0\1\0\0\0\0\0\0\0\0\0\0\0\2/a", 22));
  const auto with = [&](std::size_t at, char byte) {
    String bytes = good;
    bytes[at] = byte;
    return bytes;
  };
  const struct {
    const char* what;
    String bytes;
    bool knownFromTheStart;
  } cases[] = {
      {"another mark", with(15, '2'), true},
      {"a body of 16 MiB and more", with(16, '\1'), true},
      {"a body of 4 GiB", with(16, '\xFF').substr(0, 20), true},
      {"bytes behind the end", good + "x", true},
      {"a document less than said", with(23, '\2'), false},
      {"a document more than said", with(23, '\0'), false},
      {"four billion documents", with(20, '\xFF'), false},
      {"a text that is longer than the rest", with(35, '\3'), false},
      {"a text that is shorter than the rest", with(35, '\1'), false},
      {"a text of 4 GiB", with(32, '\xFF'), false},
      {"a zero byte in a path", with(37, '\0'), false},
  };
  for (const auto& [what, bytes, knownFromTheStart] : cases) {
    EXPECT_FALSE(DecodeStartMessage(bytes)) << what;
    EXPECT_EQ(MayBecomeStartMessage(bytes), !knownFromTheStart) << what;
  }
}

TEST(StartMessage, ARequestPastTheBoundsIsNone) {
  const std::size_t longest = 256 << 10;
  EXPECT_TRUE(EncodeStartMessage(RequestOf({String(longest, 'a')})));
  EXPECT_FALSE(EncodeStartMessage(RequestOf({String(longest + 1, 'a')})));
  const std::vector<String> most(31, String(longest, 'a'));
  EXPECT_TRUE(DecodeStartMessage(EncodeStartMessage(RequestOf(most)).value()));
  EXPECT_FALSE(EncodeStartMessage(RequestOf(std::vector<String>(32, String(longest, 'a')))));
  EXPECT_TRUE(
      DecodeStartMessage(EncodeStartMessage(RequestOf(std::vector<String>(65536, "/a"))).value()));
  EXPECT_FALSE(EncodeStartMessage(RequestOf(std::vector<String>(65537, "/a"))));
}

}  // namespace
}  // namespace vintrace::test
