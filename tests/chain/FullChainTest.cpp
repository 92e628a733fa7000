#include "recording/DataDumper.h"
#include "runfiles/ListFiles.h"
#include "sinks/Image.h"
#include "sinks/Position.h"
#include "sinks/time_distribution.h"
#include "tests/chain/FilterChainFixture.h"
#include "tests/support/RunFolder.h"
#include "tests/support/SinkModels.h"

#include <random>

namespace {

constexpr int Pairs = 3'000;
constexpr quint32 Flush = 7;  // the channel of events that only push others out of the sorter

// source - tee - spectrum
//             \- sorter - tee - position, time distribution, image, spectrum, dumper
class AFullChain : public FilterChainFixture {
protected:
  AFullChain() {
    Link(*source, *tee);
    LinkOutput(*tee, 0, *before);
    LinkOutput(*tee, 1, *sorter);
    Link(*sorter, *fan);
    LinkOutput(*fan, 0, *position);
    LinkOutput(*fan, 1, *times);
    LinkOutput(*fan, 2, *image);
    LinkOutput(*fan, 3, *after);
    LinkOutput(*fan, 4, *dumper);
    RunSink(*before);
    RunSink(*after);
    RunSink(*position);
    RunSink(*image);
    dumper->StartRun({.eventsPerFile = 1'000'000, .fileType = "BIN", .filePath = folder.Root(), .runId = "run_1"});
  }
  ~AFullChain() override { Stop(); }

  // As at the end of the process.
  void Stop() {
    for (KorvaxBlock* const block : Blocks()) {
      block->StopWorker();
    }
  }
  std::vector<KorvaxBlock*> Blocks() const {
    return {source.get(),   tee.get(),   before.get(), sorter.get(), fan.get(),
            position.get(), times.get(), image.get(),  after.get(),  dumper.get()};
  }
  void WakeAll() {
    for (KorvaxBlock* const block : Blocks()) {
      if (!block->Inputs().empty()) {
        emit block->Inputs()[0]->DataReady(0);
      }
    }
  }

  // Pair p: one event each on channels 0 and 1, of energy p + 1, 10 ns apart, p µs after the first pair. Events
  // come in blocks of a few, those of a pair in either order.
  void OfferPairs() {
    std::mt19937 random(20260401);
    for (int pair = 0; pair < Pairs;) {
      test::RawBlock block;
      for (auto count = random() % 8 + 1; count > 0 && pair < Pairs; --count, ++pair) {
        const auto energy = static_cast<quint32>(pair + 1);
        const quint32 first = random() % 2;
        const quint64 time = static_cast<quint64>(pair) * 1000;
        block.Add(test::EnergyRecord(first, energy, time + 10 * first));
        block.Add(test::EnergyRecord(1 - first, energy, time + 10 * (1 - first)));
      }
      digitizer.Offer(std::move(block));
    }
  }
  void OfferFlush() { digitizer.Offer(test::OneEvent(Flush, 0, 1'000'000'000)); }

  void ExpectEachEventOnceInEachBranch() {
    std::vector<int> energies(Pairs + 1, 1);
    energies[0] = 0;
    std::vector<int> bins(Pairs + 1, 1);
    bins[Pairs] = 0;
    for (int channel : {0, 1}) {
      EXPECT_EQ(Counts(*before, channel), energies);
      EXPECT_EQ(Counts(*after, channel), energies);
      const QString query = QStringLiteral(R"({"cmd":"get_data","channels":[%1]})").arg(channel);
      EXPECT_EQ(AskSink(*times, query.toLatin1().constData()), test::ChannelsText({bins}));
    }
    EXPECT_EQ(AskSink(*image, R"({"cmd":"get_data","source":"cumulative"})"), test::RowsText({{Pairs, Pairs}}));
    test::Counters map(256, {0});
    map[128][0] = Pairs;
    EXPECT_EQ(AskSink(*position, R"({"cmd":"get_data","source":"heatmap"})"), test::RowsText(map));
    ExpectEachEventOnceInTheFile();
  }
  // In the order of time.
  void ExpectEachEventOnceInTheFile() {
    const auto reader =
        korvax::runfiles::OpenList(folder.Path("run_1/sink_0.bin").toStdString(), korvax::runfiles::Form::Binary);
    int events = 0;
    for (korvax::runfiles::ListRecord record; reader->Next(record);) {
      if (record.channel != Flush) {
        EXPECT_EQ(record.channel, static_cast<quint32>(events % 2)) << events;
        EXPECT_EQ(record.energyRaw, static_cast<quint32>(events / 2 + 1)) << events;
        ++events;
      }
    }
    EXPECT_FALSE(reader->Fault());
    EXPECT_EQ(events, 2 * Pairs);
  }
  bool IsThrough() {
    return Total(*before, 2) == 2 * Pairs && Total(*after, 2) == 2 * Pairs && LastBinOf(*times) == 1 &&
           AskSink(*image, R"({"cmd":"get_data","source":"cumulative"})") == test::RowsText({{Pairs, Pairs}});
  }
  static int LastBinOf(time_distribution& sink) {
    const QString answer = AskSink(sink, R"({"cmd":"get_data","channels":[1]})");
    return test::Array(answer.toUtf8())[0].toObject()["data"].toArray()[Pairs - 1].toInt();
  }

  test::RunFolder folder;
  std::unique_ptr<Source> source = MakeSource();
  std::unique_ptr<Process_Tee> tee = MakeTee(2);
  std::unique_ptr<Histogram> before = MakeSpectrum(Pairs + 1, 8);
  std::unique_ptr<Process_Time_Sorting> sorter = MakeSorter();
  std::unique_ptr<Process_Tee> fan = MakeTee(5);
  std::unique_ptr<Position> position = Make<Position>(test::Array(R"([
      {"param_name":"positions","param_value":[0,0]},{"param_name":"correlated_channels","param_value":[1,0]}])"));
  std::unique_ptr<time_distribution> times = Make<time_distribution>(
      {Parameter("binning", 1000), Parameter("bin_number", Pairs + 1), Parameter("ch_number", 8)});
  std::unique_ptr<Image> image = Make<Image>(test::Array(R"([
      {"param_name":"x_positions","param_value":[0,0]},{"param_name":"y_positions","param_value":[0]}])"));
  std::unique_ptr<Histogram> after = MakeSpectrum(Pairs + 1, 8);
  std::unique_ptr<DataDumper> dumper = Make<DataDumper>({});
};

TEST_F(AFullChain, countsEachEventOnceInEachBranch) {
  OfferPairs();
  source->Run();
  EXPECT_TRUE(test::WaitFor([this] {
    if (digitizer.IsExhausted()) {
      OfferFlush();
    }
    WakeAll();
    return IsThrough();
  }));
  Stop();
  ExpectEachEventOnceInEachBranch();
}

TEST_F(AFullChain, stoppedInItsOrderLosesNothingButWhatWaitsInTheSorter) {
  OfferPairs();
  OfferFlush();
  source->Run();
  ASSERT_TRUE(WaitUntilExhaustedWithoutSignals());
  Stop();
  ExpectEachEventOnceInEachBranch();
}

}  // namespace
