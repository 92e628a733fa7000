#pragma once

#include <QByteArray>

#include <optional>

namespace test {

/// What a web server answers.
struct WebAnswer {
  int status = 0;
  QByteArray head;  ///< status line and header fields, in lines that end with CR LF
  QByteArray body;

  /// The value of a header field; letter case of the name doesn't matter.
  QByteArray Field(const QByteArray& name) const;
};

/// A GET request to the local host, on a connection of its own.
struct WebRequest {
  quint16 port = 0;
  QByteArray path = "/";
  QByteArray fields = {};  ///< further header fields, in lines that end with CR LF
  bool encrypted = false;  ///< as the default configuration of TLS says

  /// Runs the event loop until the answer is complete; nothing when there is no whole one.
  std::optional<WebAnswer> Send() const;
};

}  // namespace test
