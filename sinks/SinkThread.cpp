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
    Book(CountIfRunning(*batch));
  }
}

// What the sink says of its events isn't made to fit: the account would show it.
Fates SinkThread::CountIfRunning(const PayloadBatch& batch) {
  const Lock lock(mutex_);
  Fates fates;
  if (!running_ && countsWhen_ == When::Running) {
    fates[Fate::WhileStopped] = batch.Size();
  } else if (!HasRoom()) {
    fates[Fate::Other] = batch.Size();
  } else {
    fates = Count(batch);
    fates[Fate::Other] = batch.Size() - EventCount(batch);
  }
  return fates;
}

}  // namespace korvax
