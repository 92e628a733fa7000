#include "client/LedgerVerdict.h"

#include "client/LedgerTable.h"
#include "tests/support/Printing.h"

#include <QJsonDocument>

#include <gmock/gmock.h>

namespace korvax::client {
namespace {

using testing::ElementsAre;

Ledger Of(const QString& blocks) {
  const QString answer = QStringLiteral("{\"ledger\":{\"blocks\":[%1]}}").arg(blocks);
  const Read<Ledger> ledger = ReadLedger(answer);
  EXPECT_TRUE(ledger.value) << ledger.fault.toStdString();
  return ledger.value.value_or(Ledger());
}

struct Row {
  const char* blocks;
  const char* words;
};

const Row table[] = {
    {"", "Balanced. Nothing is lost."},
    {R"({"name":"a","received":5,"waiting":1,"became":{"counted":4}})", "Balanced. Nothing is lost."},
    {R"({"name":"a","received":5,"waiting":1,"became":{"counted":3}})",
     "Not balanced: a misses 1 record. Nothing is lost."},
    {R"({"name":"a","received":5,"waiting":1,"became":{"counted":6},"missing":-2})",
     "Not balanced: a accounts for 2 records too many. Nothing is lost."},
    {R"({"name":"a","received":5,"waiting":0,"became":{"counted":5},"missing":3})",
     "Not balanced: a tells of 3 missing, its figures of 0. Nothing is lost."},
    {R"({"name":"a","received":5,"waiting":0,"became":{"counted":5},"inputs":[{"taken":3},{"taken":3}]})",
     "Balanced. In hand: 1. Nothing is lost."},
    {R"({"name":"a","received":5,"waiting":0,"became":{"counted":5},"inputs":[{"taken":4}]})",
     "Not balanced: a received 1 record more than it took. Nothing is lost."},
    {R"({"name":"a","received":0,"waiting":0,"made":7,
        "outputs":[{"pushed":5,"dropped":1,"taken":5,"waiting":0}]})",
     "Balanced. In hand: 1. 1 record lost: a dropped 1 at a full queue."},
    {R"({"name":"a","received":0,"waiting":0,"made":5,
        "outputs":[{"pushed":6,"dropped":0,"taken":5,"waiting":1}]})",
     "Not balanced: a pushed 1 record more than it made. Nothing is lost."},
    {R"({"name":"a","received":0,"waiting":0,"made":6,
        "outputs":[{"pushed":6,"dropped":0,"taken":5,"waiting":0}]})",
     "Not balanced: the queue behind a lost 1 record without a word. Nothing is lost."},
    {R"({"name":"a","received":0,"waiting":0,"made":6,
        "outputs":[{"pushed":6,"dropped":0,"taken":6,"waiting":2}]})",
     "Not balanced: the queue behind a gave out 2 records too many. Nothing is lost."},
    {R"({"name":"a","received":26,"waiting":0,"became":{"refused":1,"dropped":2,"not_written":3,"overwritten":20}})",
     "Balanced. 26 records lost: a dropped 2 at a full buffer; a could not write 3; a wrote over 20; a refused "
     "1."},
    {R"({"name":"%2","received":1,"waiting":0,"became":{"refused":1}})", "Balanced. 1 record lost: %2 refused 1."},
    {R"({"name":"a","received":1,"waiting":0,"became":{"counted":"1"}})",
     "Balanced as far as it can be read. Nothing is lost."},
    {R"({"name":"a","received":1,"waiting":0,"became":{"counted":0.5}})",
     "Balanced as far as it can be read. Nothing is lost."},
    {R"({"name":"a","received":1,"waiting":0,"became":{"x":1},"inputs":[{}]})",
     "Balanced as far as it can be read. Nothing is lost."},
    {R"({"name":"a","received":1})", "Balanced as far as it can be read. Nothing is lost."},
};

TEST(LedgerVerdict, saysInWordsWhatBalancesAndWhatIsLost) {
  for (const Row& row : table) {
    EXPECT_EQ(InWords(Judge(Of(QString(row.blocks)))), QString(row.words)) << row.blocks;
  }
}

TEST(LedgerVerdict, ofARunTakesWhatWasInHandWhenItBegan) {
  const Ledger ledger = Of(QStringLiteral(R"({"name":"a","received":5,"waiting":-2,"became":{"counted":7},"made":1,
    "inputs":[{"taken":4}],"outputs":[{"pushed":3,"dropped":0,"taken":4,"waiting":-1}]})"));
  EXPECT_EQ(InWords(Judge(ledger, LedgerSpan::Run)), "Balanced. In hand at the beginning: 3. Nothing is lost.");
  EXPECT_EQ(InWords(Judge(ledger)),
            "Not balanced: a received 1 record more than it took; a pushed 2 records more than it made. Nothing "
            "is lost.");
}

