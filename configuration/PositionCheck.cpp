#include "configuration/PositionCheck.h"

#include "configuration/Words.h"

#include <QJsonArray>

namespace korvax {

namespace {

// What isn't an integer is against the schema by itself.
void CheckRange(const ParameterList::Entry& list, int end, const QString& what, FindingList& findings) {
  const QJsonArray values = list.value.toArray();
  for (int i = 0; i < values.size(); ++i) {
    const int value = values[i].toInt();
    const bool isInteger = value == values[i].toInt(1);
    if (isInteger && (value < 0 || value >= end)) {
      findings.Warn(list.path + QStringList{QString::number(i)},
                    what + QStringLiteral(" from 0 to %1, as others count nothing").arg(end - 1),
                    QString::number(value));
    }
  }
}

}  // namespace

void CheckPositions(const BlockEntry& block, const ParameterList& parameters, FindingList& findings) {
  const auto* const positions = parameters.Find(QStringLiteral("positions"));
  const auto* const partners = parameters.Find(QStringLiteral("correlated_channels"));
  if (block.type != QLatin1String("position") || positions == nullptr) {
    return;
  }
  const int channels = positions->value.toArray().size();
  if (channels >= 2) {
    CheckRange(*positions, channels / 2, QStringLiteral("a column of the map,"), findings);
  }
  if (partners == nullptr || channels < 2) {
    return;
  }
  CheckRange(*partners, channels, QStringLiteral("a channel that has an entry in \"positions\","), findings);
  const int entries = partners->value.toArray().size();
  if (entries > channels) {
    findings.Warn(partners->path, QStringLiteral("at most %1 entries, as \"positions\" has no more").arg(channels),
                  QString::number(entries));
  } else if (entries > 0 && entries < channels) {
    findings.Warn(partners->path,
                  QStringLiteral("a partner for each of the %1 channels of \"positions\"").arg(channels),
                  QString::number(entries));
  }
}

}  // namespace korvax
