// Inspection, launch and download, repeated with a failure of each system call in turn.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "online/http/HTTPSecureSocket.h"
#include "shell/App.h"
#include "support/RecordingApplication.h"
#include "support/ScriptedProgram.h"

namespace {

std::atomic<int> untilFault = 0;
std::atomic<bool> hasFailed = false;

/// True for the one call that must fail; sets errno.
bool Fails() {
  if (--untilFault != 0) return false;
  errno = EIO;
  return hasFailed = true;
}

/// While it lives, the `nth` call (1-based) of the functions wrapped below fails. Only one may live
/// at a time.
class Fault {
 public:
  explicit Fault(int nth) {
    hasFailed = false;
    untilFault = nth;
  }
  Fault(const Fault&) = delete;
  Fault& operator=(const Fault&) = delete;
  ~Fault() { untilFault = 0; }
};

}  // namespace

// The linker redirects the program's calls of these functions here (--wrap).

// NOLINTBEGIN(cppcoreguidelines-macro-usage,bugprone-macro-parentheses)

/// A function that fails without any effect.
#define FAILING(Result, name, parameters, arguments)       \
  extern "C" Result __real_##name parameters;              \
  extern "C" Result __wrap_##name parameters {             \
    return Fails() ? Result(-1) : __real_##name arguments; \
  }

/// A function that fails after its work: otherwise a descriptor or a process would stay behind.
#define FAILING_BEHIND(Result, name, parameters, arguments) \
  extern "C" Result __real_##name parameters;               \
  extern "C" Result __wrap_##name parameters {              \
    const Result result = __real_##name arguments;          \
    return Fails() ? Result(-1) : result;                   \
  }

// NOLINTEND(cppcoreguidelines-macro-usage,bugprone-macro-parentheses)

// `open` has no mode without O_CREAT; then the parameter is arbitrary, and ignored.
extern "C" int __real_open(const char* path, int flags, mode_t mode);
extern "C" int __wrap_open(const char* path, int flags, mode_t mode) {
  const bool isDocument = std::string_view(path).ends_with(".indd");
  EXPECT_TRUE(!isDocument || (flags & O_ACCMODE) == O_RDONLY) << "a document is opened for writing";
  return Fails() ? -1 : __real_open(path, flags, mode);
}
FAILING(int, fstat, (int file, struct stat* status), (file, status))
FAILING(int, stat, (const char* path, struct stat* status), (path, status))
FAILING(int, mkdir, (const char* path, mode_t mode), (path, mode))
FAILING(ssize_t, pread, (int file, void* into, size_t size, off_t at), (file, into, size, at))
FAILING(ssize_t, write, (int file, const void* from, size_t size), (file, from, size))
FAILING_BEHIND(int, close, (int file), (file))
FAILING_BEHIND(pid_t, waitpid, (pid_t process, int* status, int options),
               (process, status, options))

/// Returns its error instead of setting errno.
using Spawn = int(pid_t*, const char*, const posix_spawn_file_actions_t*, const posix_spawnattr_t*,
                  char* const*, char* const*);
extern "C" Spawn __real_posix_spawnp;
extern "C" int __wrap_posix_spawnp(pid_t* process, const char* program,
                                   const posix_spawn_file_actions_t* actions,
                                   const posix_spawnattr_t* attributes, char* const* arguments,
                                   char* const* environment) {
  if (Fails()) return EAGAIN;
  return __real_posix_spawnp(process, program, actions, attributes, arguments, environment);
}

