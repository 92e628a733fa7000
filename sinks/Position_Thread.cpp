#include "sinks/Position_Thread.h"

#include "sinks/BinIndex.h"

#include <QtDebug>

#include <algorithm>

using korvax::Fate;

Position_Thread::Position_Thread(const KorvaxBlock::InputPins& inputs, korvax::StripWiring wiring, qint32 rows)
    : SinkThread(inputs, When::Running, {Fate::Counted, Fate::Cut, Fate::OutOfRange, Fate::RepeatedChannel}),
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
  hits_.clear();
  korvax::ForEachEvent(batch, [this](const KorvaxPayload_Energy& event) {
    hits_.push_back({event.channel, event.energyRaw});
  });
  if (!korvax::HasRepeatedChannel(hits_, channels_)) {
    return CountHits();
  }
  korvax::Fates fates;
  fates[Fate::RepeatedChannel] = hits_.size();
  return fates;
}

korvax::Fates Position_Thread::CountHits() {
  points_.clear();
  roles_.assign(hits_.size(), korvax::HitRole::Alone);
  for (std::size_t i = 0; i < hits_.size(); ++i) {
    const std::size_t before = points_.size();
    rejected_ +=
        korvax::FindPairs(std::span(hits_).subspan(i), wiring_, window_, points_, std::span(roles_).subspan(i));
    CountPoints(before);
    frames_.Add(points_);
  }
  const auto with = [this](korvax::HitRole role) {
    return static_cast<quint64>(std::count(roles_.begin(), roles_.end(), role));
  };
  korvax::Fates fates;
  fates[Fate::Counted] = with(korvax::HitRole::Placed);
  fates[Fate::Cut] = with(korvax::HitRole::Rejected);
  fates[Fate::OutOfRange] = with(korvax::HitRole::Alone);
  return fates;
}

void Position_Thread::CountPoints(std::size_t first) {
  for (const korvax::StripPoint& point : std::span(points_).subspan(first)) {
    const qint32 row = korvax::ClampIndex(korvax::RoundToBin(map_.Rows() * point.y), map_.Rows());
    map_.Count(row, static_cast<qint32>(point.x));
  }
}
