// Starts of the program that find each other, on real sockets and in processes of their own.

#include "platform/InstanceChannel.h"

#include <gtest/gtest.h>
#include <poll.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <filesystem>
#include <thread>

#include "platform/posix/Deadline.h"
#include "platform/posix/HandOver.h"
#include "platform/posix/LocalSocket.h"
#include "platform/posix/StartMessage.h"
#include "support/Processes.h"
#include "support/TemporaryFolder.h"

namespace vintrace::test {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using Paths = std::vector<String>;
using Outcome = InstanceConnection::Outcome;

StartRequest RequestOf(const Paths& paths) {
  StartRequest request;
  for (const auto& path : paths) request.documents.emplace_back(path);
  return request;
}

Paths PathsOf(const StartRequest& request) {
  Paths paths;
  for (const auto& document : request.documents) paths.push_back(document.NativePath());
  return paths;
}

bool IsDropped(const Outcome& outcome) {
  return std::holds_alternative<InstanceConnection::Dropped>(outcome);
}

bool IsUnfinished(const Outcome& outcome) {
  return std::holds_alternative<InstanceConnection::Unfinished>(outcome);
}

bool Readable(int descriptor, std::chrono::milliseconds within) {
  pollfd watched{descriptor, POLLIN, 0};
  return poll(&watched, 1, static_cast<int>(within.count())) > 0;
}

/// What the next start brings; unfinished when none comes within `wait`, or it doesn't say all.
Outcome Serve(InstanceSeat& seat, std::chrono::milliseconds wait = 5s) {
  Outcome outcome = InstanceConnection::Unfinished{};
  auto connection = Readable(seat.Descriptor(), wait) ? seat.Accept() : std::nullopt;
  while (connection && Readable(connection->Descriptor(), wait) &&
         IsUnfinished(outcome = connection->Read())) {
  }
  return outcome;
}

/// The documents that the next start brings; none when it is dropped.
Paths Served(InstanceSeat& seat) {
  const Outcome outcome = Serve(seat);
  const auto* request = std::get_if<StartRequest>(&outcome);
  return request == nullptr ? Paths() : PathsOf(*request);
}

class InstanceChannelTest : public testing::Test {
 protected:
  /// The seat of a start without documents, which listens.
  InstanceSeat First() const {
    auto seat = InstanceSeat::Take({}, place);
    seat.value().Listen();
    EXPECT_GE(seat->Descriptor(), 0);
    return *std::move(seat);
  }

  /// True when a start with a document of that path reaches `seat`.
  bool Reaches(InstanceSeat& seat, const String& path) const {
    Child start([&] { return InstanceSeat::Take(RequestOf({path}), place) ? 1 : 0; });
    const bool served = Served(seat) == Paths{path};
    return start.Join() == 0 && served;
  }

  /// A socket that is connected to the seat; none when there is no room for it.
  posix::Descriptor Peer() const {
    posix::Descriptor socket = posix::NewSocket();
    const bool connected = posix::ConnectTo(socket.Number(), *posix::SocketAddress(SocketPath()));
    return connected ? std::move(socket) : posix::Descriptor();
  }

  String SocketPath() const { return place.folder + '/' + place.name; }

