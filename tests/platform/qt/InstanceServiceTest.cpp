#include "platform/qt/InstanceService.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QTest>
#include <ctime>

#include "platform/posix/LocalSocket.h"
#include "support/Processes.h"
#include "support/TemporaryFolder.h"

namespace vintrace::qt {
namespace {

using namespace std::chrono_literals;

class InstanceServiceTest : public testing::Test {
 protected:
  /// A start with one document. Its exit status is 0 when that was taken.
  test::Child Start(const String& path) const {
    return test::Child([&] {
      StartRequest request;
      request.documents.emplace_back(path);
      return InstanceSeat::Take(request, place) ? 1 : 0;
    });
  }

  /// A start that says nothing.
  posix::Descriptor SilentStart() const {
    posix::Descriptor socket = posix::NewSocket();
    const String path = place.folder + '/' + place.name;
    EXPECT_TRUE(posix::ConnectTo(socket.Number(), *posix::SocketAddress(path)));
    return socket;
  }

  static bool HungUp(const posix::Descriptor& socket) {
    char byte = 0;
    return posix::Receive(socket.Number(), &byte, 1) == 0;
  }

  /// Unlike the waits of QTest, without a pause between the events.
  static void RunFor(std::chrono::milliseconds time) {
    QEventLoop loop;
    QTimer::singleShot(time, &loop, &QEventLoop::quit);
    loop.exec();
  }

  const test::TemporaryFolder folder;
  ChannelPlace place{folder.Path().native(), "vintrace-:0", 5s};
  int argc_ = 1;
  char name_[9] = "vintrace";
  char* argv_[2] = {name_, nullptr};
  QCoreApplication application_{argc_, argv_};
  std::optional<InstanceService> service;
};

TEST_F(InstanceServiceTest, HandsOverAlsoFromALoopInsideAndMayGoMeanwhile) {
  std::vector<String> story;
  service.emplace(InstanceSeat::Take({}, place).value(), [this, &story](const auto& request) {
    const String path = request.documents.at(0).NativePath();
    story.push_back(path);
    if (path == "/a") {
      auto inner = Start("/b");
      EXPECT_TRUE(QTest::qWaitFor([&] { return story.size() == 3; }));
      EXPECT_EQ(inner.Join(), 0);
    } else {
      service.reset();
    }
    story.push_back("done " + path);  // What the function holds is still there.
  });
  const auto silent = SilentStart();
  auto start = Start("/a");
  EXPECT_TRUE(QTest::qWaitFor([&] { return story.size() == 4; }));
  EXPECT_EQ(story, (std::vector<String>{"/a", "/b", "done /b", "done /a"}));
  EXPECT_EQ(start.Join(), 0);
  EXPECT_TRUE(HungUp(silent));
}

TEST_F(InstanceServiceTest, StartsThatSayNothingGoAfterAWhileAndKeepNobodyOut) {
  int taken = 0;
  service.emplace(InstanceSeat::Take({}, place).value(), [&](const auto&) { ++taken; });
  std::vector<posix::Descriptor> silent;
  silent.reserve(100);
  for (int i = 0; i < 100; ++i) silent.push_back(SilentStart());
  place.silence = ChannelPlace().silence;
  auto start = Start("/a");
  RunFor(200ms);
  EXPECT_FALSE(HungUp(silent[0]));
  EXPECT_EQ(taken, 0);
  EXPECT_TRUE(QTest::qWaitFor([&] { return HungUp(silent[0]); }));
  EXPECT_TRUE(QTest::qWaitFor([&] { return taken == 1; }));
  EXPECT_EQ(start.Join(), 0);
  EXPECT_TRUE(QTest::qWaitFor([&] { return HungUp(silent[99]); }));
}

// A descriptor that is readable, and from which nothing can be accepted, stands for the system that
// has no more of them to give.
TEST_F(InstanceServiceTest, AStartThatCannotBeAcceptedYetKeepsNobodyBusy) {
  auto seat = InstanceSeat::Take({}, place);
  const int listener = posix::NewSocket().Number();  // The number that comes next.
  int taken = 0;
  service.emplace(*std::move(seat), [&](const StartRequest&) { ++taken; });
  auto start = Start("/a");
  const posix::Descriptor kept(dup(listener));
  const posix::Descriptor readable(open("/dev/null", O_RDONLY));
  dup2(readable.Number(), listener);
  const std::clock_t begin = std::clock();
  RunFor(400ms);
  EXPECT_LT(std::clock() - begin, CLOCKS_PER_SEC / 5);
  dup2(kept.Number(), listener);
  EXPECT_TRUE(QTest::qWaitFor([&] { return taken == 1; }));
  EXPECT_EQ(start.Join(), 0);
}

}  // namespace
}  // namespace vintrace::qt
