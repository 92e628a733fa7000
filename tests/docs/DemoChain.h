#pragma once

#include "framework/ChainContext.h"
#include "framework/DataMessage.h"
#include "tests/support/FakeVendor.h"

#include <QJsonArray>
#include <QTemporaryDir>

namespace test {

/// The boards and blocks of examples/demo.json, built as the server builds them, on a board library inside the
/// test, with run control. Its sources don't run, its storage is a temporary folder. More processing groups can be
/// appended to the demo's own.
class DemoChain {
public:
  explicit DemoChain(const QJsonArray& moreGroups = {});
  ~DemoChain();

  const BlockList& Blocks() const { return blocks_; }
  const BoardList& Boards() const { return boards_; }
  /// Why the chain can't be built; empty when it can.
  const QString& Fault() const { return fault_; }
  /// The first block of that name, which must be there.
  KorvaxBlock& Block(const QString& name) const;

private:
  QTemporaryDir storage_;
  FakeVendor vendor_;
  BoardList boards_;
  BlockList blocks_;
  QString fault_;
};

}  // namespace test
