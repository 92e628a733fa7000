#pragma once

#include <QString>

#include <vector>

namespace korvax {

enum class Severity {
  Error,    ///< the server refuses it, reads something else than what stands there, or can't work with it
  Warning,  ///< the server takes it, but perhaps not as it was meant
};

struct Finding {
  Severity severity = Severity::Error;
  int line = 1;    ///< from 1
  int column = 0;  ///< from 1; 0: the whole line
  QString text;    ///< one line: where, key, what was expected, what was found

  bool operator==(const Finding&) const = default;
};

/// What came of a check.
struct CheckReport {
  std::vector<Finding> findings;  ///< by line; none twice
  int errors = 0;                 ///< of all findings, also of those that are not in `findings`
  int warnings = 0;
  int notShown = 0;
};

}  // namespace korvax
