#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <utility>

namespace vintrace::test {

/// A process of its own. Its exit status is what `body` returns.
class Child {
 public:
  template <class Body>
  explicit Child(Body body) : id_(fork()) {
    if (id_ == 0) _exit(body());
  }
  Child(Child&& other) noexcept : id_(std::exchange(other.id_, 0)) {}
  Child& operator=(Child&&) = delete;
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;
  ~Child() {
    if (id_ <= 0) return;
    kill(id_, SIGKILL);
    waitpid(id_, nullptr, 0);
  }

  /// Waits for its end: the exit status, or -1 when it has none.
  int Join() {
    int status = 0;
    waitpid(std::exchange(id_, 0), &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

 private:
  pid_t id_;
};

}  // namespace vintrace::test
