#pragma once

#include "framework/KorvaxBlock.h"

#include <QBasicTimer>

/// Copies every message of its input to each of its "output_count" outputs, so that several blocks can read one
/// stream. Works on the main thread. Copies are those of the records' own Clone: waves lose what that leaves out.
class Process_Tee : public KorvaxBlock {
  Q_OBJECT

public:
  /// The most outputs that a tee may have.
  static constexpr int MostOutputs = 1024;

  Process_Tee(QObject* parent, const ChainContext& context, const QJsonValue& block);

  /// There is no worker: copies what still waits, so that nothing is lost at the end of the process.
  void StopWorker() override;
  const korvax::Account* Records() const override { return &account_; }

public slots:
  void NewDataInTheInputPin(int FifoLevel);

protected:
  void timerEvent(QTimerEvent* event) override;

private:
  void CopyToOutputs(DataMessage& message);

  QBasicTimer turn_;
  std::size_t work_ = 0;  // of this turn

  korvax::Account account_{{korvax::Fate::Copied}};
};
