#pragma once

#include "sinks/CountGrid.h"
#include "sinks/FrameBuffer.h"
#include "sinks/SinkThread.h"

/// Turns pairs of correlated channels into places: counts them in a map and keeps the latest as points. A batch is
/// one correlated group; one that holds a channel twice is dropped whole. A map without rows or columns discards
/// everything.
class Position_Thread final : public korvax::SinkThread {
public:
  Position_Thread(const KorvaxBlock::InputPins& inputs, korvax::StripWiring wiring, qint32 rows);

  // Main thread.
  void SetEnergyWindow(const korvax::EnergyWindow& window);
  /// The points so far, oldest frame first; each is handed out once. A batch of k events makes k frames, each
  /// with the points found up to that event.
  std::vector<std::vector<korvax::StripPoint>> TakeFrames();
  /// To be read only; a reading may mix the counts from before and after a message.
  const korvax::CountGrid& Map() const { return map_; }

protected:
  void Consume(DataMessage&& message) override;
  bool HasRoom() const override { return !map_.IsEmpty(); }
  korvax::Fates Count(const PayloadBatch& batch) override;
  void Clear() override;

private:
  korvax::Fates CountHits();
  void CountPoints(std::size_t first);

  const korvax::StripWiring wiring_;

  // Guarded by Mutex().
  korvax::EnergyWindow window_;
  korvax::CountGrid map_;  // read without the lock: counters are atomics
  korvax::FrameBuffer frames_;

  // Worker; kept from batch to batch for their memory.
  std::vector<korvax::StripHit> hits_;
  std::vector<korvax::HitRole> roles_;
  std::vector<quint32> channels_;
  std::vector<korvax::StripPoint> points_;
  int rejected_ = 0;
};
