#pragma once

#include "sinks/CountGrid.h"
#include "sinks/SinkThread.h"

/// Counts energy events per pixel: channel c is column c mod `columns` of row c / `columns`. Channels beyond the
/// last row, and all in an image without columns, are ignored.
class Image_Thread final : public korvax::SinkThread {
public:
  Image_Thread(const KorvaxBlock::InputPins& inputs, qint32 rows, qint32 columns);

  /// Words for the operator when there is no room for the images, empty otherwise.
  QString Fault() const;

  /// What was counted since the last call; counting begins anew, no count is lost in between. Valid until the next
  /// call. Main thread.
  const korvax::CountGrid& TakeImmediate();
  /// To be read only; a reading may mix the counts from before and after a message.
  const korvax::CountGrid& Cumulative() const { return cumulative_; }

protected:
  bool HasRoom() const override { return !cumulative_.IsEmpty(); }
  korvax::Fates Count(const PayloadBatch& batch) override;
  /// The cumulative image only.
  void Clear() override { cumulative_.Reset(); }

private:
  /// Whether the event has a pixel.
  bool CountEvent(const KorvaxPayload_Energy& event);

  // Guarded by Mutex().
  korvax::CountGrid immediate_;
  korvax::CountGrid cumulative_;  // read without the lock: counters are atomics

  korvax::CountGrid taken_;  // main thread
};
