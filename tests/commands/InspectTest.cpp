// vintrace-inspect, run by a shell.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "platform/files/BinaryStream.h"
#include "support/DocumentBuilder.h"
#include "support/Environment.h"
#include "support/TemporaryFolder.h"
#include "support/WorkingFolder.h"

namespace vintrace::test {
namespace {

class InspectTest : public testing::Test {
 protected:
  /// Runs `command` in the folder of the documents, with the program on the PATH. Returns its
  /// output, a line "errors:", its error output, and a line with the exit status.
  String Run(const std::string& command) const {
    const std::string line = "{ " + command + "\n} >output 2>errors; status=$?; " +
                             "{ cat output; echo errors:; cat errors; echo $status; } >outcome";
    EXPECT_EQ(std::system(line.c_str()), 0);
    return BinaryStream::Open(folder.Item("outcome"), false).Read(1 << 20, nullptr);
  }

  void Document(const std::string& name) const {
    DocumentBuilder document(BodyStart + 500);
    folder.File(name, document.Release(8).Saved(BodyStart, 0, "0.0.370x").Bytes());
  }

  const TemporaryFolder folder;

 private:
  const WorkingFolder working_{folder.Path()};
  const Environment path_{"PATH", (std::string(VINTRACE_FOLDER ":") + std::getenv("PATH")).c_str()};
};

const std::string Found = "\tAdobe InDesign CS6\tMacintosh Edition\t8.0.0.370\n";
const std::string Good = "errors:\n0\n";

TEST_F(InspectTest, PrintsARowPerDocumentInOrderAndAnErrorPerOtherFile) {
  Document("b.indd");
  Document("template.indt");
  DocumentBuilder other(BodyStart);
  other.BigEndian().Release(8).Saved(BodyStart, 3, "5.0.142x");
  folder.File("other", other.Bytes());
  folder.File("._b.indd", "\x00\x05\x16\x07");
  folder.File("old.indd", "");
  const std::string otherRow = "\tAdobe InDesign CS5.5\tWindows Edition\t8.5.0.142\n";
  const std::string errors =
      "vintrace-inspect: missing.indd: No such file or directory\n"
      "vintrace-inspect: folder.indd: Is a directory (--recursive walks folders)\n"
      "vintrace-inspect: fifo.indd: Not a regular file\n"
      "vintrace-inspect: : The path is empty\n";
  const std::string files =
      " b.indd missing.indd folder.indd fifo.indd '' ./old.indd ._b.indd "
      "\"$PWD/template.indt\" other";
  EXPECT_EQ(Run("mkdir folder.indd; mkfifo fifo.indd; vintrace-inspect" + files),
            "b.indd" + Found + "template.indt" + Found + "other" + otherRow + "errors:\n" + errors +
                "vintrace-inspect: ./old.indd: This isn't an InDesign document\n"
                "vintrace-inspect: ._b.indd: This isn't an InDesign document\n1\n");
  const std::string path = folder.Path().native() + "/template.indt";
  EXPECT_EQ(Run("vintrace-inspect --any --header" + files),
            "name\tproduct\tedition\tbuild\nb.indd" + Found +
                "old.indd\tInDesign CSより下位\t\tサブバージョン不明\n"
                "._b.indd\tInDesign CSより下位\t\tサブバージョン不明\nerrors:\n" +
                errors + "vintrace-inspect: " + path +
                ": The name doesn't end in .indd\n"
                "vintrace-inspect: other: The name doesn't end in .indd\n1\n");
  EXPECT_EQ(Run("vintrace-inspect --path ./b.indd \"$PWD/template.indt\" --header"),
            "path\tproduct\tedition\tbuild\n./b.indd" + Found + path + Found + Good);
}

TEST_F(InspectTest, WalksFoldersInOrderWithoutFollowingLinks) {
  for (const char* each : {"a/b", "a/c", "other"}) {
    std::filesystem::create_directories(folder.Path() / each);
  }
  for (const char* each :
       {"a/z.INDD", "a/b/two.indt", "a/b/one.indd", "a/c/no.txt", "other/x.indd"}) {
    Document(each);
  }
  folder.File("a/c/rubbish.indd", "rubbish");
  EXPECT_EQ(
      Run("ln -s ../other a/link; ln -s ../other/x.indd a/x.indd; ln -s . a/loop; ln -s other top; "
          "vintrace-inspect -r --path a top other/x.indd gone"),
      "a/b/one.indd" + Found + "a/b/two.indt" + Found + "a/z.INDD" + Found + "top/x.indd" + Found +
          "other/x.indd" + Found +
          "errors:\nvintrace-inspect: a/c/rubbish.indd: This isn't an InDesign document\n"
          "vintrace-inspect: gone: No such file or directory\n1\n");
}

TEST_F(InspectTest, TakesPathsFromAList) {
  Document("a\nb.indd");
  Document("c.indd");
  folder.File("list", std::string("c.indd\0\0a\nb.indd\0gone\0c.indd", 29));
  const std::string rows = "c.indd" + Found + "a\uFFFDb.indd" + Found + "c.indd" + Found +
                           "errors:\nvintrace-inspect: : The path is empty\n"
                           "vintrace-inspect: gone: No such file or directory\n1\n";
  EXPECT_EQ(Run("vintrace-inspect --files0-from=list"), rows);
  EXPECT_EQ(Run("vintrace-inspect --files0-from - <list"), rows);
  EXPECT_EQ(Run("find . -name c.indd -print0 | vintrace-inspect -r --path --files0-from=-"),
            "./c.indd" + Found + Good);
  EXPECT_EQ(Run("vintrace-inspect --files0-from=gone"),
            "errors:\nvintrace-inspect: gone: No such file or directory\n1\n");
  EXPECT_EQ(Run("vintrace-inspect --files0-from=."),
            "errors:\nvintrace-inspect: .: Is a directory\n1\n");
}

TEST_F(InspectTest, PrintsObjectsInNoLanguage) {
  Document("a.indd");
  Document("\xFF\"\n.indd");
  folder.File("new.indd", DocumentBuilder(BodyStart).BigEndian().Release(15, 2).Bytes());
  folder.File("none.indd", DocumentBuilder(BodyStart + 500).Release(7, 5).Bytes());
  folder.File("short.indd", DocumentBuilder(26).Bytes());
  EXPECT_EQ(
      Run("vintrace-inspect --json ./a.indd \"$(printf '\\377\"\\n.indd')\" new.indd none.indd "
          "short.indd"),
      R"({"path":"./a.indd","name":"a.indd","product":"Adobe InDesign CS6","major":8,"minor":0,"byte_order":"little","edition":"macintosh","build":"8.0.0.370","in_table":true}
{"path":")"
      "\uFFFD"
      R"(\"\n.indd","path_base64":"/yIKLmluZGQ=","name":")"
      "\uFFFD"
      R"(\"\n.indd","product":"Adobe InDesign CS6","major":8,"minor":0,"byte_order":"little","edition":"macintosh","build":"8.0.0.370","in_table":true}
{"path":"new.indd","name":"new.indd","product":null,"major":15,"minor":120,"byte_order":"big","edition":null,"build":null,"in_table":false}
{"path":"none.indd","name":"none.indd","product":"Adobe InDesign CS5.5","major":7,"minor":5,"byte_order":"little","edition":null,"build":null,"in_table":true}
{"path":"short.indd","name":"short.indd","product":null,"major":null,"minor":null,"byte_order":"little","edition":null,"build":null,"in_table":false}
)" + Good);
}

TEST_F(InspectTest, RealDocumentsGiveTheseObjects) {
  if (std::string_view(VINTRACE_SAMPLES).empty()) GTEST_SKIP() << "there are no real documents";
  EXPECT_EQ(
      Run("cd '" VINTRACE_SAMPLES "'; vintrace-inspect --json *.indd; cd \"$OLDPWD\""),
      R"({"path":"1.5.indd","name":"1.5.indd","product":null,"major":0,"minor":0,"byte_order":"little","edition":null,"build":null,"in_table":false}
{"path":"2020.indd","name":"2020.indd","product":null,"major":15,"minor":1,"byte_order":"little","edition":null,"build":null,"in_table":false}
{"path":"CC2015.indd","name":"CC2015.indd","product":"Adobe InDesign CC 2015","major":11,"minor":4,"byte_order":"little","edition":"macintosh","build":"11.4.1.102","in_table":true}
{"path":"CS.indd","name":"CS.indd","product":"Adobe InDesign CS","major":3,"minor":0,"byte_order":"little","edition":"macintosh","build":"3.0.0.424","in_table":true}
{"path":"CS2.indd","name":"CS2.indd","product":"Adobe InDesign CS2","major":4,"minor":0,"byte_order":"big","edition":"macintosh","build":"4.0.0.436","in_table":true}
{"path":"CS6.indd","name":"CS6.indd","product":"Adobe InDesign CS6","major":8,"minor":1,"byte_order":"little","edition":"macintosh","build":"8.0.0.370","in_table":true}
)" + Good);
}

TEST_F(InspectTest, AnInterruptEndsItWithWholeRows) {
  Document("a.indd");
  EXPECT_EQ(Run("yes a.indd | head -n 400000 | tr '\\n' '\\0' >list; "
                "timeout -s INT 0.1 vintrace-inspect --files0-from=list >rows; echo $?; "
                "grep -vc '0.0.370$' rows; tail -c 1 rows | od -An -c"),
            "124\n0\n  \\n\n" + Good);
}

TEST_F(InspectTest, ADocumentIsOneRowWhateverItsNameAndContent) {
  Document("t\ta\nb\x1B[2J.indd");
  Document("\xFF\xFE.indd");
  folder.File("c.indd", DocumentBuilder(BodyStart).Release(8).Put(BodyStart, "\n\t\rabc").Bytes());
  EXPECT_EQ(Run("find . -name '*.indd' -print0 | sort -z | xargs -0 vintrace-inspect"),
            "c.indd\tAdobe InDesign CS6\t不明\t8.\uFFFD\uFFFD\uFFFDabc\n"
            "t\uFFFDa\uFFFDb\uFFFD[2J.indd" +
                Found + "\xFF\xFE.indd" + Found + Good);
  EXPECT_EQ(Run("vintrace-inspect \"$(printf 'x\\ny.indd')\""),
            "errors:\nvintrace-inspect: x\uFFFDy.indd: No such file or directory\n1\n");
}

TEST_F(InspectTest, RowsStayWholeWhenProcessesShareAnOutputFile) {
  Document("a.indd");
  EXPECT_EQ(Run("yes a.indd | head -n 5000 | xargs -P 2 -n 1000 vintrace-inspect >>rows; "
                "grep -vc '0.0.370$' rows; wc -l <rows"),
            "0\n5000\n" + Good);
}

TEST_F(InspectTest, PrintsUsageHelpAndVersion) {
  Document("--help.indd");
  const std::string usage =
      "Usage: vintrace-inspect [OPTION]... [--] FILE...\n"
      "       vintrace-inspect [OPTION]... --files0-from=FILE\n";
  const std::pair<std::string, std::string> wrong[] = {
      {"", "no file is given"},
      {"--", "no file is given"},
      {"a.indd --frob", "unrecognized option '--frob'"},
      {"-x a.indd", "invalid option -- 'x'"},
      {"--files0-from", "option '--files0-from' requires an argument"},
      {"--files0-from=list a.indd", "files can't be given together with --files0-from"},
      {"--json --header a.indd", "--json has no header"},
  };
  for (const auto& [arguments, reason] : wrong) {
    EXPECT_EQ(Run("vintrace-inspect " + arguments),
              "errors:\nvintrace-inspect: " + reason + "\n" + usage + "2\n");
  }
  EXPECT_EQ(Run("vintrace-inspect --help | head -n 2; vintrace-inspect -h | tail -n 1"),
            usage + "2 for wrong usage.\n" + Good);
  EXPECT_EQ(Run("vintrace-inspect --version"), "vintrace-inspect 1.2.0\n" + Good);
  EXPECT_EQ(Run("vintrace-inspect -- --help.indd"), "--help.indd" + Found + Good);
}

TEST_F(InspectTest, AClosedPipeEndsItQuietlyButAFullDiskIsReported) {
  Document("a.indd");
  // With SIGPIPE ignored, the write fails instead.
  EXPECT_EQ(Run("set -- $(yes a.indd | head -n 10000); vintrace-inspect \"$@\" | head -n 1; "
                "trap '' PIPE; vintrace-inspect \"$@\" | head -n 1"),
            "a.indd" + Found + "a.indd" + Found + Good);
  EXPECT_EQ(Run("vintrace-inspect a.indd >/dev/full"),
            "errors:\nvintrace-inspect: standard output: No space left on device\n1\n");
  EXPECT_TRUE(Run("vintrace-inspect a.indd >&-").ends_with("\n1\n"));
}

}  // namespace
}  // namespace vintrace::test
