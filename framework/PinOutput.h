#pragma once

#include "framework/Lock.h"
#include "framework/MessageQueue.h"

#include <QObject>

#include <atomic>
#include <span>

/// What a pin knows of its records.
struct PinCounts {
  quint64 pushed = 0;   ///< accepted
  quint64 dropped = 0;  ///< refused, because the queue was full
  quint64 taken = 0;
  quint64 waiting = 0;
};

/// The producing end of a link: a first-in first-out queue of at most Limit messages. One producer thread
/// pushes, one consumer takes (through the linked PinInput). Signals only wake the consumer; data moves
/// through the queue.
class PinOutput : public QObject {
  Q_OBJECT

public:
  static constexpr int Limit = 10000;
  /// A producer of many messages pushes so many at a time: the consumer takes them while it makes the next.
  static constexpr std::size_t AtATime = 1000;

  explicit PinOutput(const QString& name, QObject* parent = nullptr);
  /// Frees the queued messages but leaves their batches alone, as pins outlive the stream.
  ~PinOutput() override;

  const QString& Name() const { return name_; }

  /// Appends the message and takes it over. When the queue is full, the message is destroyed at once with its
  /// records, and false comes back; nothing is logged or signalled. Producer's thread.
  bool Push(DataMessage&& message) { return PushAll(std::span(&message, 1)) == 1; }
  /// Does the same for each in turn, under one lock: the consumer finds them all at its first wake-up. Returns how
  /// many were accepted.
  std::size_t PushAll(std::span<DataMessage> messages);

  /// Moves the oldest message into an empty one; false when there is none. Called by the linked input pin only.
  bool Take(DataMessage& out);

  /// Messages waiting. Any thread.
  int Level() const { return size_.load(std::memory_order_relaxed); }
  /// Messages accepted since the pin was made. Any thread.
  quint64 AcceptedMessages() const { return acceptedMessages_.load(std::memory_order_relaxed); }
  /// Records that died in Push since the pin was made, because the queue was full. Any thread.
  quint64 DroppedRecords() const { return Counts().dropped; }
  /// All since the pin was made, as of one moment. Any thread.
  PinCounts Counts() const;

signals:
  /// Once for each accepted message, with the queue's size just after it was appended.
  void NewDataPushedInPin(int FifoSize);

private:
  int Append(std::span<DataMessage> messages);
  void Drop(std::span<DataMessage> messages);

  const QString name_;
  mutable QMutex mutex_;
  korvax::MessageQueue queue_;                 // guarded by mutex_
  PinCounts counts_;                           // guarded by mutex_
  std::atomic<int> size_ = 0;                  // size of queue_, written under mutex_
  std::atomic<quint64> acceptedMessages_ = 0;  // written under mutex_
};
