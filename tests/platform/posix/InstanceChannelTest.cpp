// Starts of the program that find each other, on real sockets and in processes of their own.

#include "platform/InstanceChannel.h"

#include <gtest/gtest.h>
#include <poll.h>

#include <thread>
#include <tuple>

#include "platform/posix/Deadline.h"
#include "platform/posix/HandOver.h"
#include "platform/posix/LocalSocket.h"
#include "platform/posix/StartMessage.h"
#include "support/AsOrdinaryUser.h"
#include "support/Processes.h"
#include "support/TemporaryFolder.h"

namespace vintrace::test {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using namespace std::string_literals;
using Paths = std::vector<String>;
using Outcome = InstanceConnection::Outcome;

StartRequest RequestOf(const Paths& paths) {
  StartRequest request;
  for (const auto& path : paths) request.documents.emplace_back(path);
  return request;
}

bool IsUnfinished(const Outcome& outcome) {
  return std::holds_alternative<InstanceConnection::Unfinished>(outcome);
}

bool Readable(int descriptor) {
  pollfd watched{descriptor, POLLIN, 0};
  return poll(&watched, 1, 5000) > 0;
}

/// True when the other end of `socket` has sent something.
bool IsTold(const posix::Descriptor& socket) {
  char byte = 0;
  return posix::Receive(socket.Number(), &byte, 1) > 0;
}

/// The documents that the next start brings; none when it brings no request, or doesn't come.
Paths Served(InstanceSeat& seat) {
  Outcome outcome;
  auto connection = Readable(seat.Descriptor()) ? seat.Accept() : std::nullopt;
  while (connection && Readable(connection->Descriptor()) && IsUnfinished(outcome)) {
    outcome = connection->Read();
  }
  Paths paths;
  if (const auto* request = std::get_if<StartRequest>(&outcome)) {
    for (const auto& document : request->documents) paths.push_back(document.NativePath());
  }
  return paths;
}

bool RunsOnItsOwn(std::optional<InstanceSeat> seat) {
  if (seat) seat->Listen();
  return seat && seat->Descriptor() < 0;
}

class InstanceChannelTest : public testing::Test {
 protected:
  std::optional<InstanceSeat> Take(const Paths& paths = {}) const {
    return InstanceSeat::Take(RequestOf(paths), place);
  }

  /// The seat of a start without documents, which listens.
  InstanceSeat First() const {
    auto seat = Take();
    seat.value().Listen();
    return *std::move(seat);
  }

  /// True when a start with these documents reaches `seat`.
  bool Reaches(InstanceSeat& seat, const Paths& paths) const {
    Child start([&] { return Take(paths) ? 1 : 0; });
    const bool served = Served(seat) == paths;
    return start.Join() == 0 && served;
  }

  /// A socket that is connected to the seat; none when there is no room for it.
  posix::Descriptor Peer() const {
    posix::Descriptor socket = posix::NewSocket();
    return posix::ConnectTo(socket.Number(), Address()) ? std::move(socket) : posix::Descriptor();
  }

  String SocketPath() const { return place.folder + '/' + place.name; }
  sockaddr_un Address() const { return posix::SocketAddress(SocketPath()).value(); }

