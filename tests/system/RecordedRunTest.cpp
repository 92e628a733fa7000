#include "tests/support/WaitFor.h"
#include "tests/system/RunTest.h"

#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include <algorithm>
#include <tuple>

namespace test {

namespace {

using korvax::runfiles::Form;

struct Event {
  quint64 timestamp;
  quint32 channel;
  quint32 energy;
  bool operator==(const Event&) const = default;
};
using Events = std::vector<Event>;

constexpr int HeaderSize = 14;  // "KVXS" and ten digits
constexpr int EventSize = 25;
constexpr int ReplayBlock = 512;
constexpr int EventsPerFile = 20'000;
// Events of the test's own on channel 0, which no recording uses, stand before and behind the recording. The first
// file of the run, which the first rollover gives up, holds only such.
constexpr int LeadIn = 40 * ReplayBlock + EventsPerFile;
constexpr int Tail = 300 * ReplayBlock;

QByteArray OwnEvents(quint64 firstTimestamp, int count) {
  QByteArray events(count * EventSize, '\0');
  for (int i = 0; i < count; ++i) {
    qToLittleEndian<quint64>(firstTimestamp + static_cast<quint64>(i), events.data() + i * EventSize);
  }
  return events;
}

Events EventsOf(const QByteArray& file) {
  Events events;
  for (int at = HeaderSize; at + EventSize <= file.size(); at += EventSize) {
    const char* const event = file.constData() + at;
    events.push_back({qFromLittleEndian<quint64>(event), qFromLittleEndian<quint32>(event + 8),
                      qFromLittleEndian<quint32>(event + 12)});
  }
  return events;
}

// Recorded events of real detectors, replayed by the simulated board, are taken as a run and read back.
class RecordedRunTest : public RunTest, public testing::WithParamInterface<std::tuple<const char*, Form>> {
protected:
  Form form = std::get<Form>(GetParam());

  bool PrepareReplay();
  Events ReadRunBack() const;

  Events stream;  // all that the board plays, from its reset on
  std::size_t recordedEvents = 0;
};

bool RecordedRunTest::PrepareReplay() {
  QFile file(QStringLiteral(KORVAX_RECORDED_DATA "/") + QLatin1String(std::get<const char*>(GetParam())));
  if (!file.open(QIODevice::ReadOnly)) {
    return false;
  }
  const QByteArray recording = file.readAll();
  recordedEvents = EventsOf(recording).size();
  const quint64 end = EventsOf(recording).back().timestamp;
  const QByteArray played =
      recording.left(HeaderSize) + OwnEvents(0, LeadIn) + recording.mid(HeaderSize) + OwnEvents(end + 1, Tail);
  stream = EventsOf(played);
  Installation::Write(installation.Path(QStringLiteral("replay.bin")), played);
  installation.AddBoardLibrary(QStringLiteral(KORVAX_SIMULATOR), QStringLiteral("libCAENDig2Sim.so"));
  Change(QStringLiteral("Hardware/0/board_plugin"), QStringLiteral("libCAENDig2Sim"));
  Change(QStringLiteral("Hardware/0/board_connection_string"),
         QStringLiteral("sim:replay?file=%1&speed=0&loop=0&block=%2")
             .arg(installation.Path(QStringLiteral("replay.bin")))
             .arg(ReplayBlock));
  QJsonArray commands;
  for (const char* verb : {"start", "stop", "reset"}) {
    commands << QJsonObject{{"path", QStringLiteral("endpoints\\energy\\") + verb},
                            {"command_type", verb},
                            {"endpoint_type", "energy"}};
  }
  Change(QStringLiteral("Hardware/0/commands"), commands);
  Change(QStringLiteral("processing/0/filter_chain/0/chain/0/parameters/0/param_value"), 3);
  ConfigureRuns(form, EventsPerFile);
  return true;
}

Events RecordedRunTest::ReadRunBack() const {
  Events events;
  for (int index = 0; QFileInfo::exists(File(1, index, form)); ++index) {
    const std::string path = File(1, index, form).toStdString();
    const auto reader = korvax::runfiles::OpenList(path, form);
    korvax::runfiles::ListRecord record;
    while (reader->Next(record)) {
      events.push_back({record.timestamp, record.channel, record.energyRaw});
    }
    EXPECT_FALSE(reader->Fault()) << path << ": " << reader->Fault()->Text();
  }
  return events;
}

TEST_P(RecordedRunTest, GivesBackEveryEventOnceAndInOrderButForWhatIsCounted) {
  if (!PrepareReplay()) {
    GTEST_SKIP() << "there is no " KORVAX_RECORDED_DATA "/" << std::get<const char*>(GetParam());
  }
  StartAndWaitUntilReady();
  EXPECT_EQ(StartRun(1), Success);  // plays from the beginning
  ASSERT_TRUE(WaitFor([this] { return StoredEvents() > LeadIn + 10'000; }));
  EXPECT_EQ(Command("pause_dump"), Success);
  ASSERT_TRUE(WaitFor([this] { return Counts()["discarded"].toInt() > 0; }));
  EXPECT_EQ(Command("restart_dump"), Success);
  const auto played = [this] { return StoredEvents() + Counts()["discarded"].toInt(); };
  const auto enough = static_cast<qint64>(stream.size()) - Tail / 2;
  ASSERT_TRUE(WaitFor([&] { return played() > enough; }));
  const QJsonObject counts = Counts();
  const auto overwritten = static_cast<std::size_t>(counts["overwritten"].toInt());
  const auto discarded = counts["discarded"].toInt();
  EXPECT_EQ(counts["failed"].toInt(), 0);
  EXPECT_EQ(counts["dropped"].toInt(), 0);
  EndServer();

  const Events events = ReadRunBack();
  // Kept: the first rollover gives up the first file, here events of the lead-in alone.
  ASSERT_FALSE(events.empty());
  const auto first = static_cast<std::size_t>(events.front().timestamp);
  EXPECT_GT(overwritten, std::size_t{EventsPerFile});
  EXPECT_LE(overwritten, std::size_t{EventsPerFile + ReplayBlock});
  ASSERT_LT(first, std::size_t{LeadIn}) << "the first file held recorded events";

  const auto gap =
      std::mismatch(events.begin(), events.end(), stream.begin() + static_cast<int>(first), stream.end());
  ASSERT_GE(stream.end() - gap.second, discarded + (events.end() - gap.first));
  EXPECT_TRUE(std::equal(gap.first, events.end(), gap.second + discarded))
      << "event " << (gap.first - events.begin()) << " and behind";
  EXPECT_GT(first + events.size() + static_cast<std::size_t>(discarded), LeadIn + recordedEvents);
}

std::string NameOf(const testing::TestParamInfo<std::tuple<const char*, Form>>& info) {
  const QString file = QString::fromLatin1(std::get<const char*>(info.param)).section(QLatin1Char('_'), 0, 0);
  return file.toStdString() + "_" + NameOfForm({std::get<Form>(info.param), info.index});
}

INSTANTIATE_TEST_SUITE_P(Recorded, RecordedRunTest,
                         testing::Combine(testing::Values("coincidence_LaBr3_CeBr3.bin",
                                                          "singles_LaBr3_LYSO_YAP.bin"),
                                          testing::Values(Form::Binary, Form::Csv, Form::Json)),
                         NameOf);

}  // namespace

}  // namespace test
