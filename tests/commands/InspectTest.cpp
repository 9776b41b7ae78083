// vintrace-inspect, run by a shell.

#include <gtest/gtest.h>

#include <cstdlib>

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
  Document("a.INDD");
  DocumentBuilder other(BodyStart);
  other.BigEndian().Release(8).Saved(BodyStart, 3, "5.0.142x");
  folder.File("other.indd", other.Bytes());
  folder.File("old.indd", "");
  EXPECT_EQ(Run("mkdir folder.indd; mkfifo fifo.indd; "
                "vintrace-inspect b.indd a.txt missing.indd folder.indd fifo.indd '' ./old.indd "
                "other.indd \"$PWD/a.INDD\""),
            "b.indd" + Found + "old.indd\tInDesign CSより下位\t\tサブバージョン不明\n" +
                "other.indd\tAdobe InDesign CS5.5\tWindows Edition\t8.5.0.142\n" + "a.INDD" +
                Found +
                "errors:\n"
                "vintrace-inspect: a.txt: The name doesn't end in .indd\n"
                "vintrace-inspect: missing.indd: No such file or directory\n"
                "vintrace-inspect: folder.indd: Is a directory\n"
                "vintrace-inspect: fifo.indd: Not a regular file\n"
                "vintrace-inspect: : The name doesn't end in .indd\n"
                "1\n");
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
  const std::string usage = "Usage: vintrace-inspect [--] FILE...\n";
  for (const std::string wrong : {"", "--", "--frob a.indd", "-"}) {
    EXPECT_EQ(Run("vintrace-inspect " + wrong), "errors:\n" + usage + "2\n") << wrong;
  }
  EXPECT_EQ(Run("vintrace-inspect --help >help; status=$?; head -n 1 help; (exit $status)"),
            usage + Good);
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
