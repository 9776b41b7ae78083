// The main stories, told once for each operation of theirs that may fail.

#include "faults/Faults.h"

#include <gtest/gtest.h>
#include <poll.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <thread>

#include "online/HTTPSecureSocket.h"
#include "platform/InstanceChannel.h"
#include "shell/App.h"
#include "support/RecordingApplication.h"
#include "support/ScriptedProgram.h"

namespace vintrace::test {
namespace {

namespace fs = std::filesystem;

const std::string Unreadable = "message: エラーが起こりましたので\n終了します";
const std::string Unexpected = "message: 予期しないエラーが起こりました。";
const std::string NotFound = "message: 該当するバージョンのInDesignが見つかりません。";
const std::string NotOpened = "message: 該当するバージョンのInDesignで開く事が出来ませんでした。";
const std::string Question = "open dialog: Adobe InDesign CS6を選択して下さい。";

/// The bytes of a file, read past the operations that fail.
std::string BytesOf(const fs::path& path) {
  std::ifstream file(path);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::ptrdiff_t OpenFiles() {
  return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
}

/// Tells `story` with the first operation failing, with the second, and so on, and without any. The
/// story sets the fault when it is up to it; it leaves no file open.
void ForEachFault(const std::function<void(int nth)>& story) {
  constexpr int Many = 1000;
  const char* failed = "";
  int nth = 0;
  while (failed != nullptr && nth < Many) {
    SCOPED_TRACE(++nth);
    const auto before = OpenFiles();
    story(nth);
    failed = Fault::Failed();
    EXPECT_EQ(OpenFiles(), before);
  }
  EXPECT_GT(nth, 3);
  EXPECT_LT(nth, Many);
}

class FaultTest : public testing::Test {
 protected:
  /// The program on a desktop of its own, with a document to open and this store.
  struct Program {
    Program(const FaultTest& test, std::string_view store) {
      fs::create_directories(test.folder.Path() / "data");
      test.folder.File("data/VNTR.ini", store);
      host.handedOver = {test.document};
    }
    bool Told(const std::string& line) const {
      return std::ranges::any_of(host.story,
                                 [&](const auto& each) { return each.starts_with(line); });
    }
    ScriptedHost host;
  };

  std::string Stored() const { return BytesOf(folder.Path() / "data/VNTR.ini"); }

  const TemporaryFolder folder;
  const Environment dataHome{"XDG_DATA_HOME", (folder.Path() / "data").c_str()};
  const FolderItem document = folder.File(
      "a.indd", DocumentBuilder(BodyStart + 500).Release(8).Saved(BodyStart, 1, "0.0.424").Bytes());
  const std::string bytes = BytesOf(document.NativePath());
};

TEST_F(FaultTest, ADocumentIsToldRightOrNotAtAllAndTheStoreStays) {
  ForEachFault([&](int nth) {
    const Fault fault(nth);
    const std::string store = "/Applications/A.app\n";
    Program program(*this, store);
    _Main();
    if (!program.Told(Unreadable)) {
      EXPECT_TRUE(program.host.Choose("clcopy"));
      EXPECT_EQ(program.host.clipboard, "a.indd\tAdobe InDesign CS6\tWindows Edition\t8.0.0.424");
    }
    const bool loaded = App::Instance().apploc == Lines{"/Applications/A.app"};
    EXPECT_TRUE(loaded || program.Told(Unexpected) || program.Told("quit: 0"));
    EXPECT_EQ(Stored(), store);
    EXPECT_EQ(program.Told(Unreadable), program.Told("quit: 0"));
  });
  EXPECT_EQ(BytesOf(document.NativePath()), bytes);
}

TEST_F(FaultTest, AnApplicationIsStartedOrTheUserIsToldAndOnlyAFailedOneForgotten) {
  for (const bool known : {true, false}) {
    ForEachFault([&](int nth) {
      const TemporaryFolder applications;  // One that fails may still be about to start.
      const RecordingApplication application(applications.Item("Adobe InDesign CS6/app"));
      const std::string line = application.Item().ShellPath() + '\n';
      Program program(*this, known ? line : "");
      program.host.choices = {application.Item()};
      _Main();
      program.host.story.clear();
      const auto window = std::dynamic_pointer_cast<Window1>(program.host.Windows().At(0));
      {
        const Fault fault(nth);
        window->PushButton3().RaiseAction();
      }
      const bool opened = program.host.Windows().Count() == 0;
      if (opened) {
        EXPECT_EQ(application.AwaitStart(), Lines{document.NativePath()});
      }
      const bool told =
          program.Told(Unexpected) || program.Told(NotFound) || program.Told(NotOpened);
      EXPECT_NE(opened, told);
      if (opened) {
        EXPECT_TRUE(Stored() == line || Stored() == '\n' + line);
      }
      if (Stored() != line && known) {
        EXPECT_TRUE(program.Told(Question) || told);
      }
    });
  }
}

TEST_F(FaultTest, ADownloadIsWholeOrHasFailed) {
  ForEachFault([&](int nth) {
    ScriptedNetwork network;
    network.peers = {{.replies = {{"HTTP/1.0 200 OK\r\n\r\npa", "ge"}}}};
    online::HTTPSecureSocket socket(network);
    const FolderItem file = folder.Item("page");
    const Fault fault(nth);
    const bool whole = socket.Get("https://a/", file, 5);
    EXPECT_EQ(whole, Fault::Failed() == nullptr);
    EXPECT_TRUE(!whole || BytesOf(file.NativePath()) == "page");
  });
}

TEST(FaultOfTheChannel, ADocumentComesUpInOneProgramOrTheOther) {
  ForEachFault([&](int nth) {
    const Fault fault(nth);
    using namespace std::chrono_literals;
    const TemporaryFolder folder;
    const ChannelPlace place{folder.Path().native(), "vintrace-:0", 300ms, 2s};
    auto first = InstanceSeat::Take({}, place);
    ASSERT_TRUE(first);
    first->Listen();
    std::atomic<int> opened = 0;
    std::atomic<bool> over = false;
    std::thread serving([&] {
      while (!over && first->Descriptor() >= 0) {
        pollfd watched{first->Descriptor(), POLLIN, 0};
        const timespec wait{.tv_sec = 0, .tv_nsec = 20'000'000};
        const bool came = ppoll(&watched, 1, &wait, nullptr) > 0;
        auto connection = came ? first->Accept() : std::nullopt;
        if (!connection) continue;
        auto outcome = connection->Read();
        while (std::holds_alternative<InstanceConnection::Unfinished>(outcome) && !over) {
          outcome = connection->Read();
        }
        if (std::holds_alternative<StartRequest>(outcome)) ++opened;
      }
    });
    StartRequest request;
    request.documents.emplace_back("/a.indd");
    if (InstanceSeat::Take(request, place)) ++opened;
    over = true;
    serving.join();
    EXPECT_GE(opened, 1) << "a document that nobody opens is lost";
  });
}

}  // namespace
}  // namespace vintrace::test
