#include "sinks/Position_Thread.h"

#include "sinks/BinIndex.h"

#include <QtDebug>

using korvax::Fate;

Position_Thread::Position_Thread(const KorvaxBlock::InputPins& inputs, korvax::StripWiring wiring, qint32 rows)
    : SinkThread(inputs, When::Running, {Fate::Counted, Fate::RepeatedChannel}),
      wiring_(std::move(wiring)),
      map_(rows, wiring_.Columns()) {}

void Position_Thread::SetEnergyWindow(const korvax::EnergyWindow& window) {
  const korvax::Lock lock(Mutex());
  window_ = window;
}

std::vector<std::vector<korvax::StripPoint>> Position_Thread::TakeFrames() {
  const korvax::Lock lock(Mutex());
  return frames_.Take();
}

void Position_Thread::Clear() {
  map_.Reset();
  frames_.Clear();
}

void Position_Thread::Consume(DataMessage&& message) {
  SinkThread::Consume(std::move(message));
  for (; rejected_ > 0; --rejected_) {  // here, as the log may wait for its reader and queries for the lock
    qInfo() << "Discrding energy";
  }
}

korvax::Fates Position_Thread::Count(const PayloadBatch& batch) {
  korvax::Fates fates;
  if (map_.IsEmpty()) {
    return fates;
  }
  hits_.clear();
  korvax::ForEachEvent(batch, [this](const KorvaxPayload_Energy& event) {
    hits_.push_back({event.channel, event.energyRaw});
  });
  const bool isRepeated = korvax::HasRepeatedChannel(hits_, channels_);
  fates[isRepeated ? Fate::RepeatedChannel : Fate::Counted] = hits_.size();
  if (!isRepeated) {
    CountHits();
  }
  return fates;
}

void Position_Thread::CountHits() {
  points_.clear();
  for (std::span<const korvax::StripHit> rest(hits_); !rest.empty(); rest = rest.subspan(1)) {
    const std::size_t before = points_.size();
    rejected_ += korvax::FindPairs(rest, wiring_, window_, points_);
    CountPoints(before);
    frames_.Add(points_);
  }
}

void Position_Thread::CountPoints(std::size_t first) {
  for (const korvax::StripPoint& point : std::span(points_).subspan(first)) {
    const qint32 row = korvax::ClampIndex(korvax::RoundToBin(map_.Rows() * point.y), map_.Rows());
    map_.Count(row, static_cast<qint32>(point.x));
  }
}
