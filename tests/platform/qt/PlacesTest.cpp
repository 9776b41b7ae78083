#include "platform/qt/Places.h"

#include <gtest/gtest.h>

#include "support/Environment.h"

namespace vintrace::qt {
namespace {

TEST(Places, ATypedPathCountsFromTheFolderTheHomeOrTheRoot) {
  const test::Environment home("HOME", "/home/\xFF/");
  const std::pair<const char*, const char*> rows[] = {
      {" x ", "/a/b/ x "},  {"./c/../x", "/a/b/x"}, {"..", "/a"},
      {"../../../..", "/"}, {"c/", "/a/b/c"},       {"/", "/"},
      {"/c//d/.", "/c/d"},  {"~", "/home/\xFF"},    {"~/x.indd", "/home/\xFF/x.indd"},
      {"~x", "/a/b/~x"},    {"c/~", "/a/b/c/~"},
  };
  for (const auto& [text, path] : rows) EXPECT_EQ(TypedPath(text, "/a/b"), path) << text;
}

TEST(Places, AUserWithoutAHomeHasTheRootOnce) {
  for (const char* folder : {"", "here", "/"}) {
    const test::Environment home("HOME", folder);
    EXPECT_EQ(HomeFolder(), "/");
    EXPECT_EQ(UsualPlaces().front().kind, Place::Home);
    EXPECT_NE(UsualPlaces().back().kind, Place::Root);
  }
}

}  // namespace
}  // namespace vintrace::qt
