#include "control/QueryRoutes.h"
#include "framework/KorvaxPayload_RateCounters.h"
#include "recording/SinkRateCounter.h"
#include "tests/docs/DemoChain.h"
#include "tests/docs/MarkdownPage.h"
#include "tests/support/Records.h"
#include "tests/support/WaitFor.h"

#include <QDirIterator>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSet>

#include <gtest/gtest.h>

namespace {

QJsonArray GroupWith(const std::vector<QString>& blocks) {
  QJsonArray chain;
  for (const QString& block : blocks) {
    chain.append(QJsonDocument::fromJson(block.toUtf8()).object());
  }
  const QJsonObject filterChain{{"enable", true}, {"name", "small"}, {"chain", chain}};
  return {QJsonObject{{"filter_chain", QJsonArray{filterChain}}}};
}

DataMessage RateRecord() {
  auto rates = std::make_unique<KorvaxPayload_RateCounters>(2);
  rates->timestamp = 4'633'284'833;
  rates->ratesIn = {2454.68, 1000.0};
  rates->ratesOut = {2453.6, 1000.0};
  rates->countersIn = {11375, 4634};
  rates->countersOut = {11370, 4634};
  return test::MessageOf(std::move(rates));
}

// What changes from one time to the next stands as <time> on the page.
QString WithoutTimes(QString answer) {
  static const QRegularExpression seconds(QStringLiteral("\"run_start\":[0-9]+"));
  static const QRegularExpression text(QStringLiteral("\"time\":\"[-0-9T:]+Z\""));
  answer.replace(seconds, QStringLiteral("\"run_start\":<time>"));
  return answer.replace(text, QStringLiteral("\"time\":\"<time>\""));
}

TEST(QueriesPage, EveryExchangeOfThePageIsWhatTheServerAnswers) {
  const test::MarkdownPage page(QStringLiteral("docs/queries.md"));
  const test::DemoChain chain(GroupWith(page.BlocksOf(QStringLiteral("json block"))));
  ASSERT_EQ(qPrintable(chain.Fault()), std::string());
  chain.Block(QStringLiteral("rates_source1")).Outputs().front()->Push(RateRecord());
  auto& rates = dynamic_cast<SinkRateCounter&>(chain.Block(QStringLiteral("rates1")));
  ASSERT_TRUE(test::WaitFor([&] {
    rates.NewDataInTheInputPin(0);  // again and again: a wake-up may be lost
    QString query = QStringLiteral(R"({"args": [{"cmd": "get_data", "source": "immediate"}]})");
    QString answer;
    rates.InterpretMessage(&query, &answer);
    return answer.contains(QLatin1String("\"ok\""));
  }));
  QStringList queries;
  QString route;
  int exchanges = 0;
  for (const test::FencedBlock& block : page.Blocks()) {
    const QString word = block.kind.section(QLatin1Char(' '), 0, 0);
    if (word == QLatin1String("query") || word == QLatin1String("queries")) {
      queries = word == QLatin1String("query") ? QStringList(block.text) : block.text.split(QLatin1Char('\n'));
      route = block.kind == word ? QStringLiteral("query_by_json") : block.kind.section(QLatin1Char(' '), 1);
    } else if (word == QLatin1String("answer")) {
      for (const QString& query : queries) {
        const QString answer = korvax::AnswerQuery(chain.Blocks(), route, query);
        EXPECT_EQ(WithoutTimes(answer).toStdString(), block.text.toStdString()) << "to " << query.toStdString();
        ++exchanges;
      }
    }
  }
  EXPECT_GE(exchanges, 60);
}

// Every command that a block compares with.
QSet<QString> CommandsInCode() {
  static const QRegularExpression pattern(
      QStringLiteral(R"re(ommand == QLatin1String\("([a-z_]+)"\)|\{"([a-z_]+)",\s*\[\]\()re"),
      QRegularExpression::MultilineOption);
  QSet<QString> commands;
  for (const char* folder : {"boards", "control", "recording", "sinks"}) {
    QDirIterator files(QStringLiteral(KORVAX_PROJECT_DIR "/") + QLatin1String(folder), {QStringLiteral("*.cpp")},
                       QDir::Files);
    while (files.hasNext()) {
      QFile file(files.next());
      EXPECT_TRUE(file.open(QIODevice::ReadOnly));
      for (auto matches = pattern.globalMatch(QString::fromUtf8(file.readAll())); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        commands << match.captured(1) + match.captured(2);
      }
    }
  }
  return commands;
}

TEST(QueriesPage, EveryCommandThatABlockKnowsIsAskedOnThePage) {
  const test::MarkdownPage page(QStringLiteral("docs/queries.md"));
  QString asked;
  for (const test::FencedBlock& block : page.Blocks()) {
    asked += block.kind.startsWith(QLatin1String("quer")) ? block.text : QString();
  }
  const QSet<QString> commands = CommandsInCode();
  EXPECT_GE(commands.size(), 25);
  for (const QString& command : commands) {
    EXPECT_TRUE(asked.contains(QStringLiteral("\"cmd\": \"%1\"").arg(command))) << qPrintable(command);
  }
}

}  // namespace
