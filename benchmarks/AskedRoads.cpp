#include "benchmarks/AskedRoads.h"

#include "benchmarks/Inputs.h"
#include "benchmarks/Roads.h"
#include "framework/KorvaxBlock.h"
#include "framework/QueryHandler.h"

#include <QEventLoop>
#include <QTimer>

#include <optional>

namespace bench {

namespace {

constexpr int ManyBins = 16384;

QString LargeSpectrum() {
  return QStringLiteral(R"({"block_type": "spectrum", "name": "a", "input_count": 1,
    "sources": [{"source": "source", "pin": "0"}], "parameters": [{"param_name": "gain", "param_value": 4},
    {"param_name": "bin_number", "param_value": %1}, {"param_name": "ch_number", "param_value": %2}]})")
      .arg(ManyBins)
      .arg(Channels);
}

constexpr const char* Path = "processing/0/filter_chain/c/chain/a";

QString AskForChannels(int channels) {
  QStringList numbers;
  for (int channel = 0; channel < channels; ++channel) {
    numbers << QString::number(channel);
  }
  return QStringLiteral(R"({"path": "%1", "args": [{"cmd": "get_data", "channels": [%2]}]})")
      .arg(QLatin1String(Path), numbers.join(QLatin1Char(',')));
}

// Answers with a text that is ready.
class ReadyText : public KorvaxBlock, public QueryHandler {
public:
  explicit ReadyText(const QString& text)
      : KorvaxBlock(QStringLiteral("ready"), false, ChainContext{}, nullptr), text_(text) {
    SetName(QStringLiteral("ready"));
  }
  void InterpretMessage(QString* /*data_in*/, QString* data_out) override { *data_out = text_; }
  QueryReach Reach() const override { return QueryReach::ByName; }

private:
  const QString text_;
};

// Some seconds of one client that asks for everything as fast as it is answered.
Result AnswerOf(const BlockList& blocks, const QString& route, const QString& query) {
  OutsideClients client(blocks, route, query, 1, 0);
  QEventLoop loop;
  QTimer::singleShot(2'000, &loop, &QEventLoop::quit);
  const Cost cost = Measure([&] { loop.exec(); });
  Result result;
  result.answers = client.Finish();
  result.cpuNs = cost.cpuSeconds / static_cast<double>(result.answers.answers) * 1e9;
  return result;
}

}  // namespace

Result ToAskedSpectrum(qint64 blocks, double eventsPerSecond, const Asking& asking) {
  Road road(QStringLiteral("energy"), QString(), LargeSpectrum());
  road.StartCounting(QStringLiteral("a"));
  std::optional<OutsideClients> clients;
  if (asking.clients > 0) {
    clients.emplace(road.Blocks(), QStringLiteral("query_by_json"), AskForChannels(asking.channels),
                    asking.clients, asking.intervalMs);
  }
  Load(blocks, eventsPerSecond);
  Result result = ResultOf(road.Run());
  if (clients) {
    result.answers = clients->Finish();
  }
  return result;
}

Result AnswerOfSpectrum(qint64 blocks) {
  Road road(QStringLiteral("energy"), QString(), LargeSpectrum());
  road.StartCounting(QStringLiteral("a"));
  Load(blocks, 0);
  road.Run();
  return AnswerOf(road.Blocks(), QStringLiteral("query_by_json"), AskForChannels(Channels));
}

Result AnswerOfReadyText(qint64 blocks) {
  Road road(QStringLiteral("energy"), QString(), LargeSpectrum());
  road.StartCounting(QStringLiteral("a"));
  Load(blocks, 0);
  road.Run();
  BlockList ready;
  ready.push_back(std::make_unique<ReadyText>(road.Ask(QStringLiteral("a"), AskForChannels(Channels))));
  return AnswerOf(ready, QStringLiteral("ready"), QStringLiteral("{}"));
}

}  // namespace bench
