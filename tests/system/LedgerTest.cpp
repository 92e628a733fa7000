#include "runfiles/Checksum.h"
#include "runfiles/FileSummary.h"
#include "tests/support/Json.h"
#include "tests/support/WaitFor.h"
#include "tests/system/DemoFixture.h"

#include <QCryptographicHash>

#include <map>
#include <string>

namespace test {

namespace {

using korvax::runfiles::Form;

// The account of records, asked for and in the summary of a run.
class LedgerTest : public DemoFixture {
protected:
  QJsonObject Ledger() { return Object(Command("get_ledger").toUtf8())["ledger"].toObject(); }
  static QJsonObject BlockOf(const QJsonObject& ledger, const char* key, const char* value) {
    for (const QJsonValue& block : ledger["blocks"].toArray()) {
      if (block[QLatin1String(key)] == QLatin1String(value)) {
        return block.toObject();
      }
    }
    ADD_FAILURE() << "no block " << value;
    return {};
  }
  static qint64 Number(const QJsonValue& value) { return value.toVariant().toLongLong(); }
  static qint64 Became(const QJsonObject& block, const char* fate) {
    return Number(block["became"].toObject()[QLatin1String(fate)]);
  }
  static qint64 SumOfFates(const QJsonObject& block) {
    qint64 sum = 0;
    for (const QJsonValue& records : block["became"].toObject()) {
      sum += Number(records);
    }
    return sum;
  }
  static void ExpectNothingMissing(const QJsonObject& ledger) {
    EXPECT_FALSE(ledger["blocks"].toArray().isEmpty());
    for (const QJsonValue& value : ledger["blocks"].toArray()) {
      const QJsonObject block = value.toObject();
      const QString name = block["name"].toString();
      EXPECT_EQ(Number(block["missing"]), 0) << qPrintable(name);
      EXPECT_EQ(Number(block["received"]), Number(block["waiting"]) + SumOfFates(block)) << qPrintable(name);
      for (const QJsonValue& output : block["outputs"].toArray()) {
        EXPECT_EQ(Number(output["pushed"]), Number(output["taken"]) + Number(output["waiting"]))
            << qPrintable(name);
      }
    }
  }
  // Not of a difference, which may have less in hand than its beginning had.
  static void ExpectNothingNegative(const QJsonObject& ledger) {
    for (const QJsonValue& block : ledger["blocks"].toArray()) {
      EXPECT_GE(Number(block["in_hand"]), 0) << qPrintable(block["name"].toString());
    }
  }

  QByteArray Bytes(const QString& path) const {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
    return file.readAll();
  }
  QString RunFolder() const { return installation.StoragePath() + QStringLiteral("/1"); }
  QList<QJsonObject> Summary() const {
    QList<QJsonObject> lines;
    for (const QByteArray& line : Bytes(RunFolder() + QStringLiteral("/run.summary")).split('\n')) {
      if (!line.isEmpty()) {
        lines << Object(line);
      }
    }
    return lines;
  }
  static QStringList EventsOf(const QList<QJsonObject>& lines) {
    QStringList events;
    for (const QJsonObject& line : lines) {
      events << line["event"].toString();
    }
    return events;
  }

