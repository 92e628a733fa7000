#include "tests/fuzz/FakeChain.h"

#include "boards/DigitizerBoard.h"
#include "framework/KorvaxBlock.h"
#include "server/ChainAssembly.h"

namespace fuzz {

FakeChain::FakeChain() {
  vendor.value = "1";
}

FakeChain::~FakeChain() {
  for (const auto& block : blocks) {
    block->StopWorker();
  }
  while (!blocks.empty()) {
    blocks.pop_back();
  }
}

void FakeChain::AddBoards(const QJsonArray& hardware) {
  for (const QJsonValue& entry : hardware) {
    if (entry["enable"].toBool()) {
      AddBoard(entry.toObject());
    }
  }
  for (const auto& board : boards) {
    board->ConfigureBoard();
    board->StopEndpoints();
    board->ArmEndpoints();
  }
}

void FakeChain::AddBoard(const QJsonObject& entry) {
  auto board = std::make_unique<DigitizerBoard>(vendor.Lookup());
  board->id = entry["id"].toInt();
  board->type = entry["board_type"].toString();
  board->family = entry["board_family"].toString();
  board->pluginName = entry["board_plugin"].toString();
  board->name = entry["board_name"].toString();
  board->Open(entry["board_connection_string"].toString());
  board->ApplyConfigs(entry);
  board->LoadEndpoints(entry);
  board->LoadCommands(entry);
  boards.push_back(std::move(board));
}

QString FakeChain::AddBlocks(const QJsonArray& processing, const QString& configurationPath) {
  return ChainAssembly(boards, blocks, configurationPath).Build(processing);
}

}  // namespace fuzz
