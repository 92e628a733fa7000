#include "simulator/Replay.h"

#include "runfiles/ListFileReader.h"

#include <algorithm>

namespace korvax::sim {
namespace {

using runfiles::ListFileReader;
using runfiles::ListFileState;
using runfiles::ListRecord;

Hit HitOf(const ListRecord& record) {
  Hit hit;
  hit.timestamp = record.timestamp;
  hit.channel = record.channel;
  hit.energyRaw = record.energyRaw;
  hit.firstFlag = record.flags & 1U;
  hit.secondFlag = record.flags >> 1 & 1U;
  return hit;
}

}  // namespace

Status LoadHits(const std::string& path, std::vector<Hit>& hits) {
  ListFileReader reader(path);
  hits.clear();
  if (reader.State() == ListFileState::Good) {
    hits.reserve(reader.WholeRecords());
  }
  for (ListRecord record; reader.Next(record);) {
    hits.push_back(HitOf(record));
  }
  if (reader.State() == ListFileState::CannotOpen || reader.State() == ListFileState::ReadError) {
    return Status::CannotReadFile;
  }
  return reader.State() != ListFileState::Good || hits.empty() ? Status::NoListFile : Status::Ok;
}

Replay::Replay(std::vector<Hit> hits, double speed, bool loop)
    : hits_(std::move(hits)), speed_(speed), loop_(loop) {
  const auto [earliest, latest] = std::ranges::minmax_element(hits_, {}, &Hit::timestamp);
  span_ = latest->timestamp - earliest->timestamp + 1;
  Restart();
}

void Replay::Restart() {
  next_ = 0;
  shift_ = 0;
  latest_ = hits_.front().timestamp;
}

std::uint64_t Replay::NextDue() {
  if (next_ == hits_.size()) {
    return Never;
  }
  if (speed_ <= 0.0) {
    return 0;
  }
  const std::uint64_t latest = std::max(latest_, hits_[next_].timestamp + shift_);
  const double due = static_cast<double>(latest - hits_.front().timestamp) / speed_;
  constexpr double centuries = 0x1.0p63;
  return static_cast<std::uint64_t>(std::min(due, centuries));
}

Hit Replay::Take() {
  Hit hit = hits_[next_++];
  hit.timestamp += shift_;
  latest_ = std::max(latest_, hit.timestamp);
  if (loop_ && next_ == hits_.size()) {
    next_ = 0;
    shift_ += span_;
  }
  return hit;
}

}  // namespace korvax::sim