  const TemporaryFolder folder;
  ChannelPlace place{folder.Path().native(), "vintrace-:0", 5s};
};

// Behind 16 bytes of the mark stand the body's size and the number of documents, and then the
// texts, each behind its size.
TEST_F(InstanceChannelTest, ARequestIsTakenWithEveryByteAndWhatIsNoneDroppedWithoutAnAnswer) {
  StartRequest request = RequestOf({"/\xFF\n\xE3"});
  request.activationToken = "t";
  const String good = posix::EncodeStartMessage(request).value();
  ASSERT_EQ(good.substr(16), "\0\0\0\x15\0\0\0\1\0\0\0\1t\0\0\0\0\0\0\0\4/\xFF\n\xE3"s);
  const auto with = [&](std::size_t at, char byte) {
    String bytes = good;
    bytes[at] = byte;
    return bytes;
  };
  const std::tuple<const char*, String, bool> rows[] = {
      {"the request", good, false},
      {"all but its last byte", good.substr(0, good.size() - 1), false},
      {"another mark", with(15, '2').substr(0, 16), true},
      {"a body of 16 MiB and more", with(16, '\1').substr(0, 20), true},
      {"bytes behind the end", good + '\0', true},
      {"four billion documents", with(20, '\xFF'), false},
      {"a text that is longer than the rest", with(36, '\5'), false},
      {"a zero byte in a path", with(38, '\0'), false},
      {"a path from an unknown folder", with(37, 'a'), false},
  };
  InstanceSeat seat = First();
  for (const auto& [what, bytes, droppedAtOnce] : rows) {
    const posix::Descriptor peer = Peer();
    auto connection = seat.Accept().value();
    posix::Send(peer.Number(), bytes.substr(0, 7));
    EXPECT_TRUE(IsUnfinished(connection.Read())) << what;
    posix::Send(peer.Number(), bytes.substr(7));
    Outcome outcome = connection.Read();
    EXPECT_EQ(IsUnfinished(outcome), !droppedAtOnce) << what;
    shutdown(peer.Number(), SHUT_WR);
    if (!droppedAtOnce) outcome = connection.Read();
    const auto* taken = std::get_if<StartRequest>(&outcome);
    EXPECT_EQ(taken != nullptr ? posix::EncodeStartMessage(*taken) : "", bytes == good ? good : "");
    EXPECT_EQ(IsTold(peer), bytes == good) << what;
  }
}

TEST_F(InstanceChannelTest, TheLargestRequestsAreTakenAndLargerOnesRunOnTheirOwn) {
  const String longest(256 << 10, '/');
  InstanceSeat seat = First();
  EXPECT_TRUE(Reaches(seat, Paths(31, longest)));
  EXPECT_TRUE(Reaches(seat, Paths(65536, "/a")));
  for (const auto& larger :
       {Paths(32, longest), Paths(65537, "/a"), Paths{longest + 'a'}, Paths{"a"}}) {
    EXPECT_TRUE(RunsOnItsOwn(Take(larger))) << larger.size();
  }
}

TEST_F(InstanceChannelTest, NeitherOneThatIsStartingNorOneThatHangsUpIsWaitedForForEver) {
  auto other = Take();
  place.patience = 100ms;
  EXPECT_TRUE(RunsOnItsOwn(Take()));
  place.patience = 1h;
  place.silence = 100ms;
  other->Listen();
  const Child hangsUp([&] {
    while (Readable(other->Descriptor())) other->Accept();
    return 0;
  });
  EXPECT_TRUE(RunsOnItsOwn(Take({"/a"})));
}

TEST_F(InstanceChannelTest, AProgramThatHangsIsReplacedInASecondAndTakesNothingLater) {
  std::optional<InstanceSeat> hung = First();
  EXPECT_LE(ChannelPlace().silence, 900ms);
  place.silence = 200ms;
  const posix::Deadline bound(1s);
  const Paths moreThanASocketHolds(1000, String(4096, '/'));
  auto seat = Take(moreThanASocketHolds);
  EXPECT_FALSE(bound.HasPassed());
  seat.value().Listen();
  EXPECT_EQ(Served(*hung), Paths());
  hung.reset();
  place.silence = 5s;
  EXPECT_TRUE(Reaches(*seat, {"/b"})) << "the hung one has removed the socket of another";
}

TEST_F(InstanceChannelTest, AHungProgramWithoutRoomForAnotherStartIsReplacedToo) {
  const InstanceSeat hung = First();
  std::vector<posix::Descriptor> peers;
  do peers.push_back(Peer());
  while (peers.back());
  place.silence = 200ms;
  EXPECT_GE(First().Descriptor(), 0);
}

// The answer comes at about the moment at which the start gives up.
TEST_F(InstanceChannelTest, BothSidesAgreeOnWhatIsTaken) {
  constexpr int Rounds = 200;
  const auto message = posix::EncodeStartMessage(RequestOf({"/a"}));
  InstanceSeat seat = First();
  Child first([&] {
    int taken = 0;
    for (int i = 0; i < Rounds && Readable(seat.Descriptor()); ++i) {
      std::this_thread::sleep_for(std::chrono::microseconds(4500 + 5 * i));
      if (Served(seat) == Paths{"/a"}) ++taken;
    }
    return taken;
  });
  int taken = 0;
  for (int i = 0; i < Rounds; ++i) {
    if (posix::HandOver(Address(), message, 5ms) == posix::Answer::Taken) ++taken;
  }
  EXPECT_EQ(first.Join(), taken);
}

TEST_F(InstanceChannelTest, OfManyStartsAtOnceOneIsFirstAndEveryDocumentOpensOnce) {
  constexpr int Starts = 10;
  // Opens a document, which is a folder that isn't there before. True when it fails.
  const auto opensAgain = [&](const String& path) { return !fs::create_directory(path); };
  // A whole program, which quits when it has taken `limit` others, or dies then.
  const auto run = [&](int index, int limit) {
    const String document = folder.Item(Str(index)).NativePath();
    auto seat = Take({document});
    if (!seat) return 0;
    int failures = opensAgain(document);
    std::this_thread::sleep_for(index % 2 == 0 ? 0ms : 5ms);
    seat->Listen();
    for (const posix::Deadline end(10s); limit > 0 && !end.HasPassed();) {
      for (const auto& path : Served(*seat)) {
        failures += opensAgain(path);
        --limit;
      }
    }
    if (index % 3 == 0) _exit(limit + failures);
    return limit + failures;
  };
  for (const int limit : {9, 4, 1, 0, 1, 4, 9, 4, 1, 4, 1, 4, 1, 4, 1, 0}) {
    std::vector<Child> programs;
    programs.reserve(Starts);
    for (int index = 0; index < Starts; ++index) {
      programs.emplace_back([&] { return run(index, limit); });
    }
    for (auto& program : programs) EXPECT_EQ(program.Join(), 0) << limit;
    for (int index = 0; index < Starts; ++index) {
      EXPECT_TRUE(fs::remove(folder.Path() / Str(index))) << limit;
    }
  }
}

TEST_F(InstanceChannelTest, AnotherUsersStartIsNotHeardNorAnythingToldToAnotherUsersProgram) {
  if (geteuid() != 0) GTEST_SKIP() << "only a superuser can act as another user";
  const InstanceSeat seat = First();
  const posix::Descriptor start = Peer();
  fs::remove(SocketPath() + ".lock");
  fs::permissions(folder.Path(), fs::perms::all);
  fs::permissions(SocketPath(), fs::perms::all);
  const AsOrdinaryUser user;
  ASSERT_TRUE(start);
  EXPECT_FALSE(seat.Accept());
  EXPECT_TRUE(RunsOnItsOwn(Take({"/a"})));
  const posix::Descriptor own = posix::AcceptFrom(seat.Descriptor());
  ASSERT_TRUE(own);
  EXPECT_FALSE(IsTold(own));
}

TEST_F(InstanceChannelTest, WhatTheSystemRefusesLeavesTheProgramOnItsOwn) {
  for (const auto& name : {String("missing/a"), String(99, 'a')}) {
    place.name = name;
    EXPECT_TRUE(RunsOnItsOwn(Take())) << name;
  }
  EXPECT_TRUE(RunsOnItsOwn(InstanceSeat::Take({}, {"", "a"})));
}

}  // namespace
}  // namespace vintrace::test
