// The input is what a client sends on a fresh connection, in pieces. Its first byte says whether that begins with
// a proper request for the upgrade, and whether frames are taken from the input as they stand or are made of it.

#include "control/MainWebSocket.h"
#include "control/korvax_commands.h"
#include "framework/KorvaxBlock.h"
#include "tests/fuzz/FakeChain.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/fuzz/FuzzProcess.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QJsonDocument>

#include <arpa/inet.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>
#include <array>
#include <cstdlib>

namespace {

enum ModeBits : std::uint8_t { Upgrade = 1, RouteOfInput = 2, MadeFrames = 4 };

constexpr const char Processing[] = R"([{"filter_chain":[{"name":"c","enable":true,"chain":[
  {"name":"spectrum","block_type":"spectrum","parameters":[{"param_name":"bin_number","param_value":8},
   {"param_name":"ch_number","param_value":3}]},
  {"name":"scope","block_type":"oscilloscope","parameters":[{"param_name":"sample_number","param_value":4},
   {"param_name":"ch_number","param_value":3},{"param_name":"ch_analog","param_value":1}]}]}]}])";

class Server {
public:
  Server() {
    chain_.AddBlocks(QJsonDocument::fromJson(Processing).array(), {});
    if (!socket_.IsListening()) {
      std::abort();
    }
  }
  quint16 Port() const { return socket_.Port(); }

private:
  fuzz::FakeChain chain_;
  MainWebSocket socket_{0, false, &chain_.blocks};
};

void ServeUntilIdle() {
  while (QCoreApplication::eventDispatcher()->processEvents(QEventLoop::AllEvents)) {
  }
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

/// The client's end of a connection.
class Connection {
public:
  explicit Connection(quint16 port) : descriptor_(socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const int on = 1;
    setsockopt(descriptor_, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    if (connect(descriptor_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
      std::abort();
    }
    ServeUntilIdle();
  }
  // Without waiting states, of which there would be too many.
  ~Connection() {
    const linger reset{1, 0};
    setsockopt(descriptor_, SOL_SOCKET, SO_LINGER, &reset, sizeof reset);
    close(descriptor_);
    ServeUntilIdle();
  }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  void Send(const QByteArray& bytes) {
    [[maybe_unused]] const ssize_t sent =
        send(descriptor_, bytes.constData(), static_cast<std::size_t>(bytes.size()), MSG_NOSIGNAL | MSG_DONTWAIT);
    ServeUntilIdle();
    std::array<char, 65536> answers;
    while (recv(descriptor_, answers.data(), answers.size(), MSG_DONTWAIT) > 0) {
      ServeUntilIdle();
    }
  }

private:
  const int descriptor_;
};

QByteArray RequestFor(const QByteArray& route) {
  return "GET /" + route +
         " HTTP/1.1\r\nHost: localhost\r\nUpgrade: websocket\r\nConnection: Upgrade\r\n"
         "Sec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\nSec-WebSocket-Version: 13\r\n\r\n";
}

// A whole frame as clients send it: first byte and length of the input's, masked with zeros.
QByteArray FrameOf(fuzz::Input& input) {
  const auto first = input.Take<std::uint8_t>();
  const QByteArray payload = input.Text(input.Take<std::uint8_t>());
  const int size = payload.size();
  QByteArray frame(1, static_cast<char>(first));
  if (size < 126) {
    frame.append(static_cast<char>(0x80 | size));
  } else {
    frame.append('\xFE').append('\0').append(static_cast<char>(size));
  }
  return frame.append(4, '\0') + payload;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Prepare();
  static const Server server;
  fuzz::Input input(data, size);
  const auto mode = input.Take<std::uint8_t>();
  Connection client(server.Port());
  if ((mode & Upgrade) != 0) {
    client.Send(RequestFor((mode & RouteOfInput) != 0 ? input.TextUpTo('\n') : QByteArray("scope")));
  }
  while (!input.IsEmpty()) {
    client.Send((mode & MadeFrames) != 0 ? FrameOf(input) : input.Text(input.Take<std::uint8_t>()));
  }
  return 0;
}