TEST(LedgerVerdict, holdsOutAgainstAbsurdFigures) {
  QStringList fates;
  for (int i = 0; i < 3000; ++i) {
    fates << QStringLiteral("\"f%1\":-9007199254740992").arg(i);
  }
  const QString block = QStringLiteral(R"({"name":"a","received":9007199254740992,"waiting":9007199254740992,
    "became":{%1},"made":-9007199254740992,"inputs":[{"taken":-9007199254740992}],
    "outputs":[{"pushed":9007199254740992,"dropped":9007199254740992,"taken":0,"waiting":0}]})")
                            .arg(fates.join(QLatin1Char(',')));
  const LedgerVerdict verdict = Judge(Of(block));
  EXPECT_FALSE(verdict.Balanced());
  EXPECT_EQ(verdict.lost, 9007199254740992U);
}

TEST(LedgerTable, showsEachOutputAndMarksItsDropsOnce) {
  const Ledger ledger = Of(QStringLiteral(R"({"name":"tee","type":"tee","received":9,"waiting":0,
    "became":{"copied":9},"made":9,"outputs":[{"pushed":9,"dropped":0,"taken":9,"waiting":0},
                                              {"pushed":7,"dropped":2,"taken":7,"waiting":0}]})"));
  EXPECT_THAT(LedgerLines(ledger, false),
              ElementsAre("block  type  received  waiting  made  pushed  dropped  became",
                          "tee    tee          9        0     9     9+7     !0+2  9 copied"));
}

TEST(LedgerTable, marksFiguresThatDoNotFit) {
  const Ledger ledger = Of(QStringLiteral(R"(
    {"name":"a","type":"t","received":3,"waiting":0,"became":{"decoded":5},"made":3,
     "outputs":[{"pushed":4,"dropped":0,"taken":4,"waiting":0}]},
    {"name":"b","type":"t","received":5,"waiting":0,"became":{"counted":5},"made":0,
     "inputs":[{"from":"a","pin":0,"taken":4}],"outputs":[{"pushed":0,"dropped":0,"taken":1,"waiting":0}]})"));
  EXPECT_THAT(LedgerLines(ledger, false),
              ElementsAre("block  type  received  waiting  made  pushed  dropped  became",
                          "a      t            3        0     3      !4        0  5 decoded, !2 too many",
                          "b      t           !5        0     0      !0        0  5 counted"));
}

TEST(LedgerTable, standsInTheSameColumnsWithColours) {
  const Ledger ledger = Of(QStringLiteral(R"({"name":"a","type":"t","received":9,"waiting":0,
    "became":{"refused":4,"decoded":3},"made":3,"outputs":[{"pushed":1,"dropped":2,"taken":1,"waiting":0}]})"));
  EXPECT_THAT(LedgerLines(ledger, true),
              ElementsAre("block  type  received  waiting  made  pushed  dropped  became",
                          "a      t            9        0     3       1        \x1b[31m2\x1b[0m  3 decoded, "
                          "\x1b[31m4 refused\x1b[0m, \x1b[31m2 missing\x1b[0m"));
}

TEST(LedgerTable, hasAClosingLineInRedWhereRecordsAreLostOrMissing) {
  const auto closing = [](int made, int dropped) {
    return ClosingLine(Judge(Of(QStringLiteral(R"({"name":"a","type":"t","received":3,"waiting":0,
      "became":{"decoded":3},"made":%1,"outputs":[{"pushed":1,"dropped":%2,"taken":1,"waiting":0}]})")
                                    .arg(QString::number(made), QString::number(dropped)))),
                       true)
        .toStdString();
  };
  EXPECT_EQ(closing(1, 0), "Balanced. Nothing is lost.");
  EXPECT_EQ(closing(3, 2), "\x1b[31mBalanced. 2 records lost: a dropped 2 at a full queue.\x1b[0m");
  EXPECT_THAT(closing(1, 2),
              testing::AllOf(testing::StartsWith("\x1b[31mNot balanced"), testing::EndsWith("\x1b[0m")));
}

TEST(LedgerTable, countsTheQueueBeforeABlockAsWaitingUnlessTwoBlocksBearThatName) {
  const QString source = QStringLiteral(R"({"name":"s","received":0,"waiting":0,"became":{},"made":4,
    
        "outputs":[{"pushed":0,"dropped":0,"taken":0,"waiting":1},{"pushed":0,"dropped":0,"taken":0,"waiting":4}]})");
  const QString sink = QStringLiteral(R"({"name":"x","received":2,"waiting":2,"became":{},
    "inputs":[{"from":"s","pin":1,"taken":0},{"from":"s","pin":2,"taken":0},{"from":"s","pin":-1,"taken":0},
              {"from":"y","pin":0,"taken":2}]})");
  EXPECT_EQ(LedgerLines(Of(source + ',' + sink), false)[2],
            "x                   2        6     -       -        -  -");
  EXPECT_EQ(LedgerLines(Of(source + ',' + source + ',' + sink), false)[3],
            "x                   2        2     -       -        -  -");
}

}  // namespace
}  // namespace korvax::client
