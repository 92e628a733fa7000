#include "configuration/FindingList.h"

#include "configuration/Place.h"
#include "configuration/Words.h"

#include <algorithm>

namespace korvax {

void FindingList::Add(Severity severity, const QStringList& path, const QString& expected, const Words& found) {
  if (Count(severity)) {
    Keep(severity, positions_.Line(path), path, Difference(expected, found()));
  }
}

void FindingList::AddAtLine(Severity severity, int line, const QStringList& path, const QString& text) {
  if (Count(severity)) {
    Keep(severity, line, path, text);
  }
}

bool FindingList::Count(Severity severity) {
  ++(severity == Severity::Error ? errors_ : warnings_);
  return static_cast<int>(findings_.size()) < MostKept;
}

void FindingList::Keep(Severity severity, int line, const QStringList& path, const QString& text) {
  findings_.push_back({severity, line, 0, PlaceText(configuration_, path) + QStringLiteral(": ") + text});
}

CheckReport FindingList::Report() const {
  CheckReport report{{}, errors_, warnings_, errors_ + warnings_ - static_cast<int>(findings_.size())};
  for (const Finding& finding : findings_) {
    if (std::find(report.findings.begin(), report.findings.end(), finding) == report.findings.end()) {
      report.findings.push_back(finding);
    } else {
      --(finding.severity == Severity::Error ? report.errors : report.warnings);
    }
  }
  std::stable_sort(report.findings.begin(), report.findings.end(),
                   [](const Finding& left, const Finding& right) { return left.line < right.line; });
  return report;
}

}  // namespace korvax
