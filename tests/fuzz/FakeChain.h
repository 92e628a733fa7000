#pragma once

#include "framework/ChainContext.h"
#include "tests/support/FakeVendor.h"

#include <QJsonArray>
#include <QJsonObject>

namespace fuzz {

/// The boards and blocks of a configuration as the server has them once it is up, on a board library of our own.
/// No source is started.
class FakeChain {
public:
  FakeChain();
  /// In the server's order.
  ~FakeChain();
  FakeChain(const FakeChain&) = delete;
  FakeChain& operator=(const FakeChain&) = delete;

  /// Connects, describes, configures and arms a board for every enabled entry.
  void AddBoards(const QJsonArray& hardware);
  /// The fault; what was built before it stays.
  QString AddBlocks(const QJsonArray& processing, const QString& configurationPath);

  test::FakeVendor vendor;
  BoardList boards;
  BlockList blocks;

private:
  void AddBoard(const QJsonObject& entry);
};

}  // namespace fuzz
