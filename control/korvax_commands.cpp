#include "control/korvax_commands.h"

#include "acquisition/Source.h"
#include "control/StorageSettings.h"
#include "framework/Answers.h"
#include "recording/DataDumper.h"
#include "recording/SinkRateCounter.h"
#include "sinks/Oscilloscope.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QtDebug>

#include <algorithm>
#include <array>

namespace {

template <typename Block, typename Action>
void ForEach(const BlockList& blocks, Action action) {
  for (const auto& block : blocks) {
    if (auto* const match = qobject_cast<Block*>(block.get())) {
      action(*match);
    }
  }
}

// All kinds of recording block, in list order. `action` takes each of them: their operations have the same names.
template <typename Action>
void ForEachRecorder(const BlockList& blocks, Action action) {
  for (const auto& block : blocks) {
    if (auto* const oscilloscope = qobject_cast<Oscilloscope*>(block.get())) {
      action(*oscilloscope);
    } else if (auto* const dumper = qobject_cast<DataDumper*>(block.get())) {
      action(*dumper);
    } else if (auto* const rates = qobject_cast<SinkRateCounter*>(block.get())) {
      action(*rates);
    }
  }
}

// Configures and starts a recording block, if its kind is enabled.
class RunStarter {
public:
  RunStarter(const StorageSettings& settings, const QString& runId) : settings_(settings), runId_(runId) {}

  void operator()(Oscilloscope& oscilloscope) const {
    if (settings_.enableWave) {
      oscilloscope.ConfigureDump(settings_.eventsPerFile, settings_.wavedumpTimeInterval, settings_.format,
                                 settings_.filePath);
      oscilloscope.StartDump(runId_);
    }
  }
  void operator()(DataDumper& dumper) const {
    if (settings_.enableList) {
      dumper.ConfigureDump(settings_.eventsPerFile, settings_.format, settings_.filePath);
      dumper.StartDump(runId_);
    }
  }
  void operator()(SinkRateCounter& rates) const {
    if (settings_.enableMcs) {
      rates.ConfigureDump(settings_.eventsPerFile, settings_.format, settings_.filePath);
      rates.StartDump(runId_);
    }
  }

private:
  const StorageSettings& settings_;
  const QString& runId_;
};

}  // namespace

korvax_commands::korvax_commands(QObject* parent, const ChainContext& context)
    : KorvaxBlock(QStringLiteral("commands"), false, context, parent) {}

void korvax_commands::InterpretMessage(QString* data_in, QString* data_out) {
  using Handler = QString (korvax_commands::*)(const QJsonObject&);
  static constexpr std::array<std::pair<const char*, Handler>, 10> Commands{{
      {"start", &korvax_commands::Start},
      {"stop", &korvax_commands::Stop},
      {"reset", &korvax_commands::Reset},
      {"start_dump", &korvax_commands::StartDump},
      {"stop_dump", &korvax_commands::StopDump},
      {"pause_dump", &korvax_commands::PauseDump},
      {"restart_dump", &korvax_commands::RestartDump},
      {"get_run_info", &korvax_commands::GetRunInfo},
      {"hv_on", &korvax_commands::HvOn},
      {"hv_off", &korvax_commands::HvOff},
  }};
  const QJsonObject message = QJsonDocument::fromJson(data_in->toUtf8()).object();
  const QString command = message["cmd"].toString();
  const auto found = std::find_if(Commands.begin(), Commands.end(),
                                  [&](const auto& entry) { return command == QLatin1String(entry.first); });
  if (found != Commands.end()) {
    data_out->append((this->*found->second)(message));
  }
}

Source* korvax_commands::FindSource(const QString& name) const {
  const BlockList& blocks = *Context().blocks;
  const auto found =
      std::find_if(blocks.begin(), blocks.end(), [&](const auto& block) { return block->Name() == name; });
  return found == blocks.end() ? nullptr : qobject_cast<Source*>(found->get());
}

QString korvax_commands::Start(const QJsonObject& message) {
  Source* const source = FindSource(message["endpoint"].toString());
  if (source == nullptr) {
    return korvax::answers::UnknownEndpoint();
  }
  source->Run();
  return korvax::answers::Success();
}

QString korvax_commands::Stop(const QJsonObject& message) {
  Source* const source = FindSource(message["endpoint"].toString());
  if (source == nullptr) {
    return korvax::answers::UnknownEndpoint();
  }
  source->Stop();
  return korvax::answers::Success();
}

QString korvax_commands::Reset(const QJsonObject& /*message*/) {
  RestartAcquisition();
  return korvax::answers::Success();
}

void korvax_commands::RestartAcquisition() const {
  ForEach<Source>(*Context().blocks, [](Source& source) {
    source.Stop();
    source.Flush();
    source.Start();
  });
}

QString korvax_commands::StartDump(const QJsonObject& message) {
  const QString runId = message["run_id"].toString();
  const StorageSettings settings = StorageSettings::Load(Context().configurationPath);
  const QString folder = settings.filePath + QLatin1Char('/') + runId;
  if (QFileInfo::exists(folder)) {
    return QStringLiteral("[{\"response\": \"Existing Folder\"}]");
  }
  if (!QDir().mkpath(folder)) {
    qInfo() << "Unable to create run folder" << folder << ": nothing will be recorded. Check write permission.";
  }
  RestartAcquisition();
  ForEachRecorder(*Context().blocks, RunStarter(settings, runId));
  return korvax::answers::Success();
}

QString korvax_commands::StopDump(const QJsonObject& /*message*/) {
  ForEachRecorder(*Context().blocks, [](auto& recorder) { recorder.StopDump(); });
  return korvax::answers::Success();
}

QString korvax_commands::PauseDump(const QJsonObject& /*message*/) {
  ForEachRecorder(*Context().blocks, [](auto& recorder) { recorder.PauseDump(); });
  return korvax::answers::Success();
}

QString korvax_commands::RestartDump(const QJsonObject& /*message*/) {
  ForEachRecorder(*Context().blocks, [](auto& recorder) { recorder.ReStartDump(); });
  return korvax::answers::Success();
}

QString korvax_commands::GetRunInfo(const QJsonObject& /*message*/) {
  QString answer = QStringLiteral("[");
  const char* separator = "";
  ForEach<DataDumper>(*Context().blocks, [&](DataDumper& dumper) {
    answer.append(QLatin1String(separator));
    dumper.GetRunInfo(&answer);
    separator = ",";
  });
  return answer + QLatin1Char(']');
}

QString korvax_commands::HvOn(const QJsonObject& /*message*/) {
  SwitchHighVoltage(QStringLiteral("{\"args\":[{\"cmd\":\"hv_global_on\"}]}"));
  return korvax::answers::Success();
}

QString korvax_commands::HvOff(const QJsonObject& /*message*/) {
  SwitchHighVoltage(QStringLiteral("{\"args\":[{\"cmd\":\"hv_global_off\"}]}"));
  return korvax::answers::Success();
}

void korvax_commands::SwitchHighVoltage(const QString& command) const {
  for (const auto& block : *Context().blocks) {
    auto* const handler = dynamic_cast<QueryHandler*>(block.get());
    if (handler != nullptr && block->BlockType() == QLatin1String("hv")) {
      QString query = command;
      QString ignored;
      handler->InterpretMessage(&query, &ignored);
    }
  }
}
