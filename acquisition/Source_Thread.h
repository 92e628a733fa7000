#pragma once

#include "acquisition/AcquisitionClock.h"
#include "acquisition/DataDistructorSource.h"
#include "acquisition/Decoder.h"
#include "acquisition/EnergyCalibration.h"
#include "acquisition/ReadWatch.h"
#include "acquisition/SourceBinding.h"
#include "framework/KorvaxBlock.h"
#include "framework/Lock.h"

#include <QThread>

#include <atomic>

/// The acquisition thread of one source: reads its endpoint, has each block decoded and pushes the batches,
/// pausing for the download interval after every read. Runs until Stop.
class Source_Thread : public QThread {
public:
  /// The output pins, the distructor (null without a board), the interval and the watch belong to the source and
  /// outlive the thread.
  Source_Thread(const QString& dataType, const SourceBinding& binding, const KorvaxBlock::OutputPins& outputs,
                const DataDistructorSource* distructor, const std::atomic<double>& downloadIntervalMs,
                ReadWatch& watch);
  ~Source_Thread() override;

  // Main thread; each counts from the next block on.
  void SetExpression(const QString& expression) { expression_.Set(expression); }
  void SetUseBoardKev(bool use) { useBoardKev_.store(use, std::memory_order_relaxed); }
  void RestartClock() { clock_.Restart(); }

  /// Ends the loop after the block in hand. Main thread.
  void RequestStop();
  /// The same, and waits for the thread.
  void Stop();

  /// Received are the entries that the board handed out.
  const korvax::Account& Records() const { return account_; }

protected:
  void run() override;

private:
  void StartWaveEndpoint() const;
  bool ReadOnce();
  void DecodeBlock(board::ReadBlock& block);
  korvax::Fates DecodeEntries(const board::ReadBlock& block);
  void TellOfGarbage(qint32 count);
  void Gather(std::unique_ptr<PayloadBatch> batch);
  void PushGathered();
  void Pause(unsigned long milliseconds);
  bool IsStopping() const { return stopping_.load(std::memory_order_relaxed); }

  const QString dataType_;
  const SourceBinding binding_;
  const QString endpointPath_;
  const bool isWaveform_;
  const KorvaxBlock::OutputPins& outputs_;
  const DataDistructorSource* const distructor_;
  const std::atomic<double>& downloadIntervalMs_;
  ReadWatch& watch_;
  korvax::Account account_;

  // Worker.
  EnergyCalibration calibration_;
  std::vector<DataMessage> messages_;  // of the block in hand
  quint64 gathered_ = 0;               // records in messages_
  bool garbageTold_ = false;

  // Written by the main thread, read by the worker.
  korvax::Guarded<QString> expression_;
  std::atomic<bool> useBoardKev_ = false;
  AcquisitionClock clock_;
  QMutex mutex_;
  QWaitCondition wake_;
  std::atomic<bool> stopping_ = false;  // written under mutex_, so that no stop is missed
};
