#include "client/HeatLegend.h"

#include "client/CountScale.h"
#include "client/TextFit.h"

namespace korvax::client {

namespace {

constexpr int gap = 2;

struct Entry {
  int level;
  QString label;
};

/// Rounded down to three digits, which keeps it short.
QString ShortLabel(quint64 count) {
  quint64 unit = 1;
  while (count / unit >= 1000) {
    unit *= 10;
  }
  return TickLabel(count / unit * unit);
}

std::vector<Entry> Entries(const HeatScale& scale) {
  std::vector<Entry> entries;
  for (const HeatScale::Step& step : scale.Steps()) {
    entries.push_back({step.level, ShortLabel(step.from)});
  }
  if (!entries.empty() && ShortLabel(scale.Largest()) != entries.back().label) {
    entries.back().label += QLatin1Char('-') + ShortLabel(scale.Largest());
  }
  return entries;
}

/// `count` of the entries: the last and, at about equal distances, others from the first on.
std::vector<Entry> Thinned(const std::vector<Entry>& entries, std::size_t count) {
  std::vector<Entry> thinned;
  for (std::size_t index = 0; index + 1 < count; ++index) {
    thinned.push_back(entries[index * (entries.size() - 1) / (count - 1)]);
  }
  thinned.push_back(entries.back());
  return thinned;
}

int WidthOf(const std::vector<Entry>& entries) {
  int width = -gap;
  for (const Entry& entry : entries) {
    width += gap + HeatInk::swatchWidth + 1 + static_cast<int>(entry.label.size());
  }
  return width;
}

}  // namespace

QString Legend(const HeatScale& scale, const HeatInk& ink, int width) {
  const std::vector<Entry> all = Entries(scale);
  if (all.empty()) {
    return KeepBeginning(QStringLiteral("none yet"), width);
  }
  std::vector<Entry> entries = all;
  while (WidthOf(entries) > width && entries.size() > 1) {
    entries = Thinned(all, entries.size() - 1);
  }
  QStringList texts;
  for (const Entry& entry : entries) {
    texts.append(ink.Swatch(entry.level) + QLatin1Char(' ') + entry.label);
  }
  return WidthOf(entries) > width ? QString() : texts.join(Blanks(gap));
}

}  // namespace korvax::client
