#pragma once

#include "client/CommandLine.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace korvax::client {

using Words = std::vector<std::string>;

/// The request that the words are; words that are none fail the test.
template <typename Request>
Request Parsed(const Words& words) {
  const auto read = ParseCommandLine(words);
  if (const auto* ending = std::get_if<Ending>(&read)) {
    ADD_FAILURE() << ending->text.toStdString();
    return {};
  }
  return std::get<Request>(std::get<Invocation>(read).request);
}

/// What the words end in instead of a request; "no ending" where they are one.
inline Ending Ended(const Words& words) {
  const auto read = ParseCommandLine(words);
  return std::holds_alternative<Ending>(read) ? std::get<Ending>(read) : Ending{ExitCode::Ok, "no ending"};
}

}  // namespace korvax::client
