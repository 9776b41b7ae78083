// vintrace-inspect as its users start it, through a shell.

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "support/DocumentBuilder.h"
#include "support/TemporaryFolder.h"

namespace vintrace::test {
namespace {

struct Outcome {
  int status;  ///< As a shell has it.
  std::string output;
  std::string errors;
};

class InspectTest : public testing::Test {
 protected:
  InspectTest() {
    std::filesystem::create_directory(folder.Path() / "in");
    const std::string path = std::string(VINTRACE_FOLDER ":") + std::getenv("PATH");
    setenv("PATH", path.c_str(), 1);
  }

  /// Runs `command` in the folder of the documents, where the program is on the path.
  Outcome Run(const std::string& command) const {
    const auto file = [&](const char* name) { return folder.Path().native() + '/' + name; };
    const std::string line = "cd '" + file("in") + "' && { " + command + "\n} >'" + file("output") +
                             "' 2>'" + file("errors") + "'";
    const int status = std::system(line.c_str());
    return {WEXITSTATUS(status), Contents(file("output")), Contents(file("errors"))};
  }

  void Document(const std::string& name) const {
    folder.File(
        "in/" + name,
        DocumentBuilder(BodyStart + 500).Release(8).Saved(BodyStart, 0, "0.0.370x").Bytes());
  }

  const TemporaryFolder folder;

 private:
  static std::string Contents(const std::string& path) {
    std::ostringstream contents;
    contents << std::ifstream(path).rdbuf();
    return contents.str();
  }
};

constexpr const char* Found = "\tAdobe InDesign CS6\tMacintosh Edition\t8.0.0.370\n";

TEST_F(InspectTest, GivesARowADocumentInTheOrderOfTheArguments) {
  Document("b.indd");
  Document("a.INDD");
  folder.File("in/old.indd", "");
  const Outcome outcome = Run("vintrace-inspect b.indd ./old.indd \"$PWD/a.INDD\"");
  EXPECT_EQ(outcome.output, std::string("b.indd") + Found +
                                "old.indd\tInDesign CSより下位\t\tサブバージョン不明\n" + "a.INDD" +
                                Found);
  EXPECT_EQ(outcome.errors, "");
  EXPECT_EQ(outcome.status, 0);
}

TEST_F(InspectTest, WhatGivesNoRowGivesALineAndTheOthersGoOn) {
  Document("a.indd");
  folder.File("in/a.txt", "");
  std::filesystem::create_directory(folder.Path() / "in/folder.indd");
  ASSERT_EQ(mkfifo((folder.Path() / "in/fifo.indd").c_str(), 0600), 0);
  const Outcome outcome =
      Run("vintrace-inspect a.txt missing.indd folder.indd fifo.indd a.indd '' indd");
  EXPECT_EQ(outcome.output, std::string("a.indd") + Found);
  EXPECT_EQ(outcome.errors,
            "vintrace-inspect: a.txt: The name doesn't end in .indd\n"
            "vintrace-inspect: missing.indd: No such file or directory\n"
            "vintrace-inspect: folder.indd: Is a directory\n"
            "vintrace-inspect: fifo.indd: Not a regular file\n"
            "vintrace-inspect: : The name doesn't end in .indd\n"
            "vintrace-inspect: indd: The name doesn't end in .indd\n");
  EXPECT_EQ(outcome.status, 1);
}

TEST_F(InspectTest, ADocumentIsOneRowWhateverItsNameAndItsBytes) {
  Document("t\ta\nb\x1B[2J.indd");
  Document("\xFF\xFE.indd");
  folder.File("in/c.indd",
              DocumentBuilder(BodyStart).Release(8).Put(BodyStart, "\n\t\rabc").Bytes());
  const Outcome outcome =
      Run("find . -name '*.indd' -print0 | sort -z | xargs -0 vintrace-inspect");
  EXPECT_EQ(outcome.output,
            std::string("c.indd\tAdobe InDesign CS6\t不明\t8.\uFFFD\uFFFD\uFFFDabc\n") +
                "t\uFFFDa\uFFFDb\uFFFD[2J.indd" + Found + "\xFF\xFE.indd" + Found);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(Run("vintrace-inspect \"$(printf 'x\\ny.indd')\"").errors,
            "vintrace-inspect: x\uFFFDy.indd: No such file or directory\n");
}

TEST_F(InspectTest, RowsOfProgramsThatShareAFileStayWhole) {
  constexpr int Documents = 5'000;
  Document("a.indd");
  const Outcome outcome =
      Run("yes a.indd | head -n " + std::to_string(Documents) +
          " | xargs -P 2 -n 1000 vintrace-inspect >>rows; grep -vc '0.0.370$' rows; "
          "wc -l <rows");
  EXPECT_EQ(outcome.output, "0\n" + std::to_string(Documents) + "\n");
}

TEST_F(InspectTest, TellsHowItIsUsed) {
  Document("--help.indd");
  for (const auto* wrong : {"vintrace-inspect", "vintrace-inspect --",
                            "vintrace-inspect --frob a.indd", "vintrace-inspect -"}) {
    const Outcome outcome = Run(wrong);
    EXPECT_EQ(outcome.status, 2) << wrong;
    EXPECT_EQ(outcome.output, "") << wrong;
    EXPECT_TRUE(outcome.errors.starts_with("Usage: ")) << wrong;
  }
  const Outcome help = Run("vintrace-inspect --help");
  EXPECT_TRUE(help.output.starts_with("Usage: "));
  EXPECT_EQ(help.status, 0);
  EXPECT_EQ(Run("vintrace-inspect --version").output, "vintrace-inspect 1.20\n");
  EXPECT_EQ(Run("vintrace-inspect -- --help.indd").output, std::string("--help.indd") + Found);
}

TEST_F(InspectTest, AClosedPipeEndsItQuietlyAndAFullDiskDoesNot) {
  Document("a.indd");
  const std::string many = "set -- $(yes a.indd | head -n 10000)";
  const std::string one = "vintrace-inspect \"$@\" | head -n 1";
  EXPECT_EQ(Run(many + "; " + one).errors, "");
  // Where the signal of a closed pipe is ignored, the write fails instead.
  EXPECT_EQ(Run(many + "; trap '' PIPE; " + one).errors, "");
  const Outcome full = Run("vintrace-inspect a.indd >/dev/full");
  EXPECT_EQ(full.errors, "vintrace-inspect: standard output: No space left on device\n");
  EXPECT_EQ(full.status, 1);
  EXPECT_EQ(Run("vintrace-inspect a.indd >&-").status, 1);
}

}  // namespace
}  // namespace vintrace::test
