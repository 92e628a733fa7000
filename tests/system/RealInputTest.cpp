#include "tests/system/SystemTest.h"

#include <QFile>
#include <QtEndian>

#include <array>

namespace test {

namespace {

constexpr int Bins = 65536;
constexpr int Channels = 8;
constexpr int HeaderSize = 14;  // "KVXS" and ten digits
constexpr int EventSize = 25;
constexpr int BlockEvents = 512;

using Histograms = std::array<std::vector<int>, Channels>;

// Replays recorded events of real detectors through the whole program. The recording stands between events of
// the test's own on channel 0, which no recording uses: a lead-in whose last event, if counted, proves that the
// spectrum ran when the recording began; and a tail of many blocks, which makes up for wake-ups that are lost.
class RealInputTest : public SystemTest, public testing::WithParamInterface<const char*> {
protected:
  enum Energy : int { LeadIn = 1, LeadInEnd = 2, Tail = 3 };

  bool ReplayFrom(int leadInBlocks, const QByteArray& recording);
  Histograms AllCounts();
};

QByteArray Recording(const char* name) {
  QFile file(QStringLiteral(KORVAX_RECORDED_DATA "/") + QLatin1String(name));
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

Histograms HistogramsOf(const QByteArray& file) {
  Histograms histograms;
  histograms.fill(std::vector<int>(Bins, 0));
  for (int at = HeaderSize; at + EventSize <= file.size(); at += EventSize) {
    const auto channel = qFromLittleEndian<quint32>(file.constData() + at + 8);
    const auto energy = qFromLittleEndian<quint32>(file.constData() + at + 12);
    ++histograms.at(channel).at(energy);
  }
  return histograms;
}

// Events of channel 0, in the recording's format.
QByteArray OwnEvents(int energy, int count) {
  QByteArray event(EventSize, '\0');
  event[12] = static_cast<char>(energy);
  event[16] = static_cast<char>(energy);
  return event.repeated(count);
}

Histograms RealInputTest::AllCounts() {
  Histograms counts;
  for (int channel = 0; channel < Channels; ++channel) {
    counts.at(static_cast<std::size_t>(channel)) = Counts(channel);
  }
  return counts;
}

// False when the recording began before the spectrum ran.
bool RealInputTest::ReplayFrom(int leadInBlocks, const QByteArray& recording) {
  constexpr int TailBlocks = 100;
  const QByteArray events = recording.left(HeaderSize) + OwnEvents(LeadIn, leadInBlocks * BlockEvents) +
                            OwnEvents(LeadInEnd, 1) + recording.mid(HeaderSize) +
                            OwnEvents(Tail, TailBlocks * BlockEvents);
  Installation::Write(installation.Path(QStringLiteral("replay.bin")), events);
  StartAndWaitUntilReady();
  RunSpectrum();
  const Histograms expected = HistogramsOf(recording);
  EXPECT_TRUE(WaitForData([this] { return Counts(0)[Tail] >= TailBlocks * BlockEvents / 2; }));

  Histograms counts = AllCounts();
  const int leadInEnds = counts[0][LeadInEnd];
  if (leadInEnds == 0) {
    return false;
  }
  EXPECT_EQ(leadInEnds, 1);
  std::fill_n(counts[0].begin(), Tail + 1, 0);
  for (std::size_t channel = 0; channel < counts.size(); ++channel) {
    EXPECT_TRUE(counts[channel] == expected[channel]) << "channel " << channel;
  }
  return true;
}

TEST_P(RealInputTest, EveryRecordedEventIsCountedOnceInItsBin) {
  const QByteArray recording = Recording(GetParam());
  if (recording.isEmpty()) {
    GTEST_SKIP() << "there is no " KORVAX_RECORDED_DATA "/" << GetParam();
  }
  installation.AddBoardLibrary(QStringLiteral(KORVAX_SIMULATOR), QStringLiteral("libCAENDig2Sim.so"));
  const QString chain = QStringLiteral("processing/0/filter_chain/0/chain/");
  Change(QStringLiteral("Hardware/0/board_plugin"), QStringLiteral("libCAENDig2Sim"));
  Change(QStringLiteral("Hardware/0/board_connection_string"),
         QStringLiteral("sim:replay?file=%1&speed=0&loop=0&block=%2")
             .arg(installation.Path(QStringLiteral("replay.bin")))
             .arg(BlockEvents));
  Change(QStringLiteral("Hardware/0/commands/0/path"), QStringLiteral("\\endpoints\\energy\\start"));
  Change(chain + QStringLiteral("1/parameters/0/param_value"), Bins);
  Change(chain + QStringLiteral("1/parameters/4/param_value"), Bins);
  bool whole = false;
  for (int leadInBlocks = 200; !whole && leadInBlocks < 20'000; leadInBlocks *= 4) {
    whole = ReplayFrom(leadInBlocks, recording);
    EndServer();
  }
  EXPECT_TRUE(whole) << "the spectrum never ran in time";
}

std::string NameOf(const testing::TestParamInfo<const char*>& info) {
  return QString::fromLatin1(info.param).section(QLatin1Char('.'), 0, 0).toStdString();
}

INSTANTIATE_TEST_SUITE_P(Recorded, RealInputTest,
                         testing::Values("coincidence_LaBr3_CeBr3.bin", "singles_LaBr3_LYSO_YAP.bin"), NameOf);

}  // namespace

}  // namespace test
