#include "sinks/Oscilloscope.h"

#include "framework/Answers.h"
#include "framework/BlockParameters.h"
#include "framework/ByteWriter.h"
#include "framework/JsonText.h"
#include "recording/DumpQueries.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>

Oscilloscope::Oscilloscope(QObject* parent, const ChainContext& context, const QJsonValue& block)
    : KorvaxBlock(QStringLiteral("oscilloscope"), true, context, parent) {
  ReadCommonKeys(block);
  ParseParameters(block);
  const PinInput& input = AddInput();
  connect(&input, &PinInput::DataReady, this, &Oscilloscope::NewDataInTheInputPin);
  worker_ = std::make_unique<Oscilloscope_Thread>(Inputs(), Name(), shape_);
  if (worker_->IsTooLarge()) {
    SetFault(
        QStringLiteral("\"sample_number\" times \"ch_number\" times (\"ch_analog\" + \"ch_digital\"): expected at "
                       "most %1, and memory for them; each of the last three at most %2")
            .arg(korvax::TraceStore::MostSamples)
            .arg(korvax::TraceStore::MostTraces));
  } else {
    enabled_.resize(static_cast<std::size_t>(worker_->Shape().channels));
  }
  worker_->start();  // kept: at the inherited priority, unlike the other workers
}

Oscilloscope::~Oscilloscope() {
  StopWorker();
}

bool Oscilloscope::ParseParameters(const QJsonValue& block) {
  korvax::ApplyParameters(
      block,
      {{QLatin1String("sample_number"), [this](const QJsonValue& value) { shape_.samples = value.toInt(); }},
       {QLatin1String("ch_number"), [this](const QJsonValue& value) { shape_.channels = value.toInt(); }},
       {QLatin1String("ch_analog"), [this](const QJsonValue& value) { shape_.analog = value.toInt(); }},
       {QLatin1String("ch_digital"), [this](const QJsonValue& value) { shape_.digital = value.toInt(); }}});
  return true;
}

QJsonObject Oscilloscope::Shape() const {
  const korvax::TraceShape& shape = worker_->Shape();
  return {{QStringLiteral("channels"), shape.channels},
          {QStringLiteral("analog"), shape.analog},
          {QStringLiteral("digital"), shape.digital},
          {QStringLiteral("samples"), shape.samples}};
}

void Oscilloscope::StopWorker() {
  worker_->Stop();
}

void Oscilloscope::NewDataInTheInputPin(int /*FifoLevel*/) {
  worker_->Wake();
}

int Oscilloscope::FifoLevel() const {
  return Inputs().front()->Level();
}

void Oscilloscope::InterpretMessage(QString* data_in, QString* data_out) {
  const QJsonObject message = korvax::ParseJson(data_in->toUtf8()).object();
  const QString command = message["cmd"].toString();
  if (command == QLatin1String("require_data")) {
    AppendTraces(*data_out);
  } else if (command == QLatin1String("set_channel")) {
    EnableChannels(message["ch_enable"].toArray());
    data_out->append(korvax::answers::Success());
  } else if (command == QLatin1String("get_dump_counts")) {
    korvax::AppendDumpCounts(worker_->Control(), QString(), *data_out);
  } else {
    korvax::AnswerDumpQuery(command, message, worker_->Control(), *data_out);
  }
}

void Oscilloscope::EnableChannels(const QJsonArray& switches) {
  const auto count = std::min(static_cast<std::size_t>(switches.size()), enabled_.size());
  for (std::size_t channel = 0; channel < count; ++channel) {
    enabled_[channel] = switches[static_cast<int>(channel)] == QJsonValue(1);
  }
}

// Kept: counted like this, the slots hold what is meant for one analog trace a channel only.
std::vector<qint64> Oscilloscope::ShownSlots() const {
  const korvax::TraceShape& shape = worker_->Shape();
  std::vector<qint64> slotNumbers;
  for (qint64 c = 0; c < static_cast<qint64>(enabled_.size()); ++c) {
    if (!enabled_[static_cast<std::size_t>(c)]) {
      continue;
    }
    for (qint64 a = 0; a < shape.analog; ++a) {
      slotNumbers.push_back((shape.digital + 1 + a) * c);
    }
    for (qint64 d = 0; d < shape.digital; ++d) {
      slotNumbers.push_back((qint64{shape.digital} + shape.analog) * c + shape.analog + d);
    }
  }
  return slotNumbers;
}

// Kept: no comma parts the analog traces of a channel, and one stands before each digital trace, whatever is
// there.
void Oscilloscope::AppendTraces(QString& out) const {
  const korvax::TraceShape& shape = worker_->Shape();
  const std::vector<std::vector<double>> traces = worker_->Traces(ShownSlots());
  auto trace = traces.begin();
  korvax::ByteWriter text;
  const char* separator = "";
  text.Text("[");
  for (auto shown = std::count(enabled_.begin(), enabled_.end(), true); shown > 0; --shown) {
    text.Text(separator);
    separator = ",";
    for (qint32 a = 0; a < shape.analog; ++a) {
      text.Text("{\"data\":[").Joined(*trace++).Text("]}");
    }
    for (qint32 d = 0; d < shape.digital; ++d) {
      text.Text(",{\"data\":[").Joined(*trace++).Text("]}");
    }
  }
  text.Text("]");
  out.append(QLatin1String(text.View().data(), static_cast<int>(text.Size())));
}

void Oscilloscope::ConfigureDump(int dump_events, int dump_time, const QString& file_type,
                                 const QString& file_path) {
  worker_->Control().Set([&](korvax::DumpSettings& settings) {
    settings.dumpTime = dump_time;
    settings.Configure(dump_events, file_type, file_path);
  });
}

void Oscilloscope::StartDump(const QString& run_id) {
  worker_->Control().StartRun(run_id);
}

void Oscilloscope::StartRun(const korvax::DumpSettings& settings) {
  worker_->Control().StartRun([&](korvax::DumpSettings& current) { current = settings; });
}

void Oscilloscope::StopDump() {
  worker_->Control().SetStatus(korvax::DumpStatus::Stopped);
}

void Oscilloscope::PauseDump() {
  worker_->Control().SetStatus(korvax::DumpStatus::Paused);
}

void Oscilloscope::ReStartDump() {
  worker_->Control().SetStatus(korvax::DumpStatus::Recording);
}
