#pragma once

#include "framework/PinOutput.h"

/// The consuming end of a link. Owns no queue: it takes its messages from the one output pin it is linked to.
class PinInput : public QObject {
  Q_OBJECT

public:
  /// Results of Pop.
  enum PopResult : int { Unlinked = -1, Taken = 0, Empty = 1 };

  explicit PinInput(const QString& name, QObject* parent = nullptr);

  const QString& Name() const { return name_; }

  /// Links this pin to an output pin, which must outlive it. Main thread, once, before any data flows.
  void Connect(PinOutput* upstream);

  /// Moves the oldest waiting message out. One consumer thread.
  int Pop(DataMessage& out);

  /// Of the linked output pin; 0 without one. Any thread.
  int Level() const;
  quint64 AcceptedMessages() const;
  quint64 DroppedRecords() const;
  /// The linked output pin; null without one. Any thread.
  const PinOutput* Upstream() const { return upstream_.load(std::memory_order_acquire); }
  /// Records that this pin has moved out. Any thread.
  quint64 TakenRecords() const { return takenRecords_.load(std::memory_order_relaxed); }

signals:
  /// The number is informative only: never count messages by it.
  void DataReady(int FifoSize);

public slots:
  void NewDataInTheOutputPin(int FifoLevel);

private:
  const QString name_;
  QMutex mutex_;
  std::atomic<quint64> takenRecords_ = 0;       // written under mutex_
  std::atomic<PinOutput*> upstream_ = nullptr;  // a worker may already be running while its pin is linked
};
