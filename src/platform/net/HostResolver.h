#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "platform/text/String.h"

namespace vintrace {

/// An asynchronous lookup of the addresses of a host. The program can end without waiting for it.
class HostResolver {
 public:
  /// Starts to look up `host`, an ASCII name or an address.
  explicit HostResolver(const String& host);
  HostResolver(const HostResolver&) = delete;
  HostResolver& operator=(const HostResolver&) = delete;
  ~HostResolver();

  /// The addresses in numeric form, in order of preference; empty if there are none. Nil during the
  /// lookup. Never blocks.
  std::optional<std::vector<String>> Addresses() const;

 private:
  struct Lookup;

  std::unique_ptr<Lookup> lookup_;
};

}  // namespace vintrace
