#pragma once

#include <QtGlobal>

#include <span>
#include <vector>

namespace korvax {

/// What the position rule needs of an event.
struct StripHit {
  quint32 channel;
  quint32 energyRaw;
};

/// A place on the detector.
struct StripPoint {
  double x;  ///< column of the map
  double y;  ///< share of the energy that the lower-numbered channel saw, 0 to 1
};

/// How channels belong together, both lists by channel number.
struct StripWiring {
  std::vector<qint32> positions;  ///< column of the map for pairs whose earlier event is in this channel
  std::vector<qint32> partners;

  qint32 Columns() const { return static_cast<qint32>(positions.size() / 2); }
  /// A place on the map for a pair that begins in `channel` and ends in `partner`? Channels beyond `positions` and
  /// columns beyond the map have none.
  bool HasPlace(quint32 channel, quint32 partner) const;
};

/// What became of a hit in its group; the better hides the worse.
enum class HitRole : quint8 { Alone, Rejected, Placed };

/// Bounds of a pair's summed raw energy, both inclusive.
struct EnergyWindow {
  double min = 0.0;
  double max = 4294967295.0;
};

/// True when two of the hits share a channel. Order doesn't matter. `channels` is overwritten; a caller keeps it
/// for its memory.
bool HasRepeatedChannel(std::span<const StripHit> hits, std::vector<quint32>& channels);

/// Appends the points of all pairs that the first of `hits` makes with later ones; returns how many pairs the
/// energy window has rejected. Pairs without a place, or without any energy, give neither. `roles`, one for each
/// hit, are raised by what the pairs make of them; it may be empty.
int FindPairs(std::span<const StripHit> hits, const StripWiring& wiring, const EnergyWindow& window,
              std::vector<StripPoint>& points, std::span<HitRole> roles = {});

}  // namespace korvax
