// The first byte of the input selects a block or the routes, the rest is what clients ask there one after the
// other: texts that a byte 0x1E parts. Nothing streams, and run folders can't be made where the configuration
// wants them: no query brings a file about.

#include "control/QueryRoutes.h"
#include "control/korvax_commands.h"
#include "framework/KorvaxBlock.h"
#include "framework/QueryHandler.h"
#include "tests/fuzz/FakeChain.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/fuzz/FuzzProcess.h"

#include <QJsonDocument>

#include <array>

namespace {

constexpr std::uint8_t Separator = 0x1E;

constexpr const char Hardware[] = R"([{"enable":true,"board_name":"B","configs":[{"elements":[
  {"name":"HVSet","path":"\\HVSet","value_type":"u32_array","values":["1","2"],"direct_apply":true},
  {"name":"State","path":"\\State","access":"read_only","value_type":"list_array"},
  {"name":"Temperature","path":"\\Temperature","access":"read_only","value_type":"u32"}]}],
  "endpoints":[{"name":"energy","path":"endpoints\\energy","enable":true}],
  "commands":[{"path":"start","command_type":"start","endpoint_type":"energy"}]}])";

// Each of the types that answer, and a source that run control starts and stops.
constexpr std::array Blocks{
    R"({"name":"spectrum","block_type":"spectrum","parameters":[{"param_name":"bin_number","param_value":8},
        {"param_name":"ch_number","param_value":3}]})",
    R"({"name":"tof","block_type":"tof_histogram","parameters":[{"param_name":"bin_number","param_value":8},
        {"param_name":"ch_number","param_value":3},{"param_name":"binning","param_value":2}]})",
    R"({"name":"position","block_type":"position","parameters":[{"param_name":"positions","param_value":[0,1,0,1]},
        {"param_name":"correlated_channels","param_value":[2,3,0,1]},{"param_name":"y_positions","param_value":3}]})",
    R"({"name":"image","block_type":"image","parameters":[{"param_name":"x_positions","param_value":[0,1]},
        {"param_name":"y_positions","param_value":[0,1]}]})",
    R"({"name":"scope","block_type":"oscilloscope","parameters":[{"param_name":"sample_number","param_value":4},
        {"param_name":"ch_number","param_value":3},{"param_name":"ch_analog","param_value":2},
        {"param_name":"ch_digital","param_value":2}]})",
    R"({"name":"rates","block_type":"rate_counters_sink","parameters":[{"param_name":"history_depth",
        "param_value":3},{"param_name":"channel_map","param_value":["a","b"]}]})",
    R"({"name":"dumper","block_type":"dumper"})",
    R"({"name":"hv","block_type":"hv","sources":[{"source":"B"}],"parameters":[{"param_name":"n_channels",
        "param_value":2}]})",
    R"({"name":"source","block_type":"source","data_type":"waveform"})",
};

constexpr std::array RestoringQueries{
    R"({"args":[{"cmd":"run_control","status":"idle"}]})",
    R"({"cmd":"set_channel","ch_enable":[0,0,0]})",
    R"({"cmd":"set_dump_events","dump_events":0})",
    R"({"cmd":"set_dump_time","dump_time":0})",
    R"({"cmd":"set_dump_type","file_type":""})",
    R"({"cmd":"set_dump_path","file_path":""})",
    R"({"cmd":"stop_dump"})",
    R"({"file_type":"","file_path":"","args":[{"cmd":"set_dump_type"}]})",
    R"({"args":[{"cmd":"stop_dump"}]})",
};

// The block behind these acts on others, and is reached by its route.
constexpr std::size_t RunControl = Blocks.size();

QByteArray Processing(const QByteArray& blocks) {
  return R"([{"filter_chain":[{"name":"c","enable":true,"chain":[)" + blocks + "]}]}]";
}

QJsonArray Array(const QByteArray& json) {
  return QJsonDocument::fromJson(json).array();
}

// A folder below a regular file can't be made, whatever the run is called.
QString ConfigurationFile() {
  static const QString path = fuzz::WriteScratchFile(
      QStringLiteral("configuration.json"),
      R"({"storage":{"format":"CSV","enable_list":true,"enable_wave":true,"enable_mcs":true,"file_path":")" +
          fuzz::ScratchFolder().toUtf8() + R"(/configuration.json/storage"}})");
  return path;
}

// All blocks, and run control behind them. Kept from input to input, as threads take long to start.
class Chain {
public:
  Chain() {
    QByteArray blocks;
    for (const char* const block : Blocks) {
      blocks += (blocks.isEmpty() ? "" : ",") + QByteArray(block);
    }
    chain_.AddBoards(Array(Hardware));
    chain_.AddBlocks(Array(Processing(blocks)), ConfigurationFile());
    chain_.blocks.push_back(std::make_unique<korvax_commands>(
        nullptr, ChainContext{&chain_.boards, &chain_.blocks, {}, ConfigurationFile()}));
    chain_.blocks.back()->SetName(QStringLiteral("commands"));
  }

  void Ask(std::size_t block, QString query) {
    QString answer;
    if (auto* const handler = dynamic_cast<QueryHandler*>(chain_.blocks.at(block).get())) {
      handler->InterpretMessage(&query, &answer);
    }
  }
  // A route, a line end and a message.
  void AskRoute(const QString& text) {
    korvax::AnswerQuery(chain_.blocks, text.section(QLatin1Char('\n'), 0, 0), text.section(QLatin1Char('\n'), 1));
  }

  std::size_t Count() const { return chain_.blocks.size(); }

  // What the queries of one input have set, the next one must not find.
  void Restore(std::size_t block) {
    for (const char* const query : RestoringQueries) {
      Ask(block, QLatin1String(query));
    }
    chain_.vendor.ClearCalls();
  }
  void RestoreAll() {
    for (std::size_t block = 0; block < Count(); ++block) {
      Restore(block);
    }
  }

private:
  fuzz::FakeChain chain_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Prepare();
  static Chain chain;
  fuzz::Input input(data, size);
  // 'a' for the first block, so that inputs are readable.
  const auto selected = static_cast<std::size_t>(input.Take<std::uint8_t>() - 'a');
  if (selected < RunControl) {
    while (!input.IsEmpty()) {
      chain.Ask(selected, QString::fromUtf8(input.TextUpTo(Separator)));
    }
    chain.Restore(selected);
  } else {
    while (!input.IsEmpty()) {
      chain.AskRoute(QString::fromUtf8(input.TextUpTo(Separator)));
    }
    chain.RestoreAll();
  }
  return 0;
}
