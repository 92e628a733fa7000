#pragma once

#include "client/LiveView.h"
#include "client/PanelStack.h"

#include <QElapsedTimer>

namespace korvax::client {

/// A view of what a block has counted; a reading is the counts and whether the block counts. What the counts
/// are, and how they are drawn, is up to the derived class.
class CountingView : public LiveView {
protected:
  CountingView(const ServerAddress& server, const QString& path, const Refresh& refresh, Console& console);

  virtual QString CountsQuery() const = 0;

  /// Reads the answer to CountsQuery; an ending that is not Ok tells why it is void.
  virtual Ending TakeCounts(const QString& answer) = 0;

  /// What was taken last becomes the picture.
  virtual void Accept() = 0;

  /// Counts per second from the picture, which shows `before`, to what was taken last, which is `now`; none
  /// without a picture, and after a reset or a restart of the server.
  std::optional<double> RateOf(quint64 before, quint64 now) const;

  /// The path, `words` and the block's state, and below it how to start a block that is idle. A block that
  /// `countsWhenIdle` needs no start.
  Heading TitleOf(const QStringList& words, bool countsWhenIdle) const;

private:
  QString Begin() final;
  Step Take(const QString& answer) final;
  Step TakeStatus(const QString& answer);
  QString StartCommand() const;

  const ServerAddress server_;
  const QString path_;
  QElapsedTimer clock_;
  bool awaitingStatus_ = false;
  bool counting_ = false;
  qint64 takenAt_ = 0;                // ms of clock_
  std::optional<qint64> picturedAt_;  // ms of clock_
};

}  // namespace korvax::client
