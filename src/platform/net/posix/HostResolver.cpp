// The asynchronous lookup of the GNU C library.

#include "platform/net/HostResolver.h"

#include <netdb.h>
#include <sys/socket.h>

#include <array>
#include <utility>

namespace vintrace {

struct HostResolver::Lookup {
  explicit Lookup(String name) : host(std::move(name)) {
    hints.ai_socktype = SOCK_STREAM;
    request.ar_name = host.c_str();
    request.ar_request = &hints;
    gaicb* list[] = {&request};
    isStarted = getaddrinfo_a(GAI_NOWAIT, list, 1, nullptr) == 0;
  }
  Lookup(const Lookup&) = delete;
  Lookup& operator=(const Lookup&) = delete;
  ~Lookup() {
    if (request.ar_result != nullptr) freeaddrinfo(request.ar_result);
  }

  bool IsOver() { return !isStarted || gai_error(&request) != EAI_INPROGRESS; }
  bool HasResult() { return isStarted && gai_error(&request) == 0; }

  /// Cancels `lookup`. One that the library still writes into is kept until it is over, or for ever
  /// if that is after the program's end.
  static void Abandon(std::unique_ptr<Lookup> lookup) {
    static auto& abandoned = *new std::vector<std::unique_ptr<Lookup>>;
    std::erase_if(abandoned, [](const auto& each) { return each->IsOver(); });
    gai_cancel(&lookup->request);
    if (!lookup->IsOver()) abandoned.push_back(std::move(lookup));
  }

  const String host;
  addrinfo hints{};
  gaicb request{};
  bool isStarted;
};

HostResolver::HostResolver(const String& host) : lookup_(std::make_unique<Lookup>(host)) {}

HostResolver::~HostResolver() { Lookup::Abandon(std::move(lookup_)); }

std::optional<std::vector<String>> HostResolver::Addresses() const {
  if (!lookup_->IsOver()) return std::nullopt;
  std::vector<String> addresses;
  if (!lookup_->HasResult()) return addresses;
  for (const addrinfo* entry = lookup_->request.ar_result; entry != nullptr;
       entry = entry->ai_next) {
    std::array<char, NI_MAXHOST> text{};
    const int error = getnameinfo(entry->ai_addr, entry->ai_addrlen, text.data(), text.size(),
                                  nullptr, 0, NI_NUMERICHOST);
    if (error == 0) addresses.emplace_back(text.data());
  }
  return addresses;
}

}  // namespace vintrace
