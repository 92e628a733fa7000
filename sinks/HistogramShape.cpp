#include "sinks/HistogramShape.h"

#include "framework/BlockParameters.h"

namespace korvax {

HistogramShape HistogramShape::FromParameters(const QJsonValue& block) {
  HistogramShape shape;
  ApplyParameters(
      block, {{QLatin1String("ch_number"), [&shape](const QJsonValue& value) { shape.channels = value.toInt(); }},
              {QLatin1String("bin_number"), [&shape](const QJsonValue& value) { shape.bins = value.toInt(); }}});
  return shape;
}

}  // namespace korvax
