#pragma once

#include <QHostAddress>
#include <QJsonValue>
#include <QStringList>

#include <optional>

/// What the configuration's "network" section says: who may connect, and what a client may cost. The defaults are
/// those of a configuration without one.
struct NetworkSettings {
  QHostAddress address{QHostAddress::Any};  ///< to listen on
  std::optional<QStringList> origins;       ///< of web pages that may connect; nothing: all
  int maxConnections = 4096;
  int maxMessageBytes = 256 << 20;  ///< of one message from a client
  int maxUnsentBytes = 256 << 20;   ///< of answers that a client hasn't read

  /// Takes over what the section says. A value of the wrong type or beyond its limits reads as missing, and is
  /// logged, as some of the keys keep strangers out. Returns what is wrong with an address that isn't one, on one
  /// line; else nothing.
  QString Read(const QJsonValue& section);

  /// Whether a client of this origin may connect. Only browsers tell an origin: any other client has an empty one,
  /// and may.
  bool Allows(const QString& origin) const;
};
