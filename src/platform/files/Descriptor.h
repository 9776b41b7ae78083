#pragma once

#include <utility>

namespace vintrace {

/// A file descriptor of the system, which closes itself and then ignores errors.
class Descriptor {
 public:
  static constexpr int None = -1;

  Descriptor() = default;
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(other.Release()) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor();

  int Number() const { return number_; }
  bool IsOpen() const { return number_ != None; }
  /// The number, which the caller closes from now on.
  int Release() { return std::exchange(number_, None); }

 private:
  int number_ = None;
};

}  // namespace vintrace
