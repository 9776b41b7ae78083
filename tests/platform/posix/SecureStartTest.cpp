#include "platform/posix/SecureStart.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <vector>

namespace vintrace::test {
namespace {

/// The lowest descriptor that is free after the streams were secured, as an exit status.
[[noreturn]] void ExitWithTheNextDescriptor() {
  posix::SecureStart();
  _exit(open("/dev/null", O_RDONLY));
}

TEST(SecureStart, WhatIsClosedOfTheStreamsIsFilled) {
  const int free = dup(STDERR_FILENO);
  close(free);
  for (const auto& closed : {std::vector{0}, std::vector{2}, std::vector{0, 1, 2}}) {
    const auto secureWithout = [&closed = closed] {
      for (const int stream : closed) close(stream);
      ExitWithTheNextDescriptor();
    };
    EXPECT_EXIT(secureWithout(), testing::ExitedWithCode(free), "") << closed.size();
  }
}

TEST(SecureStart, AReaderThatGoesAwayIsNoSignal) {
  const auto raise = [] {
    posix::SecureStart();
    static_cast<void>(std::raise(SIGPIPE));
    _exit(0);
  };
  EXPECT_EXIT(raise(), testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace vintrace::test
