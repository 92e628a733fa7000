#pragma once

#include "client/CountingView.h"
#include "client/SpectrumPicture.h"

namespace korvax::client {

/// The histogram of some channels.
class SpectrumView : public CountingView {
public:
  SpectrumView(const ServerAddress& server, SpectrumRequest request, Console& console);

private:
  QString CountsQuery() const override;
  Ending TakeCounts(const QString& answer) override;
  void Accept() override;
  QStringList Lines() const override;

  std::optional<double> RateOfChannel(std::size_t index, const Counts& now) const;

  const SpectrumRequest request_;
  std::vector<Counts> taken_;
  std::vector<ChannelView> channels_;
};

}  // namespace korvax::client
