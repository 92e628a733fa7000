#include "tests/support/SortingModel.h"
#include "tests/support/WaitFor.h"
#include "tests/system/ChainText.h"
#include "tests/system/RunTest.h"
#include "tests/system/SinkAnswers.h"

#include <algorithm>
#include <numeric>
#include <tuple>

namespace test {

namespace {

constexpr int ReplayBlock = 256;
constexpr quint64 Second = 1'000'000'000;
constexpr quint64 BinWidth = 5 * Second;
constexpr int Bins = 4096;
constexpr int LeadInEndRow = 192;
constexpr int TailRow = 64;
constexpr std::size_t OwnColumn = 3;

// Recorded events of real detectors, replayed through source, tee, sorter and a second tee into two position maps,
// a time distribution and a dumper; another time distribution stands before the sorter. No event of this recording
// stands further than a few places from where it belongs, so none comes too late for its group, however long the
// sorter waits.
//
// The recording stands between events of the test's own. Pairs on the channels 2 and 3 end the lead-in, which
// shows that everything ran in time, and make up the tail, which pushes all recorded events out of the sorter.
class SortedReplayTest : public RunTest {
protected:
  SortedReplayTest();

  void MakePlayed(const RecordedEvents& recording, int leadInBlocks);
  bool PlayAndRecord(int run);
  void ExpectNewestPointInTheScatter();
  void ExpectMapsAndTimes();
  void ExpectWhatWasRecorded(int run);

  QString AskBlock(const QString& name, const QByteArray& args) {
    return Tell(QStringLiteral("query_by_json"), Query(Path(name), args));
  }
  static QString Path(const QString& name) {
    return QStringLiteral("processing/0/filter_chain/main/chain/") + name;
  }
  Counters Map(const QString& name) { return RowsIn(AskBlock(name, R"({"cmd":"get_data","source":"heatmap"})")); }
  Counters Times(const QString& name) {
    return ChannelsIn(AskBlock(name, R"({"cmd":"get_data","channels":[0,1,2,3,4,5,6,7]})"));
  }

  static StripSettings Strips(int partner) {
    StripSettings settings{std::vector<int>(8, 0), std::vector<int>(8, -1)};
    const auto other = static_cast<std::size_t>(partner);
    settings.partners[1] = partner;
    settings.partners[other] = 1;
    settings.positions[1] = settings.positions[other] = partner == 6 ? 1 : 2;
    settings.partners[2] = 3;
    settings.partners[3] = 2;
    settings.positions[2] = settings.positions[3] = OwnColumn;
    settings.cutMin = partner == 6 ? 0.0 : 400.0;
    return settings;
  }
  static QJsonObject StripsBlock(int partner, const char* pin);

  std::size_t TailBin() const { return tailBegin / BinWidth; }

