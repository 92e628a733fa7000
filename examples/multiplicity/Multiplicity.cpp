#include "examples/multiplicity/Multiplicity.h"

#include "framework/BlockParameters.h"
#include "sinks/BinIndex.h"
#include "sinks/CountGrid.h"
#include "sinks/SinkAnswers.h"
#include "sinks/SinkThread.h"

class Multiplicity::Worker final : public korvax::SinkThread {
public:
  Worker(const InputPins& inputs, qint32 bins) : SinkThread(inputs, When::Running), counts_(1, bins) {}

  const korvax::CountGrid& Counts() const { return counts_; }

protected:
  void Count(const PayloadBatch& batch) override {
    if (!counts_.IsEmpty()) {
      counts_.Count(0, korvax::ClampIndex(static_cast<qint32>(batch.records.size()), counts_.Columns()));
    }
  }
  void Clear() override { counts_.Reset(); }

private:
  korvax::CountGrid counts_;
};

Multiplicity::Multiplicity(QObject* parent, const ChainContext& context, const QJsonValue& block)
    : KorvaxBlock(QStringLiteral("multiplicity"), false, context, parent) {
  ReadCommonKeys(block);
  ParseParameters(block);
  const PinInput& input = AddInput();
  connect(&input, &PinInput::DataReady, this, &Multiplicity::NewDataInTheInputPin);
  worker_ = std::make_unique<Worker>(Inputs(), binNumber_);
  SetFault(worker_->Counts().Fault(QStringLiteral("\"bin_number\"")));
  worker_->start(korvax::StreamPriority);
}

Multiplicity::~Multiplicity() {
  StopWorker();
}

bool Multiplicity::ParseParameters(const QJsonValue& block) {
  korvax::ApplyParameters(
      block, {{QLatin1String("bin_number"), [this](const QJsonValue& value) { binNumber_ = value.toInt(); }}});
  return true;
}

void Multiplicity::StopWorker() {
  worker_->Stop();
}

void Multiplicity::NewDataInTheInputPin(int /*FifoLevel*/) {
  worker_->Wake();
}

void Multiplicity::InterpretMessage(QString* data_in, QString* data_out) {
  const auto appendData = [this](const korvax::SinkQuery&, korvax::ByteWriter& out) {
    korvax::AppendAllRows(worker_->Counts(), out);
  };
  korvax::AnswerSinkQuery(*data_in, *worker_, appendData, *data_out);
}
