#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <variant>
#include <vector>

#include "platform/FolderItem.h"
#include "platform/String.h"

namespace vintrace {

/// What a start of the program brings: its documents, and what the desktop gave it to come to the
/// front with.
struct StartRequest {
  std::vector<FolderItem> documents;
  String activationToken;  ///< XDG_ACTIVATION_TOKEN, for Wayland; empty: none.
  String startupId;        ///< DESKTOP_STARTUP_ID, for X11; empty: none.
};

/// The request of this process: every argument behind the program's own name is the path of a
/// document, absolute or relative to the working directory, raw bytes; none is an option. To be
/// called before anything takes the desktop's variables out of the environment.
StartRequest StartRequestOf(int argc, char* argv[]);

/// Where a user's programs on one display find each other, and how long they wait there.
struct ChannelPlace {
  String folder;  ///< Nobody but the user may enter it. Empty: there is no channel.
  String name;    ///< Of the socket in it; the lock file's has ".lock" behind it.
  std::chrono::milliseconds silence{900};  ///< After which a program that doesn't answer is hung.
  std::chrono::milliseconds patience{10'000};  ///< With programs that are starting or quitting.

  /// The place of this user and display, by the environment. Makes the folder if there is none.
  static ChannelPlace OfThisDesktop();
};

/// A start of the program that has reached the running one.
class InstanceConnection {
 public:
  struct Unfinished {};  ///< More is to come.
  struct Dropped {};     ///< It brought no request, or has gone: nothing is to be opened.
  using Outcome = std::variant<Unfinished, Dropped, StartRequest>;

  InstanceConnection(InstanceConnection&& other) noexcept;
  InstanceConnection& operator=(InstanceConnection&& other) noexcept;
  InstanceConnection(const InstanceConnection&) = delete;
  InstanceConnection& operator=(const InstanceConnection&) = delete;
  ~InstanceConnection();

  /// To be watched for readability.
  int Descriptor() const;

  /// Reads what is there, without waiting. A request that it returns has been answered: the start
  /// that brought it ends, and its documents are the caller's. After that, or `Dropped`, the
  /// connection has nothing more to give. One that is destroyed before begins again elsewhere.
  Outcome Read();

 private:
  friend class InstanceSeat;
  struct State;
  explicit InstanceConnection(std::unique_ptr<State> state);

  std::unique_ptr<State> state_;
};

/// The place of the one running program. It is given up, for the next start to take, when the
/// object is destroyed.
class InstanceSeat {
 public:
  /// The seat of this start; nothing when the running program has taken `request`, and this one is
  /// done. Returns within a second if a program runs or none does, hung or not; while another one
  /// starts, it waits. Never raises for what the system refuses: the seat then has no channel, and
  /// the program runs on its own.
  static std::optional<InstanceSeat> Take(const StartRequest& request, const ChannelPlace& place);

  InstanceSeat(InstanceSeat&& other) noexcept;
  InstanceSeat& operator=(InstanceSeat&& other) noexcept;
  InstanceSeat(const InstanceSeat&) = delete;
  InstanceSeat& operator=(const InstanceSeat&) = delete;
  ~InstanceSeat();

  /// The start is over: other starts, which waited for this, are heard from now on. To be called
  /// when the event loop is about to run, as one that isn't answered takes over.
  void Listen();

  /// To be watched for readability once it listens; -1: there is no channel.
  int Descriptor() const;

  /// The next start that has come; nothing when there is none, or it is another user's.
  std::optional<InstanceConnection> Accept() const;

 private:
  struct State;
  explicit InstanceSeat(std::unique_ptr<State> state);

  std::unique_ptr<State> state_;  // Nil: no channel.
};

}  // namespace vintrace
