#include "control/QueryRoutes.h"
#include "tests/docs/DemoChain.h"
#include "tests/docs/MarkdownPage.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

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

TEST(QueriesPage, EveryExchangeOfThePageIsWhatTheServerAnswers) {
  const test::MarkdownPage page(QStringLiteral("docs/queries.md"));
  const test::DemoChain chain(GroupWith(page.BlocksOf(QStringLiteral("json block"))));
  ASSERT_EQ(qPrintable(chain.Fault()), std::string());
  QString query;
  int exchanges = 0;
  for (const test::FencedBlock& block : page.Blocks()) {
    if (block.kind == QLatin1String("query")) {
      query = block.text;
    } else if (block.kind == QLatin1String("answer")) {
      const QString answer = korvax::AnswerQuery(chain.Blocks(), QStringLiteral("query_by_json"), query);
      EXPECT_EQ(answer.toStdString(), block.text.toStdString()) << "to " << query.toStdString();
      ++exchanges;
    }
  }
  EXPECT_GE(exchanges, 9);
}

}  // namespace
