#pragma once

#include "client/LiveView.h"
#include "client/ScopePicture.h"

namespace korvax::client {

/// The latest waveforms of an oscilloscope. Every reading enables its channels anew, as another client may have
/// enabled others. The oscilloscope leaves out channels that it doesn't have, without a word: so when several
/// are asked for, the last is read alone once, which tells whether it exists and how many traces a channel has.
class ScopeView : public LiveView {
public:
  ScopeView(const ServerAddress& server, ScopeRequest request, Console& console);

private:
  QString Begin() override;
  Step Take(const QString& answer) override;
  QStringList Lines() const override;

  std::span<const int> Asked() const;
  Step TakeTraces(const QString& answer);
  Step Accept(std::vector<Trace> traces, const QString& answer);
  Step Void(const Ending& reason);
  QStringList Notes() const;

  const ScopeRequest request_;
  std::size_t tracesPerChannel_ = 0;  ///< 0 as long as it isn't known
  bool enabled_ = false;
  std::vector<ScopeChannel> channels_;
};

}  // namespace korvax::client
