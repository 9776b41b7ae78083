#include "platform/qt/InstanceService.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTest>

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

  const test::TemporaryFolder folder;
  ChannelPlace place{folder.Path().native(), "vintrace-:0", 5s};
  int argc_ = 1;
  char name_[9] = "vintrace";
  char* argv_[2] = {name_, nullptr};
  QCoreApplication application_{argc_, argv_};
  std::optional<InstanceService> service;
};

TEST_F(InstanceServiceTest, HandsOverAndMayGoMeanwhile) {
  const auto take = [this, path = String("/a")](const StartRequest& request) {
    service.reset();
    EXPECT_EQ(request.documents.at(0).NativePath(), path) << "what the function holds stays";
  };
  service.emplace(InstanceSeat::Take({}, place).value(), take);
  const auto silent = SilentStart();
  auto start = Start("/a");
  EXPECT_TRUE(QTest::qWaitFor([&] { return !service; }));
  EXPECT_EQ(start.Join(), 0);
  EXPECT_TRUE(HungUp(silent));
}

TEST_F(InstanceServiceTest, StartsThatSayNothingGoAfterAWhileAndKeepNobodyOut) {
  QEventLoop loop;
  service.emplace(InstanceSeat::Take({}, place).value(), [&](const auto&) { loop.quit(); });
  QElapsedTimer time;
  time.start();
  std::vector<posix::Descriptor> silent;
  silent.reserve(100);
  for (int i = 0; i < 100; ++i) silent.push_back(SilentStart());
  place.silence = ChannelPlace().silence;
  auto start = Start("/a");
  QTimer::singleShot(5s, &loop, &QEventLoop::quit);
  loop.exec();
  EXPECT_EQ(start.Join(), 0);
  EXPECT_TRUE(HungUp(silent[0]));
  EXPECT_GE(time.elapsed(), 350) << "silent ones have been given no time to speak";
}

}  // namespace
}  // namespace vintrace::qt
