#pragma once

#include <QMutex>
#include <QThread>
#include <QWaitCondition>

#include <utility>

#if defined(__SANITIZE_THREAD__)
#define KORVAX_THREAD_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define KORVAX_THREAD_SANITIZER 1
#endif
#endif

#ifdef KORVAX_THREAD_SANITIZER
extern "C" void __tsan_acquire(void* address);
extern "C" void __tsan_release(void* address);
extern "C" void __tsan_ignore_thread_begin();
extern "C" void __tsan_ignore_thread_end();
#endif

namespace korvax {

// The thread sanitizer can't see into the distribution's Qt: correct QMutex code would be reported as a race.
// These two tell it what the mutex guarantees; every lock of the program is therefore taken through Lock.
inline void HappensAfter([[maybe_unused]] void* address) {
#ifdef KORVAX_THREAD_SANITIZER
  __tsan_acquire(address);
#endif
}

inline void HappensBefore([[maybe_unused]] void* address) {
#ifdef KORVAX_THREAD_SANITIZER
  __tsan_release(address);
#endif
}

/// While one lives on another thread than the sender's, the thread sanitizer doesn't watch this thread's memory.
/// For the emission of a signal that crosses threads: its event is made here and deleted by the receiver's thread,
/// ordered by a mutex inside Qt.
class SignalCrossing {
public:
#ifdef KORVAX_THREAD_SANITIZER
  explicit SignalCrossing(const QObject& sender) : crosses_(sender.thread() != QThread::currentThread()) {
    if (crosses_) {
      __tsan_ignore_thread_begin();
    }
  }
  ~SignalCrossing() {
    if (crosses_) {
      __tsan_ignore_thread_end();
    }
  }
#else
  explicit SignalCrossing(const QObject& /*sender*/) {}
#endif
  SignalCrossing(const SignalCrossing&) = delete;
  SignalCrossing& operator=(const SignalCrossing&) = delete;

#ifdef KORVAX_THREAD_SANITIZER
private:
  const bool crosses_;
#endif
};

/// Holds a mutex from construction to destruction.
class Lock {
public:
  explicit Lock(QMutex& mutex) : mutex_(mutex) {
    mutex_.lock();
    HappensAfter(&mutex_);
  }
  ~Lock() {
    HappensBefore(&mutex_);
    mutex_.unlock();
  }
  Lock(const Lock&) = delete;
  Lock& operator=(const Lock&) = delete;

  /// Releases the mutex, waits to be woken without a time limit, takes the mutex again.
  void Wait(QWaitCondition& condition) {
    HappensBefore(&mutex_);
    condition.wait(&mutex_);
    HappensAfter(&mutex_);
  }

  /// The same with a limit; false when the limit passed first.
  bool WaitFor(QWaitCondition& condition, unsigned long milliseconds) {
    HappensBefore(&mutex_);
    const bool woken = condition.wait(&mutex_, milliseconds);
    HappensAfter(&mutex_);
    return woken;
  }

private:
  QMutex& mutex_;
};

/// A value that one thread writes and another reads, always as a whole. For texts and groups of settings;
/// numbers that stand alone are atomics.
template <typename T>
class Guarded {
public:
  explicit Guarded(T value = T()) : value_(std::move(value)) {}

  T Get() const {
    const Lock lock(mutex_);
    return value_;
  }
  void Set(T value) {
    const Lock lock(mutex_);
    std::swap(value_, value);
  }

private:
  mutable QMutex mutex_;
  T value_;
};

}  // namespace korvax
