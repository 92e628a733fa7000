#pragma once

#include "acquisition/BoardRecords.h"
#include "tests/fuzz/FuzzInput.h"

#include <deque>
#include <memory>
#include <vector>

namespace fuzz {

/// What a board library hands out, laid out from an input: entries, records and arrays of exactly the size that
/// the records claim, so that the sanitizers see any reach beyond. Where a claim is more than a decoder takes, the
/// arrays have one element. Claims that are taken but would cost milliseconds are made smaller.
class BoardMemory {
public:
  /// `dataType` as in DecodeSettings.
  BoardMemory(Input& input, const QString& dataType);

  const std::vector<board::Entry>& Entries() const { return entries_; }

private:
  const void* NewRecord(Input& input, const QString& dataType);
  const void* NewWaveGroup(Input& input);
  const void* NewRates(Input& input);
  void MakeAffordable(board::WaveGroupRecord& group);
  template <typename Record>
  const void* Keep(const Record& record);
  template <typename Number>
  const Number* NewArray(Input& input, std::size_t count);

  std::vector<board::Entry> entries_;
  std::vector<std::shared_ptr<const void>> owned_;
  qint64 affordableSamples_ = 1 << 13;
  qint64 affordableWaves_ = 1 << 8;
  quint32 affordableChannels_ = 1 << 10;
};

}  // namespace fuzz
