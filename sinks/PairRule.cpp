#include "sinks/PairRule.h"

#include <algorithm>

namespace korvax {

bool StripWiring::HasPlace(quint32 channel, quint32 partner) const {
  if (channel >= positions.size() || partner >= positions.size()) {
    return false;
  }
  const qint32 column = positions[channel];
  return column >= 0 && column < Columns();
}

bool HasRepeatedChannel(std::span<const StripHit> hits, std::vector<quint32>& channels) {
  channels.resize(hits.size());
  std::transform(hits.begin(), hits.end(), channels.begin(), [](const StripHit& hit) { return hit.channel; });
  std::sort(channels.begin(), channels.end());
  return std::adjacent_find(channels.begin(), channels.end()) != channels.end();
}

namespace {

void Raise(std::span<HitRole> roles, std::size_t partner, HitRole role) {
  if (!roles.empty()) {
    roles.front() = std::max(roles.front(), role);
    roles[partner] = std::max(roles[partner], role);
  }
}

}  // namespace

int FindPairs(std::span<const StripHit> hits, const StripWiring& wiring, const EnergyWindow& window,
              std::vector<StripPoint>& points, std::span<HitRole> roles) {
  const StripHit& a = hits.front();
  if (a.channel >= wiring.partners.size()) {
    return 0;
  }
  const auto partner = static_cast<quint32>(wiring.partners[a.channel]);
  int rejected = 0;
  for (std::size_t i = 1; i < hits.size(); ++i) {
    const StripHit& b = hits[i];
    if (b.channel != partner || !wiring.HasPlace(a.channel, b.channel)) {
      continue;
    }
    const double low = a.channel < b.channel ? a.energyRaw : b.energyRaw;
    const double sum = static_cast<double>(a.energyRaw) + static_cast<double>(b.energyRaw);
    if (sum < window.min || sum > window.max) {
      ++rejected;
      Raise(roles, i, HitRole::Rejected);
    } else if (sum > 0.0) {
      points.push_back({static_cast<double>(wiring.positions[a.channel]), low / sum});
      Raise(roles, i, HitRole::Placed);
    }
  }
  return rejected;
}

}  // namespace korvax
