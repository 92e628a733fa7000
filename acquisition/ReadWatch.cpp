#include "acquisition/ReadWatch.h"

#include <QtDebug>

#include <utility>

namespace {

constexpr int LookEveryMs = 1'000;

}  // namespace

ReadWatch::ReadWatch(const QString& source, const QString& endpointPath, Clock::duration patience)
    : source_(source), endpointPath_(endpointPath), patience_(patience) {}

void ReadWatch::Start() {
  timer_.start(LookEveryMs, this);
}

void ReadWatch::timerEvent(QTimerEvent* /*event*/) {
  Look();
}

void ReadWatch::Look() {
  const Clock::rep began = began_.load(std::memory_order_relaxed);
  if (told_ != NotReading && began != told_) {
    told_ = NotReading;
    qInfo() << "Source" << source_ << ": the board's library has returned from the read of" << endpointPath_;
  }
  const Clock::duration reading = Clock::now().time_since_epoch() - Clock::duration(began);
  if (began != NotReading && reading >= patience_ && std::exchange(told_, began) == NotReading) {
    qInfo() << "Source" << source_ << ": the board's library hasn't returned from a read of" << endpointPath_
            << "for" << std::chrono::duration_cast<std::chrono::seconds>(reading).count()
            << "s. No data come from there until it does, all else goes on. Look at the board and its connection";
  }
}