  const TemporaryFolder folder;
  ChannelPlace place{folder.Path().native(), "vintrace-:0", 5s};
};

TEST_F(InstanceChannelTest, ARequestArrivesByteForByteHoweverItIsCut) {
  const Paths paths{"/\xFF\xFE\n\r\t.indd", "/日本語 .indd"};
  const String message = posix::EncodeStartMessage(RequestOf(paths)).value();
  InstanceSeat seat = First();
  for (std::size_t cut = 0; cut <= message.size(); ++cut) {
    const posix::Descriptor peer = Peer();
    auto connection = seat.Accept().value();
    posix::Send(peer.Number(), message.substr(0, cut));
    ASSERT_TRUE(IsUnfinished(connection.Read())) << cut;
    posix::Send(peer.Number(), message.substr(cut));
    shutdown(peer.Number(), SHUT_WR);
    const Outcome outcome = connection.Read();
    ASSERT_TRUE(std::holds_alternative<StartRequest>(outcome)) << cut;
    EXPECT_EQ(PathsOf(std::get<StartRequest>(outcome)), paths);
    char answer = 0;
    EXPECT_EQ(posix::Receive(peer.Number(), &answer, 1), 1);
  }
}

TEST_F(InstanceChannelTest, WhatIsNoRequestIsDroppedWithoutAnAnswer) {
  const String message = posix::EncodeStartMessage(RequestOf({"/a"})).value();
  InstanceSeat seat = First();
  for (const auto& bytes : {String(), String("GET / HTTP/1.1\r\n\r\n"), message + '\0',
                            message.substr(0, message.size() - 1)}) {
    const posix::Descriptor peer = Peer();
    posix::Send(peer.Number(), bytes);
    shutdown(peer.Number(), SHUT_WR);
    EXPECT_TRUE(IsDropped(seat.Accept().value().Read())) << bytes;
    char answer = 0;
    EXPECT_LE(posix::Receive(peer.Number(), &answer, 1), 0) << bytes;
  }
}

TEST_F(InstanceChannelTest, APeerThatNeverEndsIsDroppedAtTheBound) {
  InstanceSeat seat = First();
  const posix::Descriptor peer = Peer();
  auto connection = seat.Accept().value();
  String bytes = posix::EncodeStartMessage({}).value().substr(0, 16) + String("\0\x80\0\0", 4);
  std::size_t sent = 0;
  while (IsUnfinished(connection.Read()) && sent < (64U << 20)) {
    const ssize_t count = posix::Send(peer.Number(), bytes);
    ASSERT_GT(count, 0);
    sent += static_cast<std::size_t>(count);
    bytes.assign(65536, 'x');
  }
  EXPECT_GT(sent, 8U << 20);
  EXPECT_LT(sent, 9U << 20);
}

TEST_F(InstanceChannelTest, ALargeRequestIsTakenAndOneThatIsTooLargeRunsOnItsOwn) {
  const Paths large(1000, "/" + String(4095, 'a'));
  Shared<std::atomic<bool>> ready;
  Child first([&] {
    InstanceSeat seat = First();
    *ready = true;
    return Served(seat) == large && IsDropped(Serve(seat)) ? 0 : 1;
  });
  while (!*ready) posix::Pause();
  EXPECT_FALSE(InstanceSeat::Take(RequestOf(large), place));
  auto own = InstanceSeat::Take(RequestOf(Paths(3000, large[0])), place);
  ASSERT_TRUE(own);
  own->Listen();
  EXPECT_EQ(own->Descriptor(), -1);
  EXPECT_EQ(first.Join(), 0);
}

TEST_F(InstanceChannelTest, ASeatThatIsGivenUpIsFreeAndSoIsOneWhoseProgramDied) {
  First();
  EXPECT_FALSE(fs::exists(SocketPath()));
  const auto dieListening = [&] {
    const InstanceSeat seat = First();
    _exit(7);
    return 0;
  };
  const auto dieStarting = [&] {
    const auto seat = InstanceSeat::Take({}, place);
    _exit(8);
    return 0;
  };
  EXPECT_EQ(Child(dieListening).Join(), 7);
  EXPECT_TRUE(fs::exists(SocketPath()));
  EXPECT_EQ(Child(dieStarting).Join(), 8);
  InstanceSeat seat = First();
  EXPECT_TRUE(Reaches(seat, "/a"));
}

TEST_F(InstanceChannelTest, AStartThatIsUnderWayIsWaitedForButNotForEver) {
  auto starting = InstanceSeat::Take({}, place);
  place.patience = 100ms;
  auto own = InstanceSeat::Take({}, place);
  ASSERT_TRUE(own);
  own->Listen();
  EXPECT_EQ(own->Descriptor(), -1);
  place.patience = 10s;
  Child waiting([&] { return InstanceSeat::Take(RequestOf({"/a"}), place) ? 1 : 0; });
  std::this_thread::sleep_for(50ms);
  starting->Listen();
  EXPECT_EQ(Served(*starting), Paths{"/a"});
  EXPECT_EQ(waiting.Join(), 0);
}

TEST_F(InstanceChannelTest, AStartThatIsHungUpOnBeginsAgain) {
  InstanceSeat seat = First();
  Child start([&] { return InstanceSeat::Take(RequestOf({"/a"}), place) ? 1 : 0; });
  EXPECT_TRUE(Readable(seat.Descriptor(), 5s) && seat.Accept());
  EXPECT_EQ(Served(seat), Paths{"/a"});
  EXPECT_EQ(start.Join(), 0);
}

TEST_F(InstanceChannelTest, OneThatHangsUpOnEveryStartIsLeftAlone) {
  InstanceSeat seat = First();
  place.silence = 100ms;
  Child first([&] {
    while (Readable(seat.Descriptor(), 1s)) seat.Accept();
    return 0;
  });
  auto own = InstanceSeat::Take(RequestOf({"/a"}), place);
  ASSERT_TRUE(own);
  own->Listen();
  EXPECT_EQ(own->Descriptor(), -1);
  EXPECT_EQ(first.Join(), 0) << "and the start hasn't gone on for ever";
}

TEST_F(InstanceChannelTest, AHungProgramIsReplacedWithinASecondAndTakesNothingWhenItWakes) {
  Shared<std::atomic<bool>> hangs;
  Shared<std::atomic<bool>> wakes;
  Child hung([&] {
    InstanceSeat seat = First();
    *hangs = true;
    while (!*wakes) posix::Pause();
    return IsDropped(Serve(seat)) ? 0 : 1;
  });
  while (!*hangs) posix::Pause();
  EXPECT_LE(ChannelPlace().silence, 900ms);
  place.silence = 400ms;
  Child late([&] {
    std::this_thread::sleep_for(100ms);
    return InstanceSeat::Take(RequestOf({"/late"}), place) ? 1 : 0;
  });
  const auto begin = std::chrono::steady_clock::now();
  auto seat = InstanceSeat::Take(RequestOf({"/a"}), place);
  EXPECT_LT(std::chrono::steady_clock::now() - begin, 1s);
  ASSERT_TRUE(seat);
  seat->Listen();
  EXPECT_EQ(Served(*seat), Paths{"/late"}) << "another one that waited has replaced this one";
  EXPECT_EQ(late.Join(), 0);
  *wakes = true;
  EXPECT_EQ(hung.Join(), 0);
  place.silence = 5s;
  EXPECT_TRUE(Reaches(*seat, "/b")) << "the one that woke up has removed the socket of another";
}

TEST_F(InstanceChannelTest, AHungProgramWithoutRoomForAnotherStartIsReplacedToo) {
  const InstanceSeat hung = First();
  std::vector<posix::Descriptor> peers;
  do peers.push_back(Peer());
  while (peers.back());
  place.silence = 200ms;
  auto seat = InstanceSeat::Take({}, place);
  ASSERT_TRUE(seat);
  seat->Listen();
  EXPECT_GE(seat->Descriptor(), 0);
}

TEST_F(InstanceChannelTest, OneThatReadsSlowlyIsNotWaitedForEither) {
  const auto message = posix::EncodeStartMessage(RequestOf(Paths(1000, String(4096, 'a'))));
  InstanceSeat seat = First();
  Child reader([&] {
    auto connection = Readable(seat.Descriptor(), 5s) ? seat.Accept() : std::nullopt;
    std::array<char, 16384> block{};
    while (Readable(connection->Descriptor(), 5s) &&
           posix::Receive(connection->Descriptor(), block.data(), block.size()) > 0) {
      std::this_thread::sleep_for(10ms);
    }
    return 0;
  });
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_EQ(posix::HandOver(*posix::SocketAddress(SocketPath()), message, 200ms),
            posix::Answer::Silent);
  EXPECT_LT(std::chrono::steady_clock::now() - begin, 1s);
}

// The answer comes at about the moment at which the start gives up.
TEST_F(InstanceChannelTest, BothSidesAgreeOnWhatIsTaken) {
  constexpr int Rounds = 200;
  const auto message = posix::EncodeStartMessage(RequestOf({"/a"}));
  Shared<std::atomic<bool>> ready;
  Child first([&] {
    InstanceSeat seat = First();
    *ready = true;
    int taken = 0;
    for (int i = 0; i < Rounds && Readable(seat.Descriptor(), 5s); ++i) {
      std::this_thread::sleep_for(std::chrono::microseconds(4500 + 5 * i));
      taken += std::holds_alternative<StartRequest>(Serve(seat)) ? 1 : 0;
    }
    return taken;
  });
  while (!*ready) posix::Pause();
  int taken = 0;
  for (int i = 0; i < Rounds; ++i) {
    const auto answer = posix::HandOver(*posix::SocketAddress(SocketPath()), message, 5ms);
    taken += answer == posix::Answer::Taken ? 1 : 0;
  }
  EXPECT_EQ(first.Join(), taken);
}

constexpr int Starts = 10;

/// What the starts of one round have in common.
struct Round {
  std::atomic<bool> begun;
  std::atomic<int> firsts;
  std::array<std::atomic<int>, Starts> opened;

