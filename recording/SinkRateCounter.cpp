#include "recording/SinkRateCounter.h"

#include "framework/Answers.h"
#include "framework/BlockParameters.h"
#include "framework/ByteWriter.h"
#include "framework/JsonText.h"
#include "framework/QueryArgs.h"
#include "recording/DumpQueries.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QtDebug>

#include <algorithm>

namespace {

using Rates = KorvaxPayload_RateCounters;

QLatin1String TextOf(const korvax::ByteWriter& text) {
  return QLatin1String(text.View().data(), static_cast<int>(text.Size()));
}

// The members that both answers share; the object stays open.
void AppendRates(const Rates& record, korvax::ByteWriter& text) {
  text.Text("\"timestamp\":").Decimal(record.timestamp);
  text.Text(",\"rates_in\":[").Joined(record.ratesIn);
  text.Text("],\"counts_in\":[").Joined(record.countersIn);
  text.Text("],\"rates_out\":[").Joined(record.ratesOut);
  text.Text("],\"counts_out\":[").Joined(record.countersOut).Text("]");
}

void AppendLatest(const korvax::RateHistory::Record& latest, QString& out) {
  if (latest == nullptr) {
    out.append(QLatin1String("{\"status\": \"nodata\"}"));
    return;
  }
  korvax::ByteWriter text;
  text.Text("{\"status\": \"ok\", ");
  AppendRates(*latest, text);
  text.Text(",\"rates_in_start\":[").Joined(latest->startRatesIn);
  text.Text("],\"rates_out_start\":[").Joined(latest->startRatesOut).Text("]}");
  out.append(TextOf(text));
}

void AppendHistory(const std::vector<korvax::RateHistory::Record>& records, QString& out) {
  korvax::ByteWriter text;
  const char* separator = "";
  text.Text("{\"data\":[");
  for (const auto& record : records) {
    text.Text(separator).Text("{");
    AppendRates(*record, text);
    text.Text("}");
    separator = ",";
  }
  text.Text("]}");
  out.append(TextOf(text));
}

}  // namespace

SinkRateCounter::SinkRateCounter(QObject* parent, const ChainContext& context, const QJsonValue& block)
    : KorvaxBlock(QStringLiteral("rate_counters_sink"), true, context, parent) {
  ReadCommonKeys(block);
  ParseParameters(block);
  if (historyDepth_ > DeepestHistory) {
    SetFault(
        QStringLiteral("\"history_depth\": expected at most %1; found %2").arg(DeepestHistory).arg(historyDepth_));
  }
  const PinInput& input = AddInput();
  connect(&input, &PinInput::DataReady, this, &SinkRateCounter::NewDataInTheInputPin);
  worker_ = std::make_unique<SinkRateCounter_Thread>(Inputs(), Name(),
                                                     static_cast<std::size_t>(std::max(historyDepth_, 0)));
  worker_->start(korvax::StreamPriority);
}

SinkRateCounter::~SinkRateCounter() {
  StopWorker();
}

bool SinkRateCounter::ParseParameters(const QJsonValue& block) {
  korvax::ApplyParameters(
      block,
      {{QLatin1String("channel_map"), [this](const QJsonValue& value) { SetChannelMap(value.toArray()); }},
       {QLatin1String("history_depth"), [this](const QJsonValue& value) { historyDepth_ = value.toInt(); }}});
  return true;
}

void SinkRateCounter::SetChannelMap(const QJsonArray& names) {
  channelMap_.clear();
  for (const QJsonValue& name : names) {
    channelMap_ << name.toString();
  }
}

void SinkRateCounter::StopWorker() {
  worker_->Stop();
}

void SinkRateCounter::NewDataInTheInputPin(int /*FifoLevel*/) {
  worker_->Wake();
}

int SinkRateCounter::FifoLevel() const {
  return Inputs().front()->Level();
}

void SinkRateCounter::InterpretMessage(QString* data_in, QString* data_out) {
  const korvax::QueryArgs args(*data_in);
  const QString command = args.Text("cmd");
  if (command == QLatin1String("get_data")) {
    AppendData(args.Text("source"), *data_out);
  } else if (command == QLatin1String("reset")) {
    worker_->History().Clear();
    data_out->append(korvax::answers::Success());
  } else if (command == QLatin1String("get_channel_map")) {
    data_out->append(
        korvax::CompactJson({{QStringLiteral("channel_map"), QJsonArray::fromStringList(channelMap_)}}));
  } else if (command == QLatin1String("get_dump_counts")) {
    korvax::AppendDumpCounts(worker_->Control(), QString(), *data_out);
  } else {
    ControlDump(command, args.Message(), *data_out);
  }
}

// The values stand at the top level of the message, unlike the command.
void SinkRateCounter::ControlDump(const QString& command, const QJsonObject& message, QString& out) {
  korvax::DumpControl& control = worker_->Control();
  if (command == QLatin1String("start_dump")) {
    const QString runId = message["run_id"].toString();
    control.SetStatus(korvax::DumpStatus::Recording, [&](korvax::DumpSettings& settings) {
      settings.runId = runId.isEmpty() ? settings.runId : runId;
    });
    out.append(korvax::answers::Success());
  } else if (command != QLatin1String("set_dump_events") && command != QLatin1String("set_dump_time")) {
    korvax::AnswerDumpQuery(command, message, control, out);
  }
}

void SinkRateCounter::AppendData(const QString& source, QString& out) const {
  if (source == QLatin1String("immediate")) {
    AppendLatest(worker_->History().Latest(), out);
  } else if (source == QLatin1String("data")) {
    AppendHistory(worker_->History().Records(), out);
  }
}

QJsonObject SinkRateCounter::Shape() const {
  return {{QStringLiteral("channels"), QJsonArray::fromStringList(channelMap_)}};
}

void SinkRateCounter::ConfigureDump(int dump_events, const QString& file_type, const QString& file_path) {
  worker_->Control().Set(
      [&](korvax::DumpSettings& settings) { settings.Configure(dump_events, file_type, file_path); });
}

void SinkRateCounter::StartDump(const QString& run_id) {
  worker_->Control().StartRun(run_id);
  qInfo() << "Starting RATE dumper";
}

void SinkRateCounter::StartRun(const korvax::DumpSettings& settings) {
  worker_->Control().StartRun([&](korvax::DumpSettings& current) { current = settings; });
  qInfo() << "Starting RATE dumper";
}

void SinkRateCounter::StopDump() {
  worker_->Control().SetStatus(korvax::DumpStatus::Stopped);
}

void SinkRateCounter::PauseDump() {
  worker_->Control().SetStatus(korvax::DumpStatus::Paused);
}

void SinkRateCounter::ReStartDump() {
  worker_->Control().SetStatus(korvax::DumpStatus::Recording);
}
