#include "boards/DigitizerBoard.h"
#include "framework/KorvaxBlock.h"
#include "server/ChainAssembly.h"
#include "tests/support/FakeVendor.h"
#include "tests/support/LogCapture.h"
#include "tests/unit/configuration/CheckText.h"
#include "tests/unit/configuration/Mutation.h"

#include <gtest/gtest.h>

namespace {

/// What the server says when it builds the chains of a configuration on boards that answer nothing.
QString ServerFault(const QJsonObject& configuration) {
  const test::FakeVendor vendor;
  BoardList boards;
  for (const QJsonValue& entry : configuration["Hardware"].toArray()) {
    auto& board = boards.emplace_back(std::make_unique<DigitizerBoard>(vendor.Lookup()));
    board->name = entry.toObject()["board_name"].toString();
    board->LoadEndpoints(entry.toObject());
  }
  BlockList blocks;
  const QString fault = ChainAssembly(boards, blocks, QString()).Build(configuration["processing"].toArray());
  for (const auto& block : blocks) {
    block->StopWorker();
  }
  while (!blocks.empty()) {
    blocks.pop_back();
  }
  return fault;
}

bool HasError(const QStringList& findings) {
  return std::any_of(findings.begin(), findings.end(),
                     [](const QString& finding) { return finding.contains(QLatin1String(": error: ")); });
}

TEST(Agreement, whateverTheServerRefusesIsAnError) {
  const test::LogCapture log;
  const QJsonObject good = test::ProjectConfiguration(QStringLiteral("tests/unit/configuration/complete.json"));
  ASSERT_EQ(ServerFault(good).toStdString(), "");
  test::Mutation mutation(good);
  int refused = 0;
  for (int i = 0; i < 600; ++i) {
    const QJsonObject mutated = mutation.Next();
    const QString fault = ServerFault(mutated);
    if (!fault.isEmpty()) {
      ++refused;
      const QByteArray text = test::Text(mutated);
      ASSERT_TRUE(HasError(test::FindingsIn(text))) << fault.toStdString() << text.toStdString();
    }
  }
  EXPECT_GE(refused, 50);
}

}  // namespace
