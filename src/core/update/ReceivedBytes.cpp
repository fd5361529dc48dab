#include "core/update/ReceivedBytes.h"

// The kernel's own header: the library's knows less, and the two can't stand in one file.
#include <linux/tcp.h>
#include <netinet/in.h>
#include <sys/socket.h>

namespace orv::rws::core {

std::uint64_t CountReceivedBytes(int socket) {
  tcp_info info = {};
  socklen_t size = sizeof info;
  return getsockopt(socket, IPPROTO_TCP, TCP_INFO, &info, &size) == 0 ? info.tcpi_bytes_received
                                                                      : 0;
}

}  // namespace orv::rws::core
