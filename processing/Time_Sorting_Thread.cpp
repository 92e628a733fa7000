#include "processing/Time_Sorting_Thread.h"

#include <QtDebug>

using korvax::Fate;

Time_Sorting_Thread::Time_Sorting_Thread(const KorvaxBlock::InputPins& inputs,
                                         const KorvaxBlock::OutputPins& outputs, const QString& blockName,
                                         const SortingSettings& settings, const korvax::Clock& clock)
    : WorkerThread(inputs, {Fate::Grouped, Fate::DroppedFull, Fate::Other}),
      outputs_(outputs),
      blockName_(blockName),
      settings_(settings),
      clock_(clock) {}

void Time_Sorting_Thread::Consume(DataMessage&& message) {
  const auto batch = std::move(message.batch);
  envelope_ = std::move(message);
  // By way of a double, as arrival times have always been made.
  now_ = static_cast<quint64>(static_cast<qint64>(static_cast<double>(clock_.NanosecondsSinceEpoch()) / 1000.0));
  if (buffer_.IsFull()) {
    qInfo() << "Order buffer full!";
    Book(Fate::DroppedFull, batch == nullptr ? 0 : batch->Size());
  } else if (batch != nullptr) {
    TakeIn(*batch);
  }
}

void Time_Sorting_Thread::TakeIn(const PayloadBatch& batch) {
  buffer_.Add(batch.events, static_cast<qint64>(now_));
  for (const auto& record : batch.records) {
    TakeInRecord(*record);
  }
}

void Time_Sorting_Thread::TakeInRecord(const KorvaxPayload& record) {
  if (const auto* event = korvax::PayloadCast<KorvaxPayload_Energy>(&record)) {
    buffer_.Add({event, 1}, static_cast<qint64>(now_));
    return;
  }
  Book(Fate::Other, 1);
  if (!std::exchange(strangersLogged_, true)) {
    qInfo() << "Time sorting" << blockName_ << "discards records of type" << record.TypeText()
            << ": only energy events can be sorted. Connect it to a source of those";
  }
}

void Time_Sorting_Thread::AfterDrain() {
  if (buffer_.Size() < 2) {
    return;  // kept: a single event stays until another one arrives
  }
  while (buffer_.Size() > 0 && buffer_.IsDue(now_)) {
    Gather(buffer_.TakeGroup());
  }
  EmitGathered();
}

void Time_Sorting_Thread::Gather(std::unique_ptr<PayloadBatch> group) {
  gathered_ += group->Size();
  groups_.push_back({envelope_.dataType, envelope_.endpointPath, envelope_.word1, envelope_.word2,
                     std::move(group), envelope_.word3, envelope_.word4});
  if (groups_.size() == PinOutput::AtATime) {
    EmitGathered();
  }
}

// Many at a time: their consumer isn't woken for each.
void Time_Sorting_Thread::EmitGathered() {
  if (groups_.empty()) {
    return;
  }
  const quint64 records = std::exchange(gathered_, 0);
  BookMade(records);
  Book(Fate::Grouped, records);
  PostBooked();
  outputs_.front()->PushAll(groups_);
  groups_.clear();
}

void Time_Sorting_Thread::Finish() {
  if (buffer_.Size() > 0) {
    qInfo() << "Time sorting" << blockName_ << "ends with" << buffer_.Size() << "events that were still waiting";
  }
}
