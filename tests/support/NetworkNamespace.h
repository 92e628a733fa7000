#pragma once

namespace test {

/// Gives this process, and every process it starts from now on, the server's fixed port to itself: in a network
/// of its own that holds nothing but the loopback interface. Where the kernel refuses one, processes take turns,
/// each waiting for the others to end. Once in a process; call it before anything that opens a socket.
void OwnThePort();

}  // namespace test
