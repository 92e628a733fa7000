#pragma once

#include <QJsonValue>

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace test {

/// What is found in complete.json after some edits.
struct FindingsCase {
  const char* name;
  std::vector<std::pair<const char*, QJsonValue>>
      edits;                          ///< path, value; EVENTS and OTHERS stand for its two chains
  std::vector<const char*> findings;  ///< all, in line order, without their lines
};

inline void PrintTo(const FindingsCase& row, std::ostream* out) {
  *out << row.name;
}

inline std::string NameOf(const testing::TestParamInfo<FindingsCase>& info) {
  return info.param.name;
}

void ExpectFindings(const FindingsCase& row);

}  // namespace test
