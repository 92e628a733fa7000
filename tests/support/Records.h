#pragma once

#include "framework/DataMessage.h"
#include "framework/KorvaxPayload_Energy.h"

#include <functional>
#include <utility>

namespace test {

/// A record of no use that reports its end. The function runs on the thread that destroys the record.
class WatchedRecord final : public KorvaxPayload {
public:
  explicit WatchedRecord(std::function<void()> onDestroyed)
      : KorvaxPayload(Kind::Wave, 0), onDestroyed_(std::move(onDestroyed)) {}
  ~WatchedRecord() override { onDestroyed_(); }

  std::unique_ptr<KorvaxPayload> Clone() const override { return std::make_unique<WatchedRecord>(onDestroyed_); }
  bool Write(quint32 /*format*/, korvax::ByteWriter& /*out*/) const override { return false; }

private:
  const std::function<void()> onDestroyed_;
};

inline std::unique_ptr<KorvaxPayload> Watched(std::function<void()> onDestroyed) {
  return std::make_unique<WatchedRecord>(std::move(onDestroyed));
}

inline std::unique_ptr<KorvaxPayload> Energy(quint32 channel, quint32 energyRaw, quint64 timestamp = 0) {
  auto event = std::make_unique<KorvaxPayload_Energy>();
  event->channel = channel;
  event->energyRaw = energyRaw;
  event->timestamp = timestamp;
  return event;
}

/// A message with one batch of the given records.
template <typename... Records>
DataMessage MessageOf(Records... records) {
  DataMessage message;
  message.batch = std::make_unique<PayloadBatch>();
  message.batch->dataType = QLatin1String("energy");
  (message.batch->records.push_back(std::move(records)), ...);
  return message;
}

}  // namespace test