namespace vintrace::test {
namespace {

namespace fs = std::filesystem;

const std::string Unreadable = "message: エラーが起こりましたので\n終了します";

/// The bytes of a file, read without the wrapped functions.
std::string BytesOf(const fs::path& path) {
  std::ifstream file(path);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::ptrdiff_t OpenFiles() {
  return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
}

/// Runs `story` with a failure of the first call, then of the second, and so on, and last without a
/// failure. `story` must make the `Fault` itself and leave no file open.
void ForEachFault(const std::function<void(int nth)>& story) {
  constexpr int Many = 1000;
  int nth = 0;
  do {
    SCOPED_TRACE(++nth);
    const auto before = OpenFiles();
    story(nth);
    EXPECT_EQ(OpenFiles(), before);
  } while (hasFailed && nth < Many);
  EXPECT_GT(nth, 3);
  EXPECT_LT(nth, Many);
}

class FaultTest : public testing::Test {
 protected:
  /// Starts the program with a document to open and `store` as its settings file.
  void Start(ScriptedHost& host, std::string_view store) const {
    fs::create_directories(folder.Path() / "data");
    folder.File("data/VNTR.ini", store);
    host.handedOver = {document};
    _Main();
  }

  static bool Told(const ScriptedHost& host, const std::string& line) {
    return std::ranges::any_of(host.story,
                               [&](const auto& each) { return each.starts_with(line); });
  }

  std::string Stored() const { return BytesOf(folder.Path() / "data/VNTR.ini"); }

  const TemporaryFolder folder;
  const Environment dataHome{"XDG_DATA_HOME", (folder.Path() / "data").c_str()};
  const FolderItem document = folder.File(
      "a.indd", DocumentBuilder(BodyStart + 500).Release(8).Saved(BodyStart, 1, "0.0.424").Bytes());
  const std::string bytes = BytesOf(document.NativePath());
};

TEST_F(FaultTest, ADocumentIsShownCorrectlyOrNotAtAllAndSettingsAreKept) {
  ForEachFault([&](int nth) {
    const Fault fault(nth);
    const std::string store = "/Applications/A.app\n";
    ScriptedHost host;
    Start(host, store);
    if (!Told(host, Unreadable)) {
      EXPECT_TRUE(host.Choose("clcopy"));
      EXPECT_EQ(host.clipboard, "a.indd\tAdobe InDesign CS6\tWindows Edition\t8.0.0.424");
    }
    const bool loaded = App::Instance().apploc == Lines{"/Applications/A.app"};
    EXPECT_TRUE(loaded || Told(host, "message: 予期しないエラー") || Told(host, "quit: 0"));
    EXPECT_EQ(Stored(), store);
    EXPECT_EQ(Told(host, Unreadable), Told(host, "quit: 0"));
  });
  EXPECT_EQ(BytesOf(document.NativePath()), bytes);
}

TEST_F(FaultTest, LocationsReadBeforeAnErrorStay) {
  constexpr std::size_t Many = 40'000;  // More than one read gets.
  std::string store;
  for (std::size_t line = 0; line < Many; ++line) store += "/A\n";
  bool partly = false;
  ForEachFault([&](int nth) {
    const Fault fault(nth);
    ScriptedHost host;
    Start(host, store);
    const auto loaded = App::Instance().apploc.size();
    EXPECT_LE(loaded, Many);
    partly = partly || (loaded > 0 && loaded < Many);
  });
  EXPECT_TRUE(partly);
}

TEST_F(FaultTest, ALaunchSucceedsOrShowsAMessageAndForgetsOnlyFailedPaths) {
  for (const bool known : {true, false}) {
    ForEachFault([&](int nth) {
      const TemporaryFolder applications;  // An earlier one may still be starting.
      const RecordingApplication application(applications.Item("Adobe InDesign CS6/app"));
      const std::string line = application.Item().ShellPath() + '\n';
      ScriptedHost host;
      host.choices = {application.Item()};
      Start(host, known ? line : "");
      host.story.clear();
      const auto window = std::dynamic_pointer_cast<Window1>(host.Windows().At(0));
      {
        const Fault fault(nth);
        window->PushButton3().RaiseAction();
      }
      const bool opened = host.Windows().Count() == 0;
      const bool told = Told(host, "message: ");
      EXPECT_NE(opened, told);
      if (opened) {
        EXPECT_EQ(application.AwaitStart(), Lines{document.NativePath()});
        EXPECT_TRUE(Stored() == line || Stored() == '\n' + line);
      }
      EXPECT_TRUE(Stored() == line || !known || told || Told(host, "open dialog: "));
    });
  }
}

TEST_F(FaultTest, ADownloadIsCompleteOrReportsFailure) {
  ForEachFault([&](int nth) {
    ScriptedNetwork network;
    network.peers = {{.replies = {{"HTTP/1.0 200 OK\r\n\r\npa", "ge"}}}};
    http::HTTPSecureSocket socket(network);
    const FolderItem file = folder.Item("page");
    const Fault fault(nth);
    const bool whole = socket.Get("https://a/", file, 5);
    EXPECT_EQ(whole, !hasFailed);
    EXPECT_TRUE(!whole || BytesOf(file.NativePath()) == "page");
  });
}

}  // namespace
}  // namespace vintrace::test
