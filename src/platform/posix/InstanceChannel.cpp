#include "platform/InstanceChannel.h"

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <utility>

#include "platform/posix/Deadline.h"
#include "platform/posix/FileLock.h"
#include "platform/posix/HandOver.h"
#include "platform/posix/LocalSocket.h"
#include "platform/posix/StartMessage.h"

namespace vintrace {
namespace {

constexpr int Backlog = 128;

/// What tells a socket from the next one at the same path.
struct Identity {
  dev_t device;
  ino_t number;
  time_t changed;  // A number is given again once its file is gone.

  bool operator==(const Identity&) const = default;
};

/// Nothing when nothing is there.
std::optional<Identity> IdentityOf(const String& path) {
  struct stat status {};
  if (lstat(path.c_str(), &status) != 0) return std::nullopt;
  return Identity{status.st_dev, status.st_ino, status.st_ctime};
}

/// The files of the channel.
struct Channel {
  String path;
  sockaddr_un address;

  String LockPath() const { return path + ".lock"; }
};

std::optional<Channel> ChannelAt(const ChannelPlace& place) {
  const String path = place.folder + '/' + place.name;
  const auto address = posix::SocketAddress(path);
  if (place.folder.empty() || !address) return std::nullopt;
  return Channel{path, *address};
}

using posix::Answer;

/// True when the place is free: it is locked now, and what was left there is gone. `answer` is what
/// `seen`, which was there then, has given.
bool Occupy(const Channel& channel, Answer answer, const std::optional<Identity>& seen,
            posix::FileLock& lock) {
  if (answer == Answer::Closed || !lock.TryLock()) return false;
  // Another start may have had the lock since, and the place may be its.
  const bool isFree = answer == Answer::Nobody ? posix::NobodyListens(channel.address)
                                               : IdentityOf(channel.path) == seen;
  if (isFree) {
    unlink(channel.path.c_str());
  } else {
    lock.Unlock();
  }
  return isFree;
}

}  // namespace

struct InstanceSeat::State {
  State(Channel ownChannel, posix::FileLock lock)
      : channel(std::move(ownChannel)), startLock(std::move(lock)) {}
  State(const State&) = delete;
  State& operator=(const State&) = delete;
  ~State();

  void Listen();

  Channel channel;
  std::optional<posix::FileLock> startLock;  // Until it listens.
  posix::Descriptor listener;
  std::optional<Identity> identity;  // Of the socket that it has made.
};

// The lock keeps the socket from being replaced in between. One who has it is about to take the
// place, and clears up what is left there.
InstanceSeat::State::~State() {
  if (!identity) return;
  posix::FileLock lock(channel.LockPath());
  if (lock.TryLock() && IdentityOf(channel.path) == identity) unlink(channel.path.c_str());
}

void InstanceSeat::State::Listen() {
  posix::Descriptor socket = posix::NewSocket();
  if (socket && posix::BindTo(socket.Number(), channel.address)) {
    identity = IdentityOf(channel.path);
    if (listen(socket.Number(), Backlog) == 0) listener = std::move(socket);
  }
  startLock.reset();
}

std::optional<InstanceSeat> InstanceSeat::Take(const StartRequest& request,
                                               const ChannelPlace& place) {
  const auto channel = ChannelAt(place);
  if (!channel) return InstanceSeat(nullptr);
  const auto message = posix::EncodeStartMessage(request);
  posix::FileLock lock(channel->LockPath());
  posix::Deadline hangUps(place.silence);  // For as long as each answer is one.
  for (const posix::Deadline deadline(place.patience); !deadline.HasPassed(); posix::Pause()) {
    const auto seen = IdentityOf(channel->path);
    const Answer answer = posix::HandOver(channel->address, message, place.silence);
    if (answer == Answer::Taken) return std::nullopt;
    if (answer == Answer::Impossible || !lock.Works()) break;
    if (answer != Answer::Closed) hangUps = posix::Deadline(place.silence);
    if (hangUps.HasPassed()) break;  // It doesn't quit: it doesn't know our language.
    if (Occupy(*channel, answer, seen, lock)) {
      return InstanceSeat(std::make_unique<State>(*channel, std::move(lock)));
    }
  }
  return InstanceSeat(nullptr);
}

InstanceSeat::InstanceSeat(std::unique_ptr<State> state) : state_(std::move(state)) {}
InstanceSeat::InstanceSeat(InstanceSeat&& other) noexcept = default;
InstanceSeat& InstanceSeat::operator=(InstanceSeat&& other) noexcept = default;
InstanceSeat::~InstanceSeat() = default;

void InstanceSeat::Listen() {
  if (state_) state_->Listen();
}

int InstanceSeat::Descriptor() const {
  return state_ ? state_->listener.Number() : posix::Descriptor::None;
}

struct InstanceConnection::State {
  explicit State(posix::Descriptor accepted) : socket(std::move(accepted)) {}

  /// What has come, now that the other end has sent all.
  Outcome Finish() const;

  posix::Descriptor socket;
  String bytes;
};

std::optional<InstanceConnection> InstanceSeat::Accept() const {
  posix::Descriptor socket = posix::AcceptFrom(Descriptor());
  if (!socket || !posix::PeerIsThisUser(socket.Number())) return std::nullopt;
  return InstanceConnection(std::make_unique<InstanceConnection::State>(std::move(socket)));
}

InstanceConnection::InstanceConnection(std::unique_ptr<State> state) : state_(std::move(state)) {}
InstanceConnection::InstanceConnection(InstanceConnection&& other) noexcept = default;
InstanceConnection& InstanceConnection::operator=(InstanceConnection&& other) noexcept = default;
InstanceConnection::~InstanceConnection() = default;

int InstanceConnection::Descriptor() const { return state_->socket.Number(); }

InstanceConnection::Outcome InstanceConnection::Read() {
  constexpr std::size_t BlockSize = 65536;
  std::array<char, BlockSize> block;  // NOLINT(cppcoreguidelines-pro-type-member-init): filled next
  for (;;) {
    const ssize_t got = posix::Receive(Descriptor(), block.data(), block.size());
    if (got == 0) return state_->Finish();
    if (got < 0) return errno == EAGAIN ? Outcome(Unfinished{}) : Outcome(Dropped{});
    state_->bytes.append(block.data(), static_cast<std::size_t>(got));
    if (!posix::MayBecomeStartMessage(state_->bytes)) return Dropped{};
  }
}

InstanceConnection::Outcome InstanceConnection::State::Finish() const {
  auto request = posix::DecodeStartMessage(bytes);
  // The answer fails when the start has given up waiting, and opens its documents itself.
  if (!request || posix::Send(socket.Number(), posix::TakenAnswer) < 1) return Dropped{};
  return *std::move(request);
}

}  // namespace vintrace
