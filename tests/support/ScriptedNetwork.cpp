#include "support/ScriptedNetwork.h"

#include <algorithm>
#include <utility>

namespace vintrace::test {

class ScriptedNetwork::ScriptedConnection : public Connection {
 public:
  ScriptedConnection(ScriptedNetwork& network, std::function<void()> changed)
      : network_(network), changed_(std::move(changed)) {
    network_.connections_.push_back(this);
  }
  ScriptedConnection(const ScriptedConnection&) = delete;
  ScriptedConnection& operator=(const ScriptedConnection&) = delete;
  ~ScriptedConnection() override { std::erase(network_.connections_, this); }

  void Open(const String& host, std::int64_t port, const std::optional<String>& tlsName) override {
    network_.wire.push_back(host + ':' + Str(port) + (tlsName ? " tls " + *tlsName : ""));
    if (network_.peers.empty()) return End(SocketError::Refused);
    peer_ = network_.peers.front();
    network_.peers.pop_front();
    if (peer_.refuses != SocketError::None) return End(peer_.refuses);
    changes_.emplace_back(Change::Connected, "");
  }

  void StartTLS(const String& tlsName) override {
    network_.wire.push_back("tls " + tlsName);
    changes_ = {{Change::Connected, ""}};
  }

  void Write(std::string_view bytes) override {
    network_.wire.emplace_back(bytes);
    if (reply_ == peer_.replies.size()) return;
    for (const auto& piece : peer_.replies[reply_]) {
      changes_.emplace_back(Change::DataAvailable, piece);
    }
    if (++reply_ == peer_.replies.size() && peer_.ends) End(SocketError::Ended);
  }

  void Purge() override {}
  String Take() override { return std::exchange(taken_, {}); }

  std::optional<Change> Next() override {
    if (changes_.empty()) return std::nullopt;
    const auto [change, piece] = changes_.front();
    changes_.pop_front();
    taken_ += piece;
    return change;
  }

  SocketError Error() const override { return error_; }

  bool HasNews() const { return !changes_.empty(); }
  std::function<void()> Changed() const { return changed_; }

 private:
  void End(SocketError error) {
    error_ = error;
    changes_.emplace_back(Change::Ended, "");
  }

  ScriptedNetwork& network_;
  std::function<void()> changed_;
  Peer peer_;
  std::size_t reply_ = 0;
  std::deque<std::pair<Change, String>> changes_;  // With the received bytes.
  String taken_;
  SocketError error_ = SocketError::None;
};

std::unique_ptr<Connection> ScriptedNetwork::NewConnection(std::function<void()> changed) {
  return std::make_unique<ScriptedConnection>(*this, std::move(changed));
}

void ScriptedNetwork::RunEvents() {
  while (true) {
    const auto next = std::ranges::find_if(connections_, &ScriptedConnection::HasNews);
    if (next == connections_.end()) return;
    (*next)->Changed()();
  }
}

void ScriptedNetwork::WaitUntil(const std::function<bool()>& over) {
  for (; !over(); ++ticks) {
    if (whileWaiting) whileWaiting();
  }
}

}  // namespace vintrace::test
