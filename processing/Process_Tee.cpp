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

void Process_Tee::NewDataInTheInputPin(int /*FifoLevel*/) {
  // No more than wait now: what arrives meanwhile brings a signal of its own, and queries get their turn.
  for (int waiting = Inputs().front()->Level(); waiting > 0; --waiting) {
    DataMessage message;
    if (Inputs().front()->Pop(message) != PinInput::Taken) {
      return;
    }
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
