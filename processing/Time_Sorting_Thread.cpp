#include "processing/Time_Sorting_Thread.h"

#include <QtDebug>

Time_Sorting_Thread::Time_Sorting_Thread(const KorvaxBlock::InputPins& inputs,
                                         const KorvaxBlock::OutputPins& outputs, const QString& blockName,
                                         const SortingSettings& settings, const korvax::Clock& clock)
    : WorkerThread(inputs), outputs_(outputs), blockName_(blockName), settings_(settings), clock_(clock) {}

void Time_Sorting_Thread::Consume(DataMessage&& message) {
  const auto batch = std::move(message.batch);
  envelope_ = std::move(message);
  // By way of a double, as arrival times have always been made.
  now_ = static_cast<quint64>(static_cast<qint64>(static_cast<double>(clock_.NanosecondsSinceEpoch()) / 1000.0));
  if (buffer_.IsFull()) {
    qInfo() << "Order buffer full!";
  } else if (batch != nullptr) {
    buffer_.Add(TakeEvents(*batch));
  }
}

std::vector<korvax::OrderBuffer::Event> Time_Sorting_Thread::TakeEvents(PayloadBatch& batch) {
  std::vector<korvax::OrderBuffer::Event> events;
  events.reserve(batch.records.size());
  for (auto& record : batch.records) {
    if (korvax::PayloadCast<KorvaxPayload_Energy>(record.get()) != nullptr) {
      auto& event = events.emplace_back(static_cast<KorvaxPayload_Energy*>(record.release()));
      event->arrivalTime = static_cast<qint64>(now_);
    } else if (!std::exchange(strangersLogged_, true)) {
      qInfo() << "Time sorting" << blockName_ << "discards records of type" << record->typeText
              << ": only energy events can be sorted. Connect it to a source of those";
    }
  }
  return events;
}

void Time_Sorting_Thread::AfterDrain() {
  if (buffer_.Size() < 2) {
    return;  // kept: a single event stays until another one arrives
  }
  while (buffer_.Size() > 0 && buffer_.IsDue(now_)) {
    Emit(buffer_.TakeGroup());
  }
}

void Time_Sorting_Thread::Emit(std::unique_ptr<PayloadBatch> group) {
  outputs_.front()->Push({envelope_.dataType, envelope_.endpointPath, envelope_.word1, envelope_.word2,
                          std::move(group), envelope_.word3, envelope_.word4});
}

void Time_Sorting_Thread::Finish() {
  if (buffer_.Size() > 0) {
    qInfo() << "Time sorting" << blockName_ << "ends with" << buffer_.Size() << "events that were still waiting";
  }
}