  void ExpectStart(const QJsonObject& line) {
    EXPECT_EQ(line["event"], "start");
    EXPECT_EQ(line["run_id"], "1");
    const QByteArray configured = Bytes(installation.ConfigurationPath());
    EXPECT_EQ(line["configuration_sha256"].toString().toLatin1(),
              QCryptographicHash::hash(configured, QCryptographicHash::Sha256).toHex());
  }
  // Each close line agrees with its file, and each file has one. Gives the records by block.
  std::map<std::string, qint64> ExpectFilesAsClosed(const QList<QJsonObject>& lines) {
    std::map<std::string, qint64> records;
    QStringList closed;
    for (const QJsonObject& line : lines) {
      if (line["event"] == "close") {
        const QString path = RunFolder() + QLatin1Char('/') + line["file"].toString();
        const QByteArray bytes = Bytes(path);
        korvax::runfiles::Checksum checksum;
        checksum.Add({bytes.constData(), static_cast<std::size_t>(bytes.size())});
        EXPECT_EQ(Number(line["bytes"]), bytes.size()) << qPrintable(path);
        EXPECT_EQ(line["xxh128"].toString().toStdString(), checksum.Hex()) << qPrintable(path);
        EXPECT_FALSE(line.contains("problem")) << qPrintable(path);
        if (!path.endsWith(QLatin1String(".stat"))) {
          const auto summary = korvax::runfiles::Summarise(path.toStdString());
          EXPECT_EQ(Number(line["records"]), static_cast<qint64>(summary.records)) << qPrintable(path);
          records[line["block"].toString().toStdString()] = Number(line["records"]);
        }
        closed << line["file"].toString();
      }
    }
    closed << QStringLiteral("run.summary");
    closed.sort();
    EXPECT_EQ(closed, QDir(RunFolder()).entryList(QDir::Files));
    return records;
  }
};

TEST_F(LedgerTest, OfTheDemoMissesNothingThroughARunAndItsSummaryAgreesWithItsFiles) {
  ConfigureDemo(Form::Binary);
  StartAndWaitUntilReady();
  EXPECT_EQ(StartRun(1), Success);
  ASSERT_TRUE(WaitFor([this] {
    const QJsonObject ledger = Ledger();
    ExpectNothingMissing(ledger);
    ExpectNothingNegative(ledger);
    return Became(BlockOf(ledger, "name", "dumper1"), "written") > 1000 &&
           Became(BlockOf(ledger, "name", "scope1"), "written") > 1 &&
           Became(BlockOf(ledger, "name", "rates1"), "written") > 1 &&
           EventsOf(Summary()).count(QStringLiteral("open")) == 6;  // of both dumpers with their statistics
  }));
  EXPECT_EQ(Command("stop_dump"), Success);
  ASSERT_TRUE(WaitFor([this] { return EventsOf(Summary()).contains(QStringLiteral("stop")); }));
  EndServer();

  const QList<QJsonObject> lines = Summary();
  ExpectStart(lines.first());
  EXPECT_EQ(EventsOf(lines), QStringList({"start", "open", "open", "open", "open", "open", "open", "close",
                                          "close", "close", "close", "close", "close", "stop"}));
  const QJsonObject ledger = lines.last()["ledger"].toObject();
  ExpectNothingMissing(ledger);
  for (const auto& [block, records] : ExpectFilesAsClosed(lines)) {
    EXPECT_EQ(Became(BlockOf(ledger, "name", block.c_str()), "written"), records) << block;
  }
}

TEST_F(LedgerTest, OfARunThatASignalEndsStandsInItsSummary) {
  ConfigureDemo(Form::Json);
  StartAndWaitUntilReady();
  EXPECT_EQ(StartRun(1), Success);
  ASSERT_TRUE(WaitFor([this] {
    const QJsonObject ledger = Ledger();
    return Became(BlockOf(ledger, "name", "dumper1"), "written") > 1000 &&
           Became(BlockOf(ledger, "name", "scope1"), "written") > 0 &&
           Became(BlockOf(ledger, "name", "rates1"), "written") > 0;
  }));
  EndServer();
  const QList<QJsonObject> lines = Summary();
  ExpectStart(lines.first());
  ASSERT_EQ(EventsOf(lines).last(), "stop");
  const QJsonObject ledger = lines.last()["ledger"].toObject();
  ExpectNothingMissing(ledger);
  for (const auto& [block, records] : ExpectFilesAsClosed(lines)) {
    EXPECT_EQ(Became(BlockOf(ledger, "name", block.c_str()), "written"), records) << block;
  }
}

TEST_F(LedgerTest, AtRestIsBalancedAndAgreesWithWhatTheBoardHandedOut) {
  StartAndWaitUntilReady();
  EXPECT_EQ(StartRun(1), Success);
  ASSERT_TRUE(FeedUntil([this] { return StoredEvents() > 0; }));
  for (int block = 0; block < 200; ++block) {
    Feed();
  }
  QJsonObject ledger;
  ASSERT_TRUE(WaitFor([&] {
    ledger = Ledger();
    ExpectNothingMissing(ledger);
    return Number(BlockOf(ledger, "type", "source")["received"]) == FedEvents() && ledger["balanced"].toBool();
  }));
  const QJsonObject source = BlockOf(ledger, "type", "source");
  EXPECT_EQ(Became(source, "decoded"), FedEvents());
  EXPECT_EQ(Number(source["made"]), FedEvents());
  const QJsonObject output = source["outputs"].toArray()[0].toObject();
  EXPECT_EQ(Number(output["pushed"]), FedEvents());
  EXPECT_EQ(Number(output["dropped"]), 0);
  EXPECT_EQ(Number(BlockOf(ledger, "name", "dumper")["received"]), Number(output["taken"]));
  EndServer();
  const QList<QJsonObject> lines = Summary();
  EXPECT_EQ(EventsOf(lines), QStringList({"start", "open", "close", "stop"}));
  ExpectFilesAsClosed(lines);
  ledger = lines.last()["ledger"].toObject();
  ExpectNothingMissing(ledger);
  EXPECT_TRUE(ledger["balanced"].toBool());
  EXPECT_EQ(Became(BlockOf(ledger, "name", "dumper"), "written"), FedEvents());
}

TEST_F(LedgerTest, OfOneBlockIsAskedForByItsName) {
  StartAndWaitUntilReady();
  const QJsonArray blocks = Ledger()["blocks"].toArray();
  EXPECT_EQ(blocks.size(), 2) << "run control has no pins";
  const QString query = QStringLiteral(R"({"cmd":"get_ledger","block":"%1"})");
  const auto blocksOf = [&](const char* name) {
    return Object(Tell("commands", query.arg(QLatin1String(name))).toUtf8())["ledger"]
        .toObject()["blocks"]
        .toArray();
  };
  ASSERT_EQ(blocksOf("dumper").size(), 1);
  EXPECT_EQ(blocksOf("dumper")[0].toObject()["name"], "dumper");
  EXPECT_EQ(blocksOf("no such block"), QJsonArray());
}

}  // namespace

}  // namespace test
