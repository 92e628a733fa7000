#pragma once

#include <QString>

#include <vector>

namespace korvax {

/// A client's query as every analysis sink reads it: from the objects of "args", in order. A key absent from an
/// element leaves the earlier value, so the last "cmd", "status" and "source" win, while the channels of all
/// elements collect. A text that doesn't parse, or has no "args", gives an empty command.
struct SinkQuery {
  QString source;
  QString command;
  std::vector<qint32> channels;  ///< as sent: in any order, with repetitions, existing or not
  QString status;

  static SinkQuery Parse(const QString& text);

  /// The selected channels of a sink that has `channelNumber`: ascending, each once.
  std::vector<qint32> SelectedChannels(qint32 channelNumber) const;
};

}  // namespace korvax
