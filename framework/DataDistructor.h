#pragma once

#include "framework/DataMessage.h"

#include <vector>

/// Frees what a block allocated outside a message's batch. Word 3 of the message points to it; a message whose
/// word 3 is 0 carries nothing to free. Stateless towards messages, so any thread may call it.
class DataDistructor {
public:
  virtual ~DataDistructor() = default;
  virtual void Destroy(const DataMessage& message) const = 0;

protected:
  DataDistructor() = default;
  DataDistructor(const DataDistructor&) = delete;
  DataDistructor& operator=(const DataDistructor&) = delete;
};

/// For the time-sorting block: word 3 points to a list of plain memory blocks.
class DataDistructorTimeSorting final : public DataDistructor {
public:
  /// Each element was obtained from `::operator new`; the list itself from `new`.
  using List = std::vector<void*>;

  /// Frees each element's memory without running a destructor, then the list.
  void Destroy(const DataMessage& message) const override;
};
