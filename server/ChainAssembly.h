#pragma once

#include "framework/ChainContext.h"

#include <QJsonArray>
#include <QJsonObject>

/// Turns the configuration's "processing" section into blocks linked by pins. A block takes input only from
/// blocks that stand earlier in the file. Main thread, once, before the sources run.
class ChainAssembly {
public:
  /// New blocks are appended to `blocks`; both lists outlive the blocks.
  ChainAssembly(const BoardList& boards, BlockList& blocks, const QString& configurationPath);

  /// Builds every enabled chain, in file order. Stops at the first fault: the result says in one line which
  /// chain, block and key, and what was expected; empty when all is well.
  QString Build(const QJsonArray& processing);

private:
  QString BuildChain(int group, const QJsonObject& chain);
  QString BuildBlock(const QString& fullPath, const QJsonObject& description);
  QString LinkInputs(const QJsonObject& description, KorvaxBlock& block) const;
  QString LinkInput(const QJsonObject& source, int index, KorvaxBlock& block) const;
  KorvaxBlock* FindBlock(const QString& name) const;

  const BoardList& boards_;
  BlockList& blocks_;
  const QString configurationPath_;
};
