#pragma once

#include "framework/ByteWriter.h"
#include "framework/KorvaxBlock.h"
#include "framework/QueryHandler.h"
#include "sinks/SinkThread.h"

namespace korvax {

struct SinkQuery;

/// What the analysis sinks share: a block with one input pin, whose worker counts what arrives, and the queries
/// that all of them answer. A sink has the two slots itself, and passes them on to Wake and Answer.
class AnalysisSink : public KorvaxBlock, public QueryHandler {
public:
  /// Joins the worker, which knows nothing of the derived class.
  ~AnalysisSink() override;
  void StopWorker() override;
  const Account* Records() const override { return &worker_->Records(); }

protected:
  /// Reads the common keys and makes the pin.
  AnalysisSink(const QString& blockType, const ChainContext& context, const QJsonValue& block, QObject* parent);

  /// Takes the worker over and starts it. Once, in the derived constructor.
  template <typename Worker>
  Worker* Start(std::unique_ptr<Worker> worker) {
    Worker* const started = worker.get();
    worker_ = std::move(worker);
    worker_->start(StreamPriority);
    return started;
  }

  /// The level is of no use: the worker empties the queue.
  void Wake(int /*fifoLevel*/) { worker_->Wake(); }
  /// "get_data" by AppendData; "reset", "data_get_status" and "run_control" by the worker. Nothing is appended for
  /// any other command.
  void Answer(const QString& message, QString& answer);

  /// Appends the answer to "get_data".
  virtual void AppendData(const SinkQuery& query, ByteWriter& out) = 0;

private:
  std::unique_ptr<SinkThread> worker_;
  ByteWriter text_;  // kept from answer to answer for its memory
};

}  // namespace korvax
