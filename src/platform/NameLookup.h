#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "platform/String.h"

namespace vintrace {

/// Looks up the addresses of a host, in a thread that nobody waits for, not even the end of the
/// program: a name server may take its time to be silent.
class NameLookup {
 public:
  using Done = std::function<void(std::vector<String> addresses)>;

  /// `host`: a name in ASCII, or an address. `done` is called once, from that thread or from here,
  /// with the addresses in figures, those to be tried first in front; empty: there are none.
  NameLookup(const String& host, Done done);
  NameLookup(const NameLookup&) = delete;
  NameLookup& operator=(const NameLookup&) = delete;
  /// `done` isn't called any more.
  ~NameLookup();

 private:
  struct Question;

  std::shared_ptr<Question> question_;
};

}  // namespace vintrace
