#include "tests/system/ConfigurationText.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace test {

namespace {

constexpr const char* Valid = R"({
  "storage": {"file_path": ""},
  "Hardware": [{
    "enable": true, "id": "7", "board_name": "Digitizer", "board_type": "DT", "board_family": "Two",
    "board_plugin": "libCAENDig2Scripted", "board_connection_string": "",
    "configs": [{"elements": [
      {"name": "Threshold", "path": "\\par\\Thr", "access": "read_write", "value_type": "u32", "value": "100",
       "direct_apply": true},
      {"name": "Enable", "value_type": "string_array", "path": "\\ChEnable", "values": ["on", 2.5, true],
       "direct_apply": true}]}],
    "endpoints": [
      {"name": "energy", "text": "Energies", "path": "\\energy", "enable": true, "type": "energy_sci_u32"}],
    "commands": [
      {"name": "Start", "text": "Start", "path": "\\energy\\start", "command_type": "start",
       "endpoint_type": "energy", "display_ui": "true", "loop": "false"}]
  }],
  "processing": [{"filter_chain": [{"enable": true, "name": "main", "chain": [
    {"block_type": "source", "name": "source", "data_type": "energy", "input_count": 0, "output_count": 1,
     "sources": [{"source": "Digitizer", "pin": "endpoints\\energy"}],
     "parameters": [
       {"param_name": "download_interval", "param_value": 1},
       {"param_name": "energy_calibration_expression", "param_value": "0.5 * x"},
       {"param_name": "use_board_kev", "param_value": false}]},
    {"block_type": "spectrum", "name": "spectrum", "data_type": "energy", "input_count": 1, "output_count": 0,
     "sources": [{"source": "source", "pin": "0"}],
     "parameters": [
       {"param_name": "bin_number", "param_value": 1024},
       {"param_name": "ch_number", "param_value": 8},
       {"param_name": "gain", "param_value": 1.0},
       {"param_name": "energy_cut_min", "param_value": 0},
       {"param_name": "energy_cut_max", "param_value": 1023}]}
  ]}]}]
})";

QStringList Keys(const QJsonValue& value) {
  if (value.isObject()) {
    return value.toObject().keys();
  }
  QStringList positions;
  for (int i = 0; i < value.toArray().size(); ++i) {
    positions << QString::number(i);
  }
  return positions;
}

QJsonValue Part(const QJsonValue& value, const QString& key) {
  return value.isObject() ? value[key] : value[key.toInt()];
}

QJsonValue WithPart(const QJsonValue& value, const QString& key, const QJsonValue& part) {
  if (value.isArray()) {
    QJsonArray array = value.toArray();
    const int position = key.toInt();
    if (position == array.size()) {
      array.append(part);
    } else {
      array.replace(position, part);
    }
    return array;
  }
  QJsonObject object = value.toObject();
  object.insert(key, part);  // an undefined part removes the key
  return object;
}

}  // namespace

QJsonValue ValidConfiguration(const QString& storage, const QString& connection) {
  const QJsonValue valid = QJsonDocument::fromJson(Valid).object();
  return With(With(valid, QStringLiteral("storage/file_path"), storage),
              QStringLiteral("Hardware/0/board_connection_string"), connection);
}

QJsonValue With(const QJsonValue& whole, const QString& path, const QJsonValue& replacement) {
  if (path.isEmpty()) {
    return replacement;
  }
  const QString key = path.section(QLatin1Char('/'), 0, 0);
  const QString rest = path.section(QLatin1Char('/'), 1);
  return WithPart(whole, key, With(Part(whole, key), rest, replacement));
}

QJsonValue At(const QJsonValue& whole, const QString& path) {
  const QString rest = path.section(QLatin1Char('/'), 1);
  const QJsonValue part = Part(whole, path.section(QLatin1Char('/'), 0, 0));
  return rest.isEmpty() ? part : At(part, rest);
}

QStringList PathsOf(const QJsonValue& whole) {
  QStringList paths;
  for (const QString& key : Keys(whole)) {
    paths << key;
    for (const QString& path : PathsOf(Part(whole, key))) {
      paths << key + QLatin1Char('/') + path;
    }
  }
  return paths;
}

QByteArray ToText(const QJsonValue& value) {
  return value.isArray() ? QJsonDocument(value.toArray()).toJson() : QJsonDocument(value.toObject()).toJson();
}

}  // namespace test
