#pragma once

#include <unistd.h>

#include <stdexcept>

namespace vintrace::test {

/// While it lives, a superuser, whom no permission stops, acts as somebody else.
class AsOrdinaryUser {
 public:
  AsOrdinaryUser() { Become(user_ == Superuser ? Nobody : user_); }
  AsOrdinaryUser(const AsOrdinaryUser&) = delete;
  AsOrdinaryUser& operator=(const AsOrdinaryUser&) = delete;
  ~AsOrdinaryUser() { static_cast<void>(seteuid(user_)); }

 private:
  static constexpr uid_t Superuser = 0;
  static constexpr uid_t Nobody = 65534;

  static void Become(uid_t user) {
    if (seteuid(user) != 0) throw std::runtime_error("can't act as another user");
  }

  const uid_t user_ = geteuid();
};

}  // namespace vintrace::test
