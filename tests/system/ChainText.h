#pragma once

#include "tests/system/ConfigurationText.h"

#include <QJsonArray>
#include <QJsonObject>

namespace test {

/// A block of the chain with one input, for configurations; the pin as it shall stand there.
inline QJsonObject Block(const char* type, const char* name, const char* source, const QJsonValue& pin) {
  return {{"block_type", type},
          {"name", name},
          {"data_type", "energy"},
          {"input_count", 1},
          {"sources", QJsonArray{QJsonObject{{"source", source}, {"pin", pin}}}}};
}

inline QJsonObject Tee(const char* name, const char* source, const QJsonValue& outputs) {
  QJsonObject tee = Block("tee", name, source, "0");
  tee.insert("output_count", outputs);
  return tee;
}

/// The block with parameters, by their names.
inline QJsonObject WithParameters(QJsonObject block, const QJsonObject& values) {
  QJsonArray parameters;
  for (auto value = values.begin(); value != values.end(); ++value) {
    parameters << QJsonObject{{"param_name", value.key()}, {"param_value", value.value()}};
  }
  block.insert("parameters", parameters);
  return block;
}

/// A configuration whose chain is its own source and then these blocks.
inline QJsonValue WithChain(const QJsonValue& configuration, QJsonArray blocks) {
  const QString chain = QStringLiteral("processing/0/filter_chain/0/chain");
  blocks.prepend(At(configuration, chain + QStringLiteral("/0")));
  return With(configuration, chain, blocks);
}

/// Blocks of each sink type, as they work with 4 channels: pairs 0-1 and 2-3, 2 × 2 pixels, 4 bins of time.
inline QJsonObject PositionBlock(const char* source, const QJsonValue& pin) {
  return WithParameters(Block("position", "position", source, pin),
                        {{"positions", QJsonArray{0, 0, 1, 1}},
                         {"correlated_channels", QJsonArray{1, 0, 3, 2}},
                         {"y_positions", 4}});
}
inline QJsonObject ImageBlock(const char* source, const QJsonValue& pin) {
  return WithParameters(Block("image", "image", source, pin),
                        {{"x_positions", QJsonArray{0, 1}}, {"y_positions", QJsonArray{0, 1}}});
}
inline QJsonObject TimesBlock(const char* source, const QJsonValue& pin) {
  return WithParameters(Block("tof_histogram", "times", source, pin),
                        {{"binning", 1e9}, {"bin_number", 4}, {"ch_number", 4}});
}
inline QJsonObject SpectrumBlock(const char* name, const char* source, const QJsonValue& pin) {
  return WithParameters(Block("spectrum", name, source, pin), {{"bin_number", 1024}, {"ch_number", 8}});
}

}  // namespace test
