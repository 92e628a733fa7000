#pragma once

#include <QtGlobal>

#include <vector>

namespace korvax::client {

/// Which of some levels of heat a count belongs to: 0 for no counts, then 1 to `levels` up to the largest count,
/// so that a single count shows beside any number.
class HeatScale {
public:
  /// A level that counts up to the largest reach, and the smallest count of it.
  struct Step {
    int level;
    quint64 from;

    bool operator==(const Step&) const = default;
  };

  /// `levels` is 1 or more. A logarithmic scale begins at half a count.
  HeatScale(quint64 largest, int levels, bool logarithmic);

  quint64 Largest() const { return largest_; }

  /// Of a count that is not above the largest.
  int Level(quint64 count) const;

  /// Ascending; none when the largest count is 0.
  std::vector<Step> Steps() const;

private:
  quint64 Smallest(int level) const;

  quint64 largest_;
  int levels_;
  bool logarithmic_;
};

}  // namespace korvax::client
