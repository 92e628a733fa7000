#pragma once

#include "boards/VendorLibrary.h"

#include <QSet>
#include <QStringList>

#include <functional>

namespace test {

/// A board library inside the test: records every call and answers as the test says. Thread-safe; one at a time,
/// because the six functions are plain ones.
class FakeVendor {
public:
  FakeVendor();
  ~FakeVendor();
  FakeVendor(const FakeVendor&) = delete;
  FakeVendor& operator=(const FakeVendor&) = delete;

  /// For a DigitizerBoard. Functions named in `missing` can't be found.
  vendor::FunctionLookup Lookup() const;

  /// One text per call in order: "open ADDRESS", "set PATH=VALUE", "get PATH", "command PATH",
  /// "read ENDPOINT", "free ENDPOINT".
  QStringList Calls() const;
  /// The calls that begin with the text.
  QStringList CallsOf(const QString& prefix) const;
  void ClearCalls();

  // What the functions do; set before the calls.
  QSet<QString> missing;
  std::int32_t openResult = 0;
  std::uint64_t openHandle = 77;
  std::int32_t result = 0;  ///< of set, get and command
  std::string value;        ///< what get answers
  /// Fills the 16-byte read block. May run on an acquisition thread. Without it reads find nothing.
  std::function<std::int32_t(void* block)> onRead;
  std::function<void(void* block)> onFree;
  std::function<void()> onCommand;  ///< on the thread that sends it
};

}  // namespace test
