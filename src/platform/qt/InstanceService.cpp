#include "platform/qt/InstanceService.h"

#include <chrono>
#include <iterator>
#include <utility>
#include <variant>

namespace vintrace::qt {
namespace {

constexpr std::size_t MaximumPeers = 64;  // Further ones wait until they can be accepted.
// Shorter than a start waits to be heard, so that silent ones keep nobody out.
constexpr std::chrono::milliseconds Patience(400);
constexpr std::chrono::milliseconds Breath(100);

}  // namespace

InstanceService::Peer::Peer(InstanceConnection accepted)
    : connection(std::move(accepted)), readable(connection.Descriptor(), QSocketNotifier::Read) {
  patience.setSingleShot(true);
  patience.start(Patience);
}

InstanceService::InstanceService(InstanceSeat seat, std::function<void(StartRequest)> taken)
    : seat_(std::move(seat)), taken_(std::move(taken)) {
  seat_.Listen();
  if (seat_.Descriptor() < 0) return;
  arrival_.emplace(seat_.Descriptor(), QSocketNotifier::Read);
  QObject::connect(&*arrival_, &QSocketNotifier::activated, [this] { Accept(); });
  breath_.setSingleShot(true);
  QObject::connect(&breath_, &QTimer::timeout, [this] { HearArrivals(); });
}

InstanceService::~InstanceService() = default;

void InstanceService::Accept() {
  auto connection = seat_.Accept();
  if (!connection) return Breathe();
  const auto peer = peers_.emplace(peers_.end(), *std::move(connection));
  QObject::connect(&peer->readable, &QSocketNotifier::activated, [this, peer] { Serve(peer); });
  QObject::connect(&peer->patience, &QTimer::timeout, [this, peer] { Drop(peer); });
  HearArrivals();
}

// What can't be accepted, for want of descriptors, stays readable, and the loop would spin.
void InstanceService::Breathe() {
  breath_.start(Breath);
  HearArrivals();
}

void InstanceService::HearArrivals() {
  arrival_->setEnabled(peers_.size() < MaximumPeers && !breath_.isActive());
}

void InstanceService::Serve(Place peer) {
  auto outcome = peer->connection.Read();
  if (std::holds_alternative<InstanceConnection::Unfinished>(outcome)) return;
  Drop(peer);
  auto* request = std::get_if<StartRequest>(&outcome);
  if (request == nullptr) return;
  const auto taken = taken_;  // This object, and the function in it, may not outlive the call.
  taken(std::move(*request));
}

void InstanceService::Drop(Place peer) {
  peers_.erase(peer);
  HearArrivals();
}

}  // namespace vintrace::qt
