#include "control/korvax_commands.h"

#include "acquisition/Source.h"
#include "control/BlockDescriptions.h"
#include "control/Ledger.h"
#include "control/StorageSettings.h"
#include "framework/Answers.h"
#include "framework/JsonText.h"
#include "recording/DataDumper.h"
#include "recording/SinkRateCounter.h"
#include "sinks/Oscilloscope.h"

#include <QDir>
#include <QFileInfo>
#include <QtDebug>

#include <algorithm>

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

// The name of the one block that the answer shall tell of; nothing for all.
std::optional<QString> AskedBlock(const QJsonObject& message) {
  const QJsonValue name = message["block"];
  return name.isUndefined() ? std::nullopt : std::optional(name.toString());
}

// Starts a recording block, if its kind is enabled.
class RunStarter {
public:
  RunStarter(const StorageSettings& storage, const QString& runId)
      : storage_(storage),
        settings_{storage.eventsPerFile, storage.wavedumpTimeInterval, storage.format, storage.filePath, runId} {}

  void operator()(Oscilloscope& oscilloscope) const { Start(oscilloscope, storage_.enableWave); }
  void operator()(DataDumper& dumper) const { Start(dumper, storage_.enableList); }
  void operator()(SinkRateCounter& rates) const { Start(rates, storage_.enableMcs); }

private:
  template <typename Recorder>
  void Start(Recorder& recorder, bool isEnabled) const {
    if (isEnabled) {
      recorder.StartRun(settings_);
    }
  }

  const StorageSettings& storage_;
  const korvax::DumpSettings settings_;
};

}  // namespace

korvax_commands::korvax_commands(QObject* parent, const ChainContext& context)
    : KorvaxBlock(QStringLiteral("commands"), false, context, parent),
      book_(*context.blocks, [this] { return HasOpenFiles(); }) {}

void korvax_commands::InterpretMessage(QString* data_in, QString* data_out) {
  const QJsonObject message = korvax::ParseJson(data_in->toUtf8()).object();
  const QString command = message["cmd"].toString();
  if (command == QLatin1String("start")) {
    data_out->append(TellSource(message, &Source::Run));
  } else if (command == QLatin1String("stop")) {
    data_out->append(TellSource(message, &Source::Stop));
  } else if (command == QLatin1String("start_dump")) {
    data_out->append(StartDump(message));
  } else if (command == QLatin1String("get_run_info")) {
    AppendRunInfo(*data_out);
  } else if (command == QLatin1String("get_ledger")) {
    AppendLedger(message, *data_out);
  } else if (command == QLatin1String("get_blocks")) {
    data_out->append(korvax::CompactJson(korvax::DescribeBlocks(*Context().blocks, AskedBlock(message))));
  } else if (Obey(command)) {
    data_out->append(korvax::answers::Success());
  }
}

// The commands without keys or answers of their own.
bool korvax_commands::Obey(const QString& command) {
  const BlockList& blocks = *Context().blocks;
  if (command == QLatin1String("reset")) {
    RestartAcquisition();
  } else if (command == QLatin1String("stop_dump")) {
    ForEachRecorder(blocks, [](auto& recorder) { recorder.StopDump(); });
    book_.Stop();
  } else if (command == QLatin1String("pause_dump")) {
    ForEachRecorder(blocks, [](auto& recorder) { recorder.PauseDump(); });
    book_.NotePause();
  } else if (command == QLatin1String("restart_dump")) {
    ForEachRecorder(blocks, [](auto& recorder) { recorder.ReStartDump(); });
    book_.NoteRestart();
  } else if (command == QLatin1String("hv_on")) {
    TellHighVoltage(QStringLiteral("{\"args\":[{\"cmd\":\"hv_global_on\"}]}"));
  } else if (command == QLatin1String("hv_off")) {
    TellHighVoltage(QStringLiteral("{\"args\":[{\"cmd\":\"hv_global_off\"}]}"));
  } else {
    return false;
  }
  return true;
}

QString korvax_commands::TellSource(const QJsonObject& message, void (Source::*operation)()) const {
  const QString name = message["endpoint"].toString();
  const BlockList& blocks = *Context().blocks;
  const auto found =
      std::find_if(blocks.begin(), blocks.end(), [&](const auto& block) { return block->Name() == name; });
  auto* const source = found == blocks.end() ? nullptr : qobject_cast<Source*>(found->get());
  if (source == nullptr) {
    return korvax::answers::UnknownEndpoint();
  }
  (source->*operation)();
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
  } else if (settings.enableList || settings.enableWave || settings.enableMcs) {
    book_.Begin(folder, runId, Context().configurationPath);
  }
  RestartAcquisition();
  ForEachRecorder(*Context().blocks, RunStarter(settings, runId));
  return korvax::answers::Success();
}

bool korvax_commands::HasOpenFiles() const {
  bool any = false;
  ForEachRecorder(*Context().blocks, [&any](const auto& recorder) { any = any || recorder.HasOpenFile(); });
  return any;
}

void korvax_commands::AppendRunInfo(QString& out) const {
  const char* separator = "";
  out.append(QLatin1Char('['));
  ForEach<DataDumper>(*Context().blocks, [&](const DataDumper& dumper) {
    out.append(QLatin1String(separator));
    dumper.GetRunInfo(&out);
    separator = ",";
  });
  out.append(QLatin1Char(']'));
}

void korvax_commands::AppendLedger(const QJsonObject& message, QString& out) const {
  korvax::Ledger ledger = korvax::Ledger::Of(*Context().blocks);
  if (const auto name = AskedBlock(message)) {
    ledger.KeepOnly(*name);
  }
  out.append(korvax::CompactJson({{QStringLiteral("ledger"), ledger.ToJson()}}));
}

void korvax_commands::TellHighVoltage(const QString& message) const {
  for (const auto& block : *Context().blocks) {
    auto* const handler = dynamic_cast<QueryHandler*>(block.get());
    if (handler != nullptr && block->BlockType() == QLatin1String("hv")) {
      QString query = message;
      QString ignored;
      handler->InterpretMessage(&query, &ignored);
    }
  }
}
