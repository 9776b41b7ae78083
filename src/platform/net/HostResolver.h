#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "platform/text/String.h"

namespace vintrace {

/// One lookup of the addresses of a host, which goes on beside the program. The end of the program
/// does not wait for it.
class HostResolver {
 public:
  /// Starts to look up `host`, an ASCII name or an address.
  explicit HostResolver(const String& host);
  HostResolver(const HostResolver&) = delete;
  HostResolver& operator=(const HostResolver&) = delete;
  ~HostResolver();

  /// The addresses in numeric form, in order of preference; empty if there are none. Nil while the
  /// lookup goes on. Never blocks.
  std::optional<std::vector<String>> Addresses() const;

 private:
  struct Lookup;

  std::unique_ptr<Lookup> lookup_;
};

}  // namespace vintrace
