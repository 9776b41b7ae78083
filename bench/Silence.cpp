// A service that accepts connections and sends nothing. Prints its port; runs until killed.

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

int main() {
  const int listener = socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof(address);
  auto* generic = reinterpret_cast<sockaddr*>(&address);
  if (bind(listener, generic, size) != 0 || listen(listener, SOMAXCONN) != 0 ||
      getsockname(listener, generic, &size) != 0) {
    std::perror("silence");
    return EXIT_FAILURE;
  }
  std::printf("%d\n", ntohs(address.sin_port));
  std::fflush(stdout);
  pause();
}
