#include "examples/multiplicity/Multiplicity.h"

#include "framework/BlockParameters.h"
#include "sinks/BinIndex.h"
#include "sinks/CountGrid.h"
#include "sinks/SinkData.h"
#include "sinks/SinkThread.h"

class Multiplicity::Worker final : public korvax::SinkThread {
public:
  Worker(const InputPins& inputs, qint32 bins)
      : SinkThread(inputs, When::Running, {korvax::Fate::Counted}), counts_(1, bins) {}

  const korvax::CountGrid& Counts() const { return counts_; }

protected:
  bool HasRoom() const override { return !counts_.IsEmpty(); }
  korvax::Fates Count(const PayloadBatch& batch) override {
    const std::size_t events = korvax::EventCount(batch);
    counts_.Count(0, korvax::ClampIndex(static_cast<qint32>(events), counts_.Columns()));
    korvax::Fates fates;
    fates[korvax::Fate::Counted] = events;
    return fates;
  }
  void Clear() override { counts_.Reset(); }

private:
  korvax::CountGrid counts_;
};

Multiplicity::Multiplicity(QObject* parent, const ChainContext& context, const QJsonValue& block)
    : AnalysisSink(QStringLiteral("multiplicity"), context, block, parent) {
  ParseParameters(block);
  connect(Inputs().front().get(), &PinInput::DataReady, this, &Multiplicity::NewDataInTheInputPin);
  worker_ = Start(std::make_unique<Worker>(Inputs(), binNumber_));
  SetFault(worker_->Counts().Fault(QStringLiteral("\"bin_number\"")));
}

bool Multiplicity::ParseParameters(const QJsonValue& block) {
  korvax::ApplyParameters(
      block, {{QLatin1String("bin_number"), [this](const QJsonValue& value) { binNumber_ = value.toInt(); }}});
  return true;
}

void Multiplicity::AppendData(const korvax::SinkQuery& /*query*/, korvax::ByteWriter& out) {
  korvax::AppendAllRows(worker_->Counts(), out);
}
