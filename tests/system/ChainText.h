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

/// One of each behind a tee, and another spectrum behind a sorter.
inline QJsonArray BlocksOfAnalysis() {
  return {Tee("tee", "source", 5),
          PositionBlock("tee", "0"),
          ImageBlock("tee", "1"),
          TimesBlock("tee", "2"),
          SpectrumBlock("spectrum", "tee", "3"),
          Block("time_sorting", "sorter", "tee", "4"),
          SpectrumBlock("sorted", "sorter", "0")};
}

/// A configuration whose source feeds a dumper "dumper" and nothing else.
inline QJsonValue WithDumper(const QJsonValue& configuration) {
  return WithChain(configuration, {Block("dumper", "dumper", "source", "0")});
}

/// A "storage" that records all there is, every wave of it.
inline QJsonObject RunStorage(const QString& folder, const char* format, int eventsPerFile) {
  return {{"file_path", folder},
          {"format", format},
          {"events_per_file", eventsPerFile},
          {"wavedump_time_interval", -1},
          {"enable_list", true},
          {"enable_wave", true},
          {"enable_mcs", true}};
}

}  // namespace test
