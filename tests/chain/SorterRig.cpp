#include "tests/chain/SorterRig.h"

#include "tests/support/Records.h"

#include <QElapsedTimer>
#include <QJsonObject>

namespace test {

SorterRig::SorterRig() : sorter_(nullptr, {}, QJsonObject{{"name", "sorter"}, {"data_type", "energy"}}, clock_) {
  sorter_.Inputs().front()->Connect(&feed_);
  end_.Connect(sorter_.Outputs().front().get());
  feed_.blockSignals(true);  // the rig wakes the worker
}

SorterRig::~SorterRig() {
  clock_.Open();
  sorter_.StopWorker();
  Leave();
}

bool SorterRig::Drain(const std::vector<Arrival>& portion, std::size_t groups) {
  Push(portion.front().events);
  // The worker holds the first message now, and takes the others in the same drain.
  if (!WakeUntil([this] { return clock_.IsAwaited(); })) {
    return false;
  }
  for (std::size_t i = 1; i < portion.size(); ++i) {
    Push(portion[i].events);
  }
  for (const Arrival& arrival : portion) {
    clock_.Add(arrival.now);
  }
  return WakeUntil(
      [&] { return clock_.IsUsedUp() && sorter_.Outputs().front()->AcceptedMessages() >= left_ + groups; });
}

std::vector<DataMessage> SorterRig::Leave() {
  std::vector<DataMessage> messages;
  for (DataMessage message; end_.Pop(message) == PinInput::Taken;) {
    messages.push_back(std::move(message));
  }
  left_ += messages.size();
  return messages;
}

void SorterRig::Push(const RecordedEvents& events) {
  DataMessage message = MessageWith(events);
  message.word1 = ++handedIn_;
  feed_.Push(std::move(message));
}

bool SorterRig::WakeUntil(const std::function<bool()>& condition) {
  constexpr qint64 LimitMs = 60'000;
  QElapsedTimer timer;
  timer.start();
  while (!condition()) {
    if (timer.elapsed() > LimitMs) {
      return false;
    }
    sorter_.NewDataInTheInputPin(0);
    QThread::yieldCurrentThread();
  }
  return true;
}

RecordedEvents EventsOf(const DataMessage& message) {
  RecordedEvents events;
  korvax::ForEachEvent(*message.batch, [&](const KorvaxPayload_Energy& event) {
    events.push_back({event.timestamp, event.channel, event.energyRaw});
  });
  return events;
}

DataMessage MessageWith(const RecordedEvents& events) {
  DataMessage message = MessageOf();
  message.dataType = QStringLiteral("energy");
  message.endpointPath = QStringLiteral("det\\energy");
  for (const RecordedEvent& event : events) {
    message.batch->records.push_back(Energy(event.channel, event.energyRaw, event.timestamp));
  }
  return message;
}

}  // namespace test
