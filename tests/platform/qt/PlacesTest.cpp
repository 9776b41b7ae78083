#include "platform/qt/Places.h"

#include <gtest/gtest.h>

#include <QByteArray>

namespace vintrace::qt {
namespace {

class PlacesTest : public testing::Test {
 protected:
  void TearDown() override { qputenv("HOME", oldHome_); }

 private:
  const QByteArray oldHome_ = qgetenv("HOME");
};

TEST_F(PlacesTest, ATypedPathCountsFromTheFolderTheHomeOrTheRoot) {
  qputenv("HOME", "/home/\xFF/");
  const struct {
    const char* text;
    const char* path;
  } rows[] = {
      {"x.indd", "/a/b/x.indd"},
      {" x ", "/a/b/ x "},
      {"./c/../x", "/a/b/x"},
      {"..", "/a"},
      {"../../../..", "/"},
      {"c/", "/a/b/c"},
      {"/", "/"},
      {"/c//d/.", "/c/d"},
      {"~", "/home/\xFF"},
      {"~/x.indd", "/home/\xFF/x.indd"},
      {"~x", "/a/b/~x"},
      {"c/~", "/a/b/c/~"},
  };
  for (const auto& [text, path] : rows) EXPECT_EQ(TypedPath(text, "/a/b"), path) << text;
}

TEST_F(PlacesTest, AUserWithoutAHomeHasTheRootOnce) {
  for (const char* home : {"", "here", "/"}) {
    qputenv("HOME", home);
    EXPECT_EQ(HomeFolder(), "/");
    EXPECT_EQ(UsualPlaces().front().kind, Place::Home);
    EXPECT_NE(UsualPlaces().back().kind, Place::Root);
  }
}

}  // namespace
}  // namespace vintrace::qt
