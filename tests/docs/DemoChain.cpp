#include "tests/docs/DemoChain.h"

#include "boards/DigitizerBoard.h"
#include "control/korvax_commands.h"
#include "framework/KorvaxBlock.h"
#include "server/ChainAssembly.h"
#include "server/Configuration.h"

#include <QFile>
#include <QJsonObject>

#include <gtest/gtest.h>

#include <algorithm>

namespace test {

namespace {

// The demo's, but for its storage.
QString OwnConfiguration(const QTemporaryDir& storage) {
  QFile demo(QStringLiteral(KORVAX_PROJECT_DIR "/examples/demo.json"));
  EXPECT_TRUE(demo.open(QIODevice::ReadOnly));
  QFile own(storage.filePath(QStringLiteral("demo.json")));
  EXPECT_TRUE(own.open(QIODevice::WriteOnly));
  own.write(demo.readAll().replace("\"demo-storage\"", '"' + storage.path().toUtf8() + '"'));
  return own.fileName();
}

}  // namespace

DemoChain::DemoChain(const QJsonArray& moreGroups) {
  vendor_.value = "800.0";
  const QString path = OwnConfiguration(storage_);
  const auto configuration = Configuration::Load(path);
  EXPECT_TRUE(configuration);
  for (const QJsonValue& entry : configuration->hardware) {
    auto& board = boards_.emplace_back(std::make_unique<DigitizerBoard>(vendor_.Lookup()));
    board->name = entry.toObject()["board_name"].toString();
    board->ApplyConfigs(entry.toObject());
    board->LoadEndpoints(entry.toObject());
    board->LoadCommands(entry.toObject());
  }
  QJsonArray groups = configuration->processing;
  for (const QJsonValue& group : moreGroups) {
    groups.append(group);
  }
  fault_ = ChainAssembly(boards_, blocks_, path).Build(groups);
  blocks_.push_back(std::make_unique<korvax_commands>(nullptr, ChainContext{&boards_, &blocks_, {}, path}));
  blocks_.back()->SetName(QStringLiteral("commands"));
}

KorvaxBlock& DemoChain::Block(const QString& name) const {
  return **std::find_if(blocks_.begin(), blocks_.end(), [&](const auto& block) { return block->Name() == name; });
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
