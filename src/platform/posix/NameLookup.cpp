#include "platform/NameLookup.h"

#include <netdb.h>
#include <sys/socket.h>

#include <array>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

namespace vintrace {
namespace {

struct FreeAddresses {
  void operator()(addrinfo* list) const { freeaddrinfo(list); }
};

std::vector<String> AddressesOf(const String& host) {
  addrinfo hints{};
  hints.ai_socktype = SOCK_STREAM;
  addrinfo* list = nullptr;
  if (getaddrinfo(host.c_str(), nullptr, &hints, &list) != 0) return {};
  const std::unique_ptr<addrinfo, FreeAddresses> owned(list);
  std::vector<String> addresses;
  for (const addrinfo* entry = list; entry != nullptr; entry = entry->ai_next) {
    std::array<char, NI_MAXHOST> text;
    const int error = getnameinfo(entry->ai_addr, entry->ai_addrlen, text.data(), text.size(),
                                  nullptr, 0, NI_NUMERICHOST);
    if (error == 0) addresses.emplace_back(text.data());
  }
  return addresses;
}

}  // namespace

struct NameLookup::Question {
  std::mutex mutex;
  Done done;

  void Answer(std::vector<String> addresses) {
    const std::lock_guard lock(mutex);
    if (done) std::exchange(done, nullptr)(std::move(addresses));
  }
};

NameLookup::NameLookup(const String& host, Done done) : question_(std::make_shared<Question>()) {
  question_->done = std::move(done);
  try {
    std::thread([question = question_, host] { question->Answer(AddressesOf(host)); }).detach();
  } catch (const std::system_error&) {
    question_->Answer({});  // There is no thread to be had.
  }
}

NameLookup::~NameLookup() {
  const std::lock_guard lock(question_->mutex);
  question_->done = nullptr;
}

}  // namespace vintrace
