#pragma once

#include <QString>
#include <QStringList>

namespace test {

/// The test's end of one scripted board: what the board is to hand out, and the calls it has got. The forms of
/// the lines are described in board/ScriptedBoard.cpp.
class ScriptedFeed {
public:
  /// An existing folder; at the same time the board's connection string.
  explicit ScriptedFeed(const QString& folder);

  const QString& Connection() const { return folder_; }

  /// Appends one line for the board's next read.
  void Feed(const QByteArray& line) const;
  /// One block of `count` events on a channel, of the energies first, first + 1, ...
  void FeedRamp(int channel, int first, int count) const;

  /// The lines of all calls, in order.
  QStringList Calls() const;
  /// The calls that begin with the text.
  QStringList CallsOf(const QString& name) const;

private:
  const QString folder_;
};

}  // namespace test
