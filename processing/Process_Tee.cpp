#include "processing/Process_Tee.h"

#include <QJsonObject>

namespace {

std::unique_ptr<PayloadBatch> Copy(const PayloadBatch& batch) {
  auto copy = std::make_unique<PayloadBatch>();
  copy->dataType = batch.dataType;
  copy->timestamp = batch.timestamp;
  copy->events = batch.events;
  copy->records.reserve(batch.records.size());
  for (const auto& record : batch.records) {
    copy->records.push_back(record->Clone());
  }
  return copy;
}

// In records; a message costs about as much as some tens of them. Some ten milliseconds in all.
constexpr std::size_t MostWork = 1'000'000;

std::size_t WorkOf(const DataMessage& message) {
  constexpr std::size_t WorkOfAMessage = 32;
  return WorkOfAMessage + (message.batch == nullptr ? 0 : message.batch->Size());
}

}  // namespace

Process_Tee::Process_Tee(QObject* parent, const ChainContext& context, const QJsonValue& block)
    : KorvaxBlock(QStringLiteral("tee"), false, context, parent) {
  ReadCommonKeys(block);
  const PinInput& input = AddInput();
  const int outputCount = block.toObject()["output_count"].toInt();
  if (outputCount > MostOutputs) {
    SetFault(
        QStringLiteral("key \"output_count\": expected at most %1; found %2").arg(MostOutputs).arg(outputCount));
    return;
  }
  for (int i = 0; i < outputCount; ++i) {
    AddOutput();
  }
  connect(&input, &PinInput::DataReady, this, &Process_Tee::NewDataInTheInputPin);
}

// Wake-ups that come while others are delivered are delivered with them: fed faster than it copies, the tee would
// keep the event loop from sockets and signals. So much work in each of its turns; the timer's turn comes after
// theirs.
void Process_Tee::NewDataInTheInputPin(int /*FifoLevel*/) {
  if (!turn_.isActive()) {
    turn_.start(0, this);
    work_ = 0;
  }
  for (int waiting = Inputs().front()->Level(); waiting > 0 && work_ < MostWork; --waiting) {
    DataMessage message;
    if (Inputs().front()->Pop(message) != PinInput::Taken) {
      return;
    }
    work_ += WorkOf(message);
    CopyToOutputs(message);
  }
}

void Process_Tee::timerEvent(QTimerEvent* /*event*/) {
  turn_.stop();
  if (Inputs().front()->Level() > 0) {
    NewDataInTheInputPin(0);
  }
}

void Process_Tee::StopWorker() {
  turn_.stop();
  for (DataMessage message; Inputs().front()->Pop(message) == PinInput::Taken;) {
    CopyToOutputs(message);
  }
}

void Process_Tee::CopyToOutputs(DataMessage& message) {
  if (message.batch == nullptr) {
    return;
  }
  korvax::Fates fates;
  fates[korvax::Fate::Copied] = message.batch->Size();
  account_.BookMade(message.batch->Size());
  for (const auto& output : Outputs()) {
    // A copy of events shows no difference to them, one of waves does.
    const bool takesOriginal = output == Outputs().back() && message.batch->records.empty();
    auto batch = takesOriginal ? std::move(message.batch) : Copy(*message.batch);
    output->Push({message.dataType, message.endpointPath, message.word1, message.word2, std::move(batch),
                  message.word3, message.word4});
  }
  account_.Book(fates[korvax::Fate::Copied], fates);
}
