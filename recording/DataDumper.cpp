#include "recording/DataDumper.h"

#include "framework/ByteWriter.h"
#include "framework/JsonText.h"
#include "recording/DumpQueries.h"

#include <QJsonObject>

DataDumper::DataDumper(QObject* parent, const ChainContext& context, const QJsonValue& block)
    : KorvaxBlock(QStringLiteral("dumper"), true, context, parent) {
  ReadCommonKeys(block);
  ParseParameters(block);
  const PinInput& input = AddInput();
  connect(&input, &PinInput::DataReady, this, &DataDumper::NewDataInTheInputPin);
  worker_ = std::make_unique<DataDumper_Thread>(Inputs(), Name());
  worker_->start(korvax::StreamPriority);
}

DataDumper::~DataDumper() {
  StopWorker();
}

void DataDumper::StopWorker() {
  worker_->Stop();
}

void DataDumper::NewDataInTheInputPin(int /*FifoLevel*/) {
  worker_->Wake();
}

int DataDumper::FifoLevel() const {
  return Inputs().front()->Level();
}

void DataDumper::InterpretMessage(QString* data_in, QString* data_out) {
  const QJsonObject message = korvax::ParseJson(data_in->toUtf8()).object();
  const QString command = message["cmd"].toString();
  if (!korvax::AnswerDumpQuery(command, message, worker_->Control(), *data_out) &&
      command == QLatin1String("get_dump_counts")) {
    AppendCounts(*data_out);
  }
}

void DataDumper::AppendCounts(QString& out) const {
  const korvax::RunStatistics statistics = worker_->Statistics();
  korvax::AppendDumpCounts(worker_->Control(),
                           QStringLiteral(",\"run_start\":%1,\"paused_running_time\":%2")
                               .arg(statistics.runStart)
                               .arg(statistics.pausedRunningTime),
                           out);
}

void DataDumper::ConfigureDump(int dump_events, const QString& file_type, const QString& file_path) {
  worker_->Control().Set(
      [&](korvax::DumpSettings& settings) { settings.Configure(dump_events, file_type, file_path); });
}

void DataDumper::StartDump(const QString& run_id) {
  worker_->StartRun([&](korvax::DumpSettings& settings) { settings.runId = run_id; });
}

void DataDumper::StartRun(const korvax::DumpSettings& settings) {
  worker_->StartRun([&](korvax::DumpSettings& current) {
    current.Configure(settings.eventsPerFile, settings.fileType, settings.filePath);
    current.runId = settings.runId;
  });
}

void DataDumper::StopDump() {
  worker_->Control().SetStatus(korvax::DumpStatus::Stopped);
}

void DataDumper::PauseDump() {
  worker_->Pause();
}

void DataDumper::ReStartDump() {
  worker_->ReStart();
}

// Kept: the run id stands there without quotes, as programs that read numeric ids expect it.
void DataDumper::GetRunInfo(QString* out) const {
  const korvax::RunStatistics statistics = worker_->Statistics();
  const korvax::DumpControl& control = worker_->Control();
  korvax::ByteWriter text;
  text.Text("{\"status\":").Decimal(static_cast<int>(control.Status()));
  text.Text(",\"name\": \"").Text(Name().toStdString());
  text.Text("\",\"event_rate\":").General(statistics.eventRate);
  text.Text(",\"id\":").Text(control.Settings().runId.toStdString());
  text.Text(",\"stored_events\":").Decimal(statistics.storedEvents);
  text.Text(",\"running_time\":").General(statistics.runningTime);
  text.Text(",\"used_space\":").Decimal(statistics.usedSpace).Text("}");
  out->append(QString::fromUtf8(text.View().data(), static_cast<int>(text.Size())));
}
