#pragma once

#include "boards/DigitizerBoard.h"
#include "framework/ChainContext.h"
#include "tests/support/FakeVendor.h"
#include "tests/support/RawBlock.h"

#include <condition_variable>
#include <deque>
#include <map>
#include <mutex>
#include <optional>

namespace test {

/// An energy record as the board library lays it out.
Bytes EnergyRecord(quint32 channel, quint32 energyRaw, quint64 timestamp = 0);
/// A block of one such record.
RawBlock OneEvent(quint32 channel, quint32 energyRaw, quint64 timestamp = 0);

/// A board "det" with one endpoint "energy" that hands out what the test offers, in order, and takes it back.
/// Memory that was handed back is gone, so that an address sanitizer sees who still looks at it.
class ScriptedDigitizer {
public:
  ScriptedDigitizer();

  void Offer(RawBlock block);
  /// A read that returns the code; with code 0, one whose count is `count`.
  void OfferNothing(std::int32_t code, std::int32_t count = 0);

  /// Everything offered was read, decoded, pushed and handed back.
  bool IsExhausted() const;
  /// Blocks handed back that were not out.
  int WrongReturns() const;

  FakeVendor vendor;
  BoardList boards;

private:
  struct Answer {
    std::optional<RawBlock> block;
    std::int32_t code = 0;
    std::int32_t count = 0;
  };
  std::int32_t Read(void* holder);
  void TakeBack(void* holder);

  mutable std::mutex mutex_;
  std::condition_variable offered_;
  std::deque<Answer> answers_;
  std::map<const std::byte*, RawBlock> out_;
  int wrongReturns_ = 0;
};

}  // namespace test
