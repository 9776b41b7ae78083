#pragma once

#include <unistd.h>

#include <utility>

namespace vintrace::posix {

/// An open file of the system, which closes itself.
class Descriptor {
 public:
  static constexpr int None = -1;

  Descriptor() = default;
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, None)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (number_ >= 0) close(number_);
  }

  int Number() const { return number_; }
  explicit operator bool() const { return number_ >= 0; }

 private:
  int number_ = None;
};

}  // namespace vintrace::posix
