#pragma once

namespace vintrace::test {

/// While it lives, the `nth` operation, from 1 on, that the program asks of the system fails: on
/// files, processes and sockets alike. One object at a time.
class Fault {
 public:
  explicit Fault(int nth);
  Fault(const Fault&) = delete;
  Fault& operator=(const Fault&) = delete;
  ~Fault();

  /// The name of the operation that has failed; nil when there were fewer.
  static const char* Failed();
};

}  // namespace vintrace::test
