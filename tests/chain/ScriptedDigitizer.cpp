#include "tests/chain/ScriptedDigitizer.h"

#include "tests/support/Json.h"

#include <chrono>

namespace test {

Bytes EnergyRecord(quint32 channel, quint32 energyRaw, quint64 timestamp) {
  Bytes record;
  record.U64(timestamp);  //  0
  record.U32(channel);    //  8
  record.U32(energyRaw);  // 12
  record.F64(0.0);        // 16 the board's own energy
  record.U8(0);           // 24 first flag
  record.U8(0);           // 25 second flag
  record.Unused(2);       // 26
  record.U32(0);          // 28 extra word
  return record;
}

RawBlock OneEvent(quint32 channel, quint32 energyRaw, quint64 timestamp) {
  RawBlock block;
  block.Add(EnergyRecord(channel, energyRaw, timestamp));
  return block;
}

ScriptedDigitizer::ScriptedDigitizer() {
  vendor.onRead = [this](void* holder) { return Read(holder); };
  vendor.onFree = [this](void* holder) { TakeBack(holder); };
  boards.push_back(std::make_unique<DigitizerBoard>(vendor.Lookup()));
  boards.back()->name = "det";
  boards.back()->LoadEndpoints(Object(R"({"endpoints":[{"name":"energy","path":"\\e","enable":true}]})"));
}

void ScriptedDigitizer::Offer(RawBlock block) {
  const std::lock_guard lock(mutex_);
  answers_.push_back({std::move(block), 0, 0});
  offered_.notify_one();
}

void ScriptedDigitizer::OfferNothing(std::int32_t code, std::int32_t count) {
  const std::lock_guard lock(mutex_);
  answers_.push_back({std::nullopt, code, count});
  offered_.notify_one();
}

bool ScriptedDigitizer::IsExhausted() const {
  const std::lock_guard lock(mutex_);
  return answers_.empty() && out_.empty();
}

int ScriptedDigitizer::WrongReturns() const {
  const std::lock_guard lock(mutex_);
  return wrongReturns_;
}

std::int32_t ScriptedDigitizer::Read(void* holder) {
  constexpr std::int32_t NoDataInTime = -11;
  std::unique_lock lock(mutex_);
  // Like a board library, it waits a little for data before it gives up.
  if (!offered_.wait_for(lock, std::chrono::milliseconds(2), [this] { return !answers_.empty(); })) {
    return NoDataInTime;
  }
  Answer answer = std::move(answers_.front());
  answers_.pop_front();
  if (!answer.block) {
    std::memcpy(static_cast<std::byte*>(holder) + 12, &answer.count, sizeof answer.count);
    return answer.code;
  }
  answer.block->FillHolder(holder);
  const std::byte* const entries = answer.block->Entries();
  out_.emplace(entries, std::move(*answer.block));
  return 0;
}

void ScriptedDigitizer::TakeBack(void* holder) {
  const std::byte* entries = nullptr;
  std::memcpy(&entries, holder, sizeof entries);
  const std::lock_guard lock(mutex_);
  wrongReturns_ += out_.erase(entries) == 1 ? 0 : 1;
}

}  // namespace test
