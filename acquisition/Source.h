#pragma once

#include "acquisition/SourceBinding.h"
#include "acquisition/Source_Thread.h"
#include "boards/BoardEndpoint.h"
#include "framework/KorvaxBlock.h"

/// The head of a chain: bound to one endpoint of one board, it reads on its worker and offers the decoded
/// records on its single output pin. A source whose binding failed has the pin but no worker.
class Source : public KorvaxBlock {
  Q_OBJECT

public:
  Source(QObject* parent, const ChainContext& context, const QJsonValue& block);
  ~Source() override;

  /// "download_interval" (ms), "energy_calibration_expression" and "use_board_kev"; reach the running worker at
  /// its next pause or block. Always true.
  bool ParseParameters(const QJsonValue& block) override;
  /// Asks the worker to end after the block in hand, without waiting for it. Main thread.
  void RequestStop();
  void StopWorker() override;
  const korvax::Account* Records() const override { return worker_ ? &worker_->Records() : nullptr; }
  QJsonObject Shape() const override;

public slots:
  /// Starts the worker; nothing for a source that has none.
  void Run();
  /// Sends the endpoint's stop commands. The worker goes on reading. Results of commands are ignored, here and
  /// below.
  void Stop();
  /// Restarts the clock of the rates and sends the endpoint's reset commands.
  void Flush();
  /// Restarts the clock and sends the start commands of an enabled endpoint.
  void Start();

private:
  void RestartClock();
  void Send(std::vector<BoardCommand> BoardEndpoint::*commands) const;

  std::atomic<double> downloadIntervalMs_ = 10.0;
  QString expression_;
  bool useBoardKev_ = false;
  std::optional<SourceBinding> binding_;
  std::unique_ptr<DataDistructorSource> distructor_;
  std::unique_ptr<ReadWatch> watch_;
  std::unique_ptr<Source_Thread> worker_;
};
