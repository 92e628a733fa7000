#include "sinks/SinkThread.h"

namespace korvax {

namespace {

std::vector<Fate> AllFates(std::vector<Fate> own, bool countsAlways) {
  if (!countsAlways) {
    own.push_back(Fate::WhileStopped);
  }
  own.push_back(Fate::Other);
  return own;
}

}  // namespace

SinkThread::SinkThread(const KorvaxBlock::InputPins& inputs, When when, std::vector<Fate> fates)
    : WorkerThread(inputs, AllFates(std::move(fates), when == When::Always)), countsWhen_(when) {}

void SinkThread::SetRunning(bool running) {
  const Lock lock(mutex_);
  running_ = running;
}

bool SinkThread::IsRunning() const {
  const Lock lock(mutex_);
  return running_;
}

void SinkThread::Reset() {
  const Lock lock(mutex_);
  Clear();
}

void SinkThread::Consume(DataMessage&& message) {
  const auto batch = std::move(message.batch);  // dies after the lock
  if (batch != nullptr) {
    Fates fates = CountIfRunning(*batch);
    fates[Fate::Other] += batch->Size() - fates.Sum();
    Book(fates);
  }
}

Fates SinkThread::CountIfRunning(const PayloadBatch& batch) {
  const Lock lock(mutex_);
  if (running_ || countsWhen_ == When::Always) {
    return Count(batch);
  }
  Fates fates;
  fates[Fate::WhileStopped] = batch.Size();
  return fates;
}

}  // namespace korvax