  RecordedEvents played;
  quint64 leadInEnd = 0;  // timestamps
  quint64 tailBegin = 0;
};

QJsonArray Numbers(const std::vector<int>& numbers) {
  QJsonArray array;
  std::copy(numbers.begin(), numbers.end(), std::back_inserter(array));
  return array;
}

QJsonObject SortedReplayTest::StripsBlock(int partner, const char* pin) {
  const StripSettings settings = Strips(partner);
  return WithParameters(Block("position", partner == 6 ? "strips6" : "strips7", "fan", pin),
                        {{"positions", Numbers(settings.positions)},
                         {"correlated_channels", Numbers(settings.partners)},
                         {"energy_cut_min", settings.cutMin}});
}

SortedReplayTest::SortedReplayTest() {
  ConfigureRuns(Form::Binary, 10'000'000);
  const QJsonObject axis{{"binning", 5e9}, {"bin_number", Bins}, {"ch_number", 8}};
  configuration =
      WithChain(configuration, {Tee("split", "source", 2), Block("time_sorting", "sorter", "split", "0"),
                                WithParameters(Block("tof_histogram", "before", "split", "1"), axis),
                                Tee("fan", "sorter", 4), StripsBlock(6, "0"), StripsBlock(7, "1"),
                                WithParameters(Block("tof_histogram", "after", "fan", "2"), axis),
                                Block("dumper", "dumper", "fan", "3")});
  installation.AddBoardLibrary(QStringLiteral(KORVAX_SIMULATOR), QStringLiteral("libCAENDig2Sim.so"));
  Change(QStringLiteral("Hardware/0/board_plugin"), QStringLiteral("libCAENDig2Sim"));
  Change(QStringLiteral("Hardware/0/board_connection_string"),
         QStringLiteral("sim:replay?file=%1&speed=0&loop=0&channels=8&block=%2")
             .arg(installation.Path(QStringLiteral("replay.bin")))
             .arg(ReplayBlock));
  Change(QStringLiteral("Hardware/0/commands/0/path"), QStringLiteral("\\endpoints\\energy\\start"));
}

void SortedReplayTest::MakePlayed(const RecordedEvents& recording, int leadInBlocks) {
  constexpr int TailBlocks = 60;
  played.clear();
  for (int i = 0; i < leadInBlocks * ReplayBlock; ++i) {
    played.push_back({static_cast<quint64>(i) * 1000, 0, 1});
  }
  leadInEnd = Second;
  played.push_back({leadInEnd, 2, 300});
  played.push_back({leadInEnd + 10, 3, 100});
  quint64 latest = 0;
  for (const RecordedEvent& event : recording) {
    played.push_back({event.timestamp + 2 * Second, event.channel, event.energyRaw});
    latest = std::max(latest, played.back().timestamp);
  }
  tailBegin = (latest / BinWidth + 2) * BinWidth;
  for (quint64 i = 0; i < TailBlocks * ReplayBlock / 2; ++i) {
    played.push_back({tailBegin + i * 1000, 2, 100});
    played.push_back({tailBegin + i * 1000 + 10, 3, 300});
  }
}

// False when something ran too late, or so fast that the sorter had to drop messages.
bool SortedReplayTest::PlayAndRecord(int run) {
  Installation::Write(installation.Path(QStringLiteral("replay.bin")), ListFileOf(played));
  StartAndWaitUntilReady();
  for (const char* block : {"strips6", "strips7"}) {
    EXPECT_EQ(AskBlock(QLatin1String(block), R"({"cmd":"run_control","status":"freerun"})"), Success);
  }
  EXPECT_EQ(StartRun(run), Success);
  const auto tailCounts = [this](const Counters& times) { return times[2][TailBin()] + times[3][TailBin()]; };
  const bool through = WaitFor([&] {
    return Map("strips6")[TailRow][OwnColumn] > 0 && Map("strips7")[TailRow][OwnColumn] > 0 &&
           tailCounts(Times("before")) > 0 && tailCounts(Times("after")) > 0;
  });
  EXPECT_TRUE(through);
  const bool inTime = Map("strips6")[LeadInEndRow][OwnColumn] == 1 && Map("strips7")[LeadInEndRow][OwnColumn] == 1;
  return inTime && !server.ErrorLines().contains(QStringLiteral("Order buffer full!"));
}

// Nobody has read the scatter: it holds the lead-in's first frames, which have no points, and the newest of the
// tail.
void SortedReplayTest::ExpectNewestPointInTheScatter() {
  for (const char* block : {"strips6", "strips7"}) {
    EXPECT_EQ(AskBlock(QLatin1String(block), R"({"cmd":"get_data","source":"scatter"})"),
              QStringLiteral(R"({"data":[{"x":[3]},{"y":[0.25]}]})"))
        << block;
  }
}

void SortedReplayTest::ExpectMapsAndTimes() {
  StripModel six(Strips(6));
  StripModel seven(Strips(7));
  for (const RecordedEvents& group : GroupsOf(played)) {
    six.Take(group);
    seven.Take(group);
  }
  const auto withoutTail = [](Counters map) {
    map[TailRow][OwnColumn] = 0;
    return map;
  };
  EXPECT_EQ(withoutTail(Map("strips6")), withoutTail(six.Map()));
  EXPECT_EQ(withoutTail(Map("strips7")), withoutTail(seven.Map()));
  EXPECT_GT(seven.RejectedPairs(), 0);
  EXPECT_EQ(server.ErrorLines().count(QStringLiteral("Discrding energy")), seven.RejectedPairs());

  RecordedEvents beforeTail = played;
  const auto isTail = [this](const RecordedEvent& event) { return event.timestamp >= tailBegin; };
  std::erase_if(beforeTail, isTail);
  const Counters expected = TimeHistograms(beforeTail, 5e9, Bins, 8);
  for (const char* block : {"before", "after"}) {
    Counters times = Times(QLatin1String(block));
    times[2][TailBin()] = times[3][TailBin()] = 0;
    EXPECT_TRUE(times == expected) << block;
  }
}

// The run's file holds all that has left the sorter, in order; the rest is what waited there at the end.
void SortedReplayTest::ExpectWhatWasRecorded(int run) {
  const RecordedEvents recorded = EventsOfFile(File(run, 0, Form::Binary));
  ASSERT_FALSE(recorded.empty());
  ASSERT_LE(recorded.front().timestamp, leadInEnd) << "the run began too late";
  EXPECT_TRUE(std::is_sorted(recorded.begin(), recorded.end(),
                             [](const auto& a, const auto& b) { return a.timestamp < b.timestamp; }));
  const QStringList waiting = server.ErrorLines().filter(QStringLiteral("events that were still waiting"));
  ASSERT_EQ(waiting.size(), 1);
  const auto remained =
      waiting[0].section(QStringLiteral("ends with "), 1).section(QLatin1Char(' '), 0, 0).toLongLong();
  EXPECT_GT(remained, 0);

  const auto settled = [](RecordedEvents events) {
    std::sort(events.begin(), events.end(), [](const RecordedEvent& a, const RecordedEvent& b) {
      return std::tie(a.timestamp, a.channel, a.energyRaw) < std::tie(b.timestamp, b.channel, b.energyRaw);
    });
    return events;
  };
  const RecordedEvents all = settled(played);
  const RecordedEvents part = settled(recorded);
  const auto begin = std::find(all.begin(), all.end(), part.front());
  ASSERT_GE(all.end() - begin, static_cast<std::ptrdiff_t>(part.size()));
  EXPECT_TRUE(std::equal(part.begin(), part.end(), begin));
  EXPECT_GE(part.back().timestamp, tailBegin);
  const auto read = (begin - all.begin()) + static_cast<std::ptrdiff_t>(part.size()) + remained;
  const bool wholeBlocks = read % ReplayBlock == 0 || read == static_cast<std::ptrdiff_t>(all.size());
  EXPECT_TRUE(wholeBlocks) << read << " events have come and " << remained << " remained";
}

TEST_F(SortedReplayTest, EveryBranchHasWhatTheRulesMakeOfTheRecording) {
  const RecordedEvents recording =
      EventsOfFile(QStringLiteral(KORVAX_RECORDED_DATA "/coincidence_LaBr3_CeBr3.bin"));
  if (recording.empty()) {
    GTEST_SKIP() << "there is no " KORVAX_RECORDED_DATA "/coincidence_LaBr3_CeBr3.bin";
  }
  bool whole = false;
  for (int factor = 1; !whole && factor <= 64; factor *= 4) {
    MakePlayed(recording, 50 * factor);
    Change(QStringLiteral("processing/0/filter_chain/0/chain/0/parameters/0/param_value"), 10 * factor);
    whole = PlayAndRecord(factor);
    if (whole) {
      ExpectNewestPointInTheScatter();
      ExpectMapsAndTimes();
    }
    EndServer();
    if (whole) {
      ExpectWhatWasRecorded(factor);
    }
  }
  EXPECT_TRUE(whole) << "the maps never ran in time, or the sorter's buffer was always full";
}

}  // namespace

}  // namespace test
