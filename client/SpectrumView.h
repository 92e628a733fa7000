#pragma once

#include "client/LiveView.h"
#include "client/SpectrumPicture.h"

#include <QElapsedTimer>

namespace korvax::client {

/// The histogram of some channels. A reading is the counters and whether the block counts.
class SpectrumView : public LiveView {
public:
  SpectrumView(const ServerAddress& server, SpectrumRequest request, Console& console);

private:
  QString Begin() override;
  Step Take(const QString& answer) override;
  QStringList Lines() const override;

  Step TakeData(const QString& answer);
  Step TakeStatus(const QString& answer);
  void Accept(bool counting);
  std::optional<double> RateOf(std::size_t index, const Counts& now) const;
  QStringList Notes() const;
  QString StartCommand() const;

  const ServerAddress server_;
  const SpectrumRequest request_;
  QElapsedTimer clock_;

  bool awaitingStatus_ = false;
  std::vector<Counts> arrived_;
  qint64 arrivedAt_ = 0;  // ms of clock_

  std::vector<ChannelView> channels_;
  qint64 channelsAt_ = 0;  // ms of clock_
  bool counting_ = false;
};

}  // namespace korvax::client