  bool IsOver() const {
    return std::ranges::all_of(opened, [](const auto& times) { return times > 0; });
  }
};

/// A whole program, which is started with the document of that index, and quits when it has taken
/// `limit` others.
int RunProgram(Round& round, const ChannelPlace& place, int index, int limit) {
  while (!round.begun) std::this_thread::yield();
  auto seat = InstanceSeat::Take(RequestOf({String(1, static_cast<char>('0' + index))}), place);
  if (!seat) return 0;
  ++round.firsts;
  ++round.opened[static_cast<std::size_t>(index)];
  std::this_thread::sleep_for(index % 2 == 0 ? 0ms : 5ms);
  seat->Listen();
  while (limit > 0 && !round.IsOver()) {
    const Outcome outcome = Serve(*seat, 10ms);
    const auto* request = std::get_if<StartRequest>(&outcome);
    if (request == nullptr) continue;
    --limit;
    const char name = request->documents.at(0).NativePath().at(0);
    ++round.opened[static_cast<std::size_t>(name - '0')];
  }
  return seat->Descriptor() < 0 ? 1 : 0;
}

TEST_F(InstanceChannelTest, OfManyStartsAtOnceOneIsFirstAndEveryDocumentOpensOnce) {
  for (int i = 0; i < 24; ++i) {
    const int limit = i % 3 == 0 ? i / 6 : Starts;
    SCOPED_TRACE(limit);
    Shared<Round> round;
    std::vector<Child> programs;
    programs.reserve(Starts);
    for (int index = 0; index < Starts; ++index) {
      programs.emplace_back([&] { return RunProgram(*round, place, index, limit); });
    }
    round->begun = true;
    for (auto& program : programs) EXPECT_EQ(program.Join(), 0);
    for (const auto& times : round->opened) EXPECT_EQ(times, 1);
    EXPECT_EQ(round->firsts, (Starts + limit) / (limit + 1));
  }
}

TEST_F(InstanceChannelTest, AnotherUsersStartIsNotHeard) {
  if (geteuid() != 0) GTEST_SKIP() << "only a superuser can act as another user";
  InstanceSeat seat = First();
  fs::permissions(folder.Path(), fs::perms::all);
  fs::permissions(SocketPath(), fs::perms::all);
  Child stranger([&] {
    static_cast<void>(setuid(65534));
    const posix::Descriptor peer = Peer();
    char answer = 0;
    return peer && Readable(peer.Number(), 5s) && posix::Receive(peer.Number(), &answer, 1) == 0;
  });
  ASSERT_TRUE(Readable(seat.Descriptor(), 5s));
  EXPECT_FALSE(seat.Accept());
  EXPECT_EQ(stranger.Join(), 1);
}

TEST_F(InstanceChannelTest, AnotherUsersProgramIsToldNothing) {
  if (geteuid() != 0) GTEST_SKIP() << "only a superuser can act as another user";
  Shared<std::atomic<bool>> ready;
  Child stranger([&] {
    const posix::Descriptor listener = posix::NewSocket();
    posix::BindTo(listener.Number(), *posix::SocketAddress(SocketPath()));
    static_cast<void>(setuid(65534));
    listen(listener.Number(), 1);
    *ready = true;
    if (!Readable(listener.Number(), 5s)) return 1;
    const posix::Descriptor peer = posix::AcceptFrom(listener.Number());
    char byte = 0;
    return Readable(peer.Number(), 5s) && posix::Receive(peer.Number(), &byte, 1) == 0 ? 0 : 2;
  });
  while (!*ready) posix::Pause();
  auto own = InstanceSeat::Take(RequestOf({"/a"}), place);
  EXPECT_EQ(stranger.Join(), 0);
  ASSERT_TRUE(own);
  own->Listen();
  EXPECT_EQ(own->Descriptor(), -1);
}

TEST_F(InstanceChannelTest, WhatTheSystemRefusesLeavesTheProgramOnItsOwn) {
  fs::create_directory(folder.Path() / "busy");
  fs::create_directory(folder.Path() / "locked.lock");
  folder.File("file", "");
  const ChannelPlace places[] = {
      {"", "a"},
      {folder.Path() / "missing", "a"},
      {folder.Path() / "file", "a"},
      {folder.Path().native(), "busy"},
      {folder.Path().native(), "locked"},
      {folder.Path().native(), String(100, 'a')},
  };
  for (const auto& refused : places) {
    auto seat = InstanceSeat::Take({}, refused);
    ASSERT_TRUE(seat) << refused.name;
    seat->Listen();
    EXPECT_EQ(seat->Descriptor(), -1) << refused.folder << ' ' << refused.name;
  }
}

}  // namespace
}  // namespace vintrace::test
