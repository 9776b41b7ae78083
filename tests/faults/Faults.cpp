// The linker has the program's own calls of these functions come here (--wrap).

#include "faults/Faults.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
namespace vintrace::test {
namespace {

std::atomic<int> untilFault = 0;
std::atomic<const char*> failed = nullptr;

/// True for the one call that is to fail.
bool Fails(const char* name) {
  if (--untilFault != 0) return false;
  failed = name;
  errno = EIO;
  return true;
}

}  // namespace

Fault::Fault(int nth) {
  failed = nullptr;
  untilFault = nth;
}
Fault::~Fault() { untilFault = 0; }

const char* Fault::Failed() { return failed; }

}  // namespace vintrace::test

using vintrace::test::Fails;

// NOLINTBEGIN(cppcoreguidelines-macro-usage,bugprone-macro-parentheses)

/// A function that fails without having done anything.
#define FAILING(Result, name, parameters, arguments)            \
  extern "C" Result __real_##name parameters;                   \
  extern "C" Result __wrap_##name parameters {                  \
    return Fails(#name) ? Result(-1) : __real_##name arguments; \
  }

/// One whose work is done all the same, as nothing would be left to do it.
#define FAILING_BEHIND(Result, name, parameters, arguments) \
  extern "C" Result __real_##name parameters;               \
  extern "C" Result __wrap_##name parameters {              \
    const Result result = __real_##name arguments;          \
    return Fails(#name) ? Result(-1) : result;              \
  }

// NOLINTEND(cppcoreguidelines-macro-usage,bugprone-macro-parentheses)

// The mode is in its register when there is one.
FAILING(int, open, (const char* path, int flags, mode_t mode), (path, flags, mode))
FAILING(int, fstat, (int file, struct stat* status), (file, status))
FAILING(int, stat, (const char* path, struct stat* status), (path, status))
FAILING(int, lstat, (const char* path, struct stat* status), (path, status))
FAILING(int, mkdir, (const char* path, mode_t mode), (path, mode))
FAILING(int, unlink, (const char* path), (path))
FAILING(ssize_t, pread, (int file, void* into, size_t size, off_t at), (file, into, size, at))
FAILING(ssize_t, write, (int file, const void* from, size_t size), (file, from, size))
FAILING_BEHIND(int, close, (int file), (file))
FAILING(int, flock, (int file, int operation), (file, operation))
FAILING_BEHIND(pid_t, waitpid, (pid_t process, int* status, int options),
               (process, status, options))
FAILING(int, socket, (int domain, int type, int protocol), (domain, type, protocol))
FAILING(int, bind, (int file, const sockaddr* address, socklen_t size), (file, address, size))
FAILING(int, listen, (int file, int backlog), (file, backlog))
FAILING(int, accept4, (int file, sockaddr* address, socklen_t* size, int flags),
        (file, address, size, flags))
FAILING(int, connect, (int file, const sockaddr* address, socklen_t size), (file, address, size))
FAILING(int, getsockopt, (int file, int level, int name, void* value, socklen_t* size),
        (file, level, name, value, size))
FAILING(ssize_t, send, (int file, const void* from, size_t size, int flags),
        (file, from, size, flags))
FAILING(ssize_t, recv, (int file, void* into, size_t size, int flags), (file, into, size, flags))
FAILING(int, poll, (pollfd * files, nfds_t count, int timeout), (files, count, timeout))

extern "C" int __real_posix_spawnp(pid_t* process, const char* program,
                                   const posix_spawn_file_actions_t* actions,
                                   const posix_spawnattr_t* attributes, char* const* arguments,
                                   char* const* environment);
extern "C" int __wrap_posix_spawnp(pid_t* process, const char* program,
                                   const posix_spawn_file_actions_t* actions,
                                   const posix_spawnattr_t* attributes, char* const* arguments,
                                   char* const* environment) {
  if (Fails("posix_spawnp")) return EAGAIN;
  return __real_posix_spawnp(process, program, actions, attributes, arguments, environment);
}
