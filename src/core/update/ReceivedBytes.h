// How much a connection has brought.
#pragma once

#include <cstdint>

namespace orv::rws::core {

/// Bytes that a TCP socket has received since its beginning, of whatever layer above it; 0 when
/// the system can't tell.
std::uint64_t CountReceivedBytes(int socket);

}  // namespace orv::rws::core
