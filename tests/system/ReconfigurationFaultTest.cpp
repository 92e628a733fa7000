#include "tests/system/ReconfigurationFixture.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <random>

namespace test {

namespace {

struct Spoiler {
  const char* name;
  void (*spoil)(const QString& path, const QByteArray& good);
};

void PrintTo(const Spoiler& value, std::ostream* out) {
  *out << value.name;
}

// What stands at the path of the configuration is spoiled during a run: no board hears of it, the run goes on, and
// a good file is applied afterwards.
class SpoiledConfiguration : public ReconfigurationFixture {
protected:
  void SetUp() override {
    for (const QString& folder : {installation.StoragePath(), board.Connection(), other.Connection()}) {
      QFile::setPermissions(folder, static_cast<QFile::Permissions>(0x7777));
    }
    server.RunUnprivileged();  // there are files that it can't read
    StartRecording();
  }

  void Spoil(const Spoiler& spoiler) { spoiler.spoil(installation.ConfigurationPath(), WithThresholds(666, 777)); }
  void GoOn() {
    const qint64 stored = StoredEvents();
    ASSERT_TRUE(FeedUntil([&] { return StoredEvents() > stored + 500; }));
  }
  // Nothing was logged since the start but what a configuration and a run log.
  void ExpectUsualLines() const {
    static const QRegularExpression usual(QStringLiteral(
        R"re(^(?: ---- RECONFIG BOARD:  "BOARD[01]"  ----|Set "\\\\.*"|Apply  ".*" .*RES:  | TIMER STAT  \d+)$)re"));
    const QStringList lines = server.ErrorLines();
    const int ready = lines.indexOf(QStringLiteral("KORVAX IS STARTED AND READY"));
    for (const QString& line : lines.mid(ready + 1)) {
      EXPECT_TRUE(usual.match(line).hasMatch()) << qPrintable(line);
    }
  }
  // Whatever stands there.
  void Clear() const {
    const QString path = installation.ConfigurationPath();
    if (!QFile::remove(path)) {
      QDir(path).removeRecursively();
    }
  }
};

class ReconfigurationFaultTest : public SpoiledConfiguration, public testing::WithParamInterface<Spoiler> {};
using ReconfigurationFaultsTest = SpoiledConfiguration;

void Write(const QString& path, const QByteArray& text) {
  Installation::Write(path, text);
}

// Puts a file in the place of the one that is there.
void PutInPlace(const QString& path, const QByteArray& text, QFile::Permissions permissions) {
  const QString next = path + QStringLiteral(".next");
  Write(next, text);
  QFile::setPermissions(next, permissions);
  EXPECT_EQ(std::rename(qPrintable(next), qPrintable(path)), 0);
}

constexpr QFile::Permissions NobodyReads;
constexpr QFile::Permissions EverybodyReads = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther;

QByteArray WithHardware(const QByteArray& value) {
  return "{\"Hardware\": " + value + "}";
}

const Spoiler Spoilers[] = {
    {"AnEmptyFile", [](const QString& path, const QByteArray&) { Write(path, {}); }},
    {"HalfAFile", [](const QString& path, const QByteArray& good) { Write(path, good.left(good.size() / 2)); }},
    {"AllButTheLastBracket",
     [](const QString& path, const QByteArray& good) { Write(path, good.left(good.lastIndexOf('}'))); }},
    {"GoodTextAndMore", [](const QString& path, const QByteArray& good) { Write(path, good + good); }},
    {"BinaryJunk",
     [](const QString& path, const QByteArray&) {
       std::mt19937 random(1);
       QByteArray junk(1'000'000, '\0');
       std::generate(junk.begin(), junk.end(), [&] { return static_cast<char>(random()); });
       Write(path, junk);
     }},
    {"MegabytesOfBrackets",
     [](const QString& path, const QByteArray&) { Write(path, QByteArray(8'000'000, '[')); }},
    {"AnArray", [](const QString& path, const QByteArray& good) { Write(path, "[" + good + "]"); }},
    {"NoHardware", [](const QString& path, const QByteArray&) { Write(path, "{\"storage\": {}}"); }},
    {"HardwareOfAText", [](const QString& path, const QByteArray&) { Write(path, WithHardware("\"BOARD0\"")); }},
    {"HardwareOfANumber", [](const QString& path, const QByteArray&) { Write(path, WithHardware("17")); }},
    {"HardwareOfAnObject",
     [](const QString& path, const QByteArray&) { Write(path, WithHardware("{\"board_name\": \"BOARD0\"}")); }},
    {"HardwareOfOddEntries",
     [](const QString& path, const QByteArray&) {
       Write(path, WithHardware(R"([null, 1, "BOARD0", [{"board_name": "BOARD0"}], {}, {"board_name": 0},
                                    {"board_name": ["BOARD0"]}, {"board_name": "board0"}, {"board_name": ""}])"));
     }},
    {"NoFile", [](const QString& path, const QByteArray&) { QFile::remove(path); }},
    {"AFileThatCannotBeRead",
     [](const QString& path, const QByteArray& good) { PutInPlace(path, good, NobodyReads); }},
    {"AFolder",
     [](const QString& path, const QByteArray&) {
       QFile::remove(path);
       QDir().mkpath(path + QStringLiteral("/Hardware"));
     }},
    {"ALinkToNowhere",
     [](const QString& path, const QByteArray&) {
       QFile::remove(path);
       QFile::link(path + QStringLiteral(".missing"), path);
     }},
};

TEST_P(ReconfigurationFaultTest, TouchesNoBoardAndAGoodFileIsAppliedAfterwards) {
  Spoil(GetParam());
  GoOn();
  EXPECT_EQ(ThresholdsOf(board), std::vector<int>{100});
  EXPECT_EQ(ThresholdsOf(other), std::vector<int>{100});
  EXPECT_EQ(ReconfigurationsOf("BOARD0"), 0);

  Clear();
  Overwrite(WithThresholds(250, 300));
  EXPECT_TRUE(FeedUntilThreshold(board, 250));
  EXPECT_TRUE(FeedUntilThreshold(other, 300));
  EXPECT_EQ(ThresholdsOf(board)[1], 250);
  ExpectUnharmedRun();
}

std::string NameOf(const testing::TestParamInfo<Spoiler>& info) {
  return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(EverySpoiler, ReconfigurationFaultTest, testing::ValuesIn(Spoilers), NameOf);

TEST_F(ReconfigurationFaultsTest, InAnyOrderLeaveTheServerListening) {
  std::mt19937 random(20260501);
  for (int round = 0; round < 150; ++round) {
    const QFileInfo file(installation.ConfigurationPath());
    if (random() % 3 != 0 || !file.isFile() || !file.isReadable()) {
      Clear();
    }
    Spoil(Spoilers[random() % std::size(Spoilers)]);
    Feed();
    ASSERT_EQ(Status(), 1);
  }
  Clear();
  for (int threshold = 250; threshold < 253; ++threshold) {
    Replace(WithThresholds(threshold, threshold + 100));
    ASSERT_TRUE(FeedUntilThreshold(board, threshold));
    ASSERT_TRUE(FeedUntilThreshold(other, threshold + 100));
  }
  const std::vector<int> thresholds = ThresholdsOf(board);
  EXPECT_EQ(std::count(thresholds.begin(), thresholds.end(), 666), 0);
  ExpectUnharmedRun();
}

TEST_F(ReconfigurationFaultsTest, AFileThatCannotBeReadForAWhileIsAppliedAsSoonAsItCan) {
  const QString path = installation.ConfigurationPath();
  ASSERT_TRUE(QFile::setPermissions(path, NobodyReads));
  GoOn();
  EXPECT_EQ(ReconfigurationsOf("BOARD0"), 0);
  ASSERT_TRUE(QFile::setPermissions(path, EverybodyReads));
  EXPECT_TRUE(FeedUntil([this] { return ReconfigurationsOf("BOARD1") == 1; }));
  Overwrite(WithThresholds(250, 300));
  EXPECT_TRUE(FeedUntilThreshold(board, 250));
  EXPECT_TRUE(FeedUntilThreshold(other, 300));
  ExpectUnharmedRun();
  ExpectUsualLines();
}

TEST_F(ReconfigurationFaultsTest, AFileThatWasPutInPlaceUnreadableIsAppliedAsSoonAsItCanBeRead) {
  const QString path = installation.ConfigurationPath();
  PutInPlace(path, WithThresholds(250, 300), NobodyReads);
  GoOn();
  EXPECT_EQ(ReconfigurationsOf("BOARD0"), 0);
  ASSERT_TRUE(QFile::setPermissions(path, EverybodyReads));
  EXPECT_TRUE(FeedUntilThreshold(board, 250));
  EXPECT_TRUE(FeedUntilThreshold(other, 300));
  Overwrite(WithThresholds(251, 301));
  EXPECT_TRUE(FeedUntilThreshold(board, 251));
  EXPECT_TRUE(FeedUntilThreshold(other, 301));
  ExpectUnharmedRun();
  ExpectUsualLines();
}

TEST_F(ReconfigurationFaultsTest, AFileOfMoreThan128MiBIsNotAppliedAndOneOfSomeMegabytesIs) {
  const QString path = installation.ConfigurationPath();
  PutInPlace(path, QByteArray(128 << 20, ' ') + WithThresholds(666, 777), EverybodyReads);
  GoOn();
  EXPECT_EQ(ReconfigurationsOf("BOARD0"), 0);
  PutInPlace(path, QByteArray(5'000'000, ' ') + WithThresholds(250, 300), EverybodyReads);
  EXPECT_TRUE(FeedUntilThreshold(board, 250));
  EXPECT_TRUE(FeedUntilThreshold(other, 300));
  EXPECT_EQ(ThresholdsOf(board)[1], 250);
  ExpectUnharmedRun();
  ExpectUsualLines();
}

}  // namespace

}  // namespace test
