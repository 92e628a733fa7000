#pragma once

#include "framework/Account.h"
#include "framework/ChainContext.h"
#include "framework/PinInput.h"
#include "framework/PinOutput.h"

#include <QJsonObject>
#include <QObject>

/// Base of every stage of the processing chain. Blocks live on the main thread, own their pins and, where there
/// is heavy work to do, a worker thread of their own.
///
/// A concrete constructor takes these steps in this order, each visible in its own body: this base,
/// ReadCommonKeys, ParseParameters, its pins, its worker.
class KorvaxBlock : public QObject {
  Q_OBJECT
  Q_PROPERTY(QString Name READ Name WRITE SetName)
  Q_PROPERTY(QString FullPath READ FullPath WRITE SetFullPath)

public:
  using InputPins = std::vector<std::unique_ptr<PinInput>>;
  using OutputPins = std::vector<std::unique_ptr<PinOutput>>;

  ~KorvaxBlock() override;

  const QString& Name() const { return name_; }
  void SetName(const QString& name) { name_ = name; }
  const QString& FullPath() const { return fullPath_; }
  void SetFullPath(const QString& path) { fullPath_ = path; }

  /// The factory keyword of the concrete class.
  const QString& BlockType() const { return blockType_; }
  /// True for the recording blocks, which take part in runs.
  bool IsDumpCapable() const { return dumpCapable_; }
  const InputPins& Inputs() const { return inputs_; }
  const OutputPins& Outputs() const { return outputs_; }

  /// Why the block can't work as configured, in words for the operator; empty when it can.
  const QString& Fault() const { return fault_; }

  /// Reads the block's own entries of its configuration; may run again later on a live block. The base takes
  /// no parameters and returns true.
  virtual bool ParseParameters(const QJsonValue& block);

  /// Joins the block's worker, if it has one, after it has consumed what reached it. Called in chain order at
  /// the end of the process, and by the destructor of every block that has a worker.
  virtual void StopWorker() {}

  /// What became of the records that reached the block; null for a block that none reach. Its reading is for any
  /// thread.
  virtual const korvax::Account* Records() const { return nullptr; }

  /// What clients must know to show the block's data or to say what it is bound to, as the block works with it;
  /// the keys are the block's own. The base has nothing to tell. Main thread.
  virtual QJsonObject Shape() const { return {}; }

protected:
  KorvaxBlock(const QString& blockType, bool dumpCapable, const ChainContext& context, QObject* parent);

  /// Sets the name and the data type, which also names the pins.
  void ReadCommonKeys(const QJsonValue& block);
  PinInput& AddInput();
  PinOutput& AddOutput();
  void SetFault(const QString& reason) { fault_ = reason; }

  const QString& DataType() const { return dataType_; }
  const ChainContext& Context() const { return context_; }

private:
  const QString blockType_;
  const bool dumpCapable_;
  const ChainContext context_;
  QString name_;
  QString fullPath_;
  QString dataType_;
  QString fault_;
  InputPins inputs_;
  OutputPins outputs_;
};
