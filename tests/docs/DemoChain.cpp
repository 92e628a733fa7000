#include "tests/docs/DemoChain.h"

#include "boards/DigitizerBoard.h"
#include "framework/KorvaxBlock.h"
#include "server/ChainAssembly.h"
#include "server/Configuration.h"

#include <QJsonObject>

#include <gtest/gtest.h>

namespace test {

DemoChain::DemoChain(const QJsonArray& moreGroups) {
  const auto configuration = Configuration::Load(QStringLiteral(KORVAX_PROJECT_DIR "/examples/demo.json"));
  EXPECT_TRUE(configuration);
  for (const QJsonValue& entry : configuration->hardware) {
    auto& board = boards_.emplace_back(std::make_unique<DigitizerBoard>(vendor_.Lookup()));
    board->name = entry.toObject()["board_name"].toString();
    board->LoadEndpoints(entry.toObject());
  }
  QJsonArray groups = configuration->processing;
  for (const QJsonValue& group : moreGroups) {
    groups.append(group);
  }
  fault_ = ChainAssembly(boards_, blocks_, QString()).Build(groups);
}

DemoChain::~DemoChain() {
  for (const auto& block : blocks_) {
    block->StopWorker();
  }
  while (!blocks_.empty()) {
    blocks_.pop_back();
  }
}

}  // namespace test
