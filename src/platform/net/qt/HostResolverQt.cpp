// For systems without the asynchronous lookup of the GNU C library.

#include <QHostInfo>
#include <QObject>

#include "platform/net/HostResolver.h"

namespace vintrace {

struct HostResolver::Lookup {
  QObject context;  // Cancels the callback when it is destroyed.
  std::optional<std::vector<String>> addresses;
};

HostResolver::HostResolver(const String& host) : lookup_(std::make_unique<Lookup>()) {
  const auto done = [lookup = lookup_.get()](const QHostInfo& info) {
    auto& addresses = lookup->addresses.emplace();
    for (const auto& address : info.addresses()) {
      addresses.push_back(address.toString().toStdString());
    }
  };
  QHostInfo::lookupHost(QString::fromStdString(host), &lookup_->context, done);
}

HostResolver::~HostResolver() = default;

std::optional<std::vector<String>> HostResolver::Addresses() const { return lookup_->addresses; }

}  // namespace vintrace
