#include "configuration/ConfigurationSchema.h"
#include "tests/support/Json.h"
#include "tests/unit/configuration/CheckText.h"
#include "tests/unit/configuration/Edits.h"

#include <QJsonArray>
#include <QMap>
#include <QSet>

#include <gtest/gtest.h>

#include <tuple>
#include <vector>

namespace {

// What the server reads each key as: b true or false, i an integer, n a number, s a text, a an array, o an object.
const QMap<QString, QString> TypesByKey{{"storage", "o"},
                                        {"Hardware", "a"},
                                        {"processing", "a"},
                                        {"network", "o"},
                                        {"address", "s"},
                                        {"origins", "a"},
                                        {"max_connections", "i"},
                                        {"max_message_bytes", "i"},
                                        {"max_unsent_bytes", "i"},
                                        {"file_path", "s"},
                                        {"format", "s"},
                                        {"events_per_file", "i"},
                                        {"wavedump_time_interval", "i"},
                                        {"enable_list", "b"},
                                        {"enable_wave", "b"},
                                        {"enable_mcs", "b"},
                                        {"enable", "b"},
                                        {"id", "si"},
                                        {"board_name", "s"},
                                        {"board_type", "s"},
                                        {"board_family", "s"},
                                        {"board_plugin", "s"},
                                        {"board_connection_string", "s"},
                                        {"configs", "a"},
                                        {"elements", "a"},
                                        {"name", "s"},
                                        {"path", "s"},
                                        {"access", "s"},
                                        {"value_type", "s"},
                                        {"value", "s"},
                                        {"values", "a"},
                                        {"direct_apply", "b"},
                                        {"endpoints", "a"},
                                        {"text", "s"},
                                        {"type", "s"},
                                        {"commands", "a"},
                                        {"command_type", "s"},
                                        {"endpoint_type", "s"},
                                        {"display_ui", "s"},
                                        {"loop", "s"},
                                        {"filter_chain", "a"},
                                        {"chain", "a"},
                                        {"block_type", "s"},
                                        {"data_type", "s"},
                                        {"input_count", "i"},
                                        {"output_count", "i"},
                                        {"sources", "a"},
                                        {"source", "s"},
                                        {"pin", "s"},
                                        {"parameters", "a"},
                                        {"param_name", "s"},
                                        {"param_type", "s"},
                                        {"download_interval", "n"},
                                        {"energy_calibration_expression", "s"},
                                        {"use_board_kev", "b"},
                                        {"ch_number", "i"},
                                        {"bin_number", "i"},
                                        {"gain", "n"},
                                        {"energy_cut_min", "n"},
                                        {"energy_cut_max", "n"},
                                        {"binning", "n"},
                                        {"x_positions", "a"},
                                        {"positions", "a"},
                                        {"correlated_channels", "a"},
                                        {"sample_number", "i"},
                                        {"ch_analog", "i"},
                                        {"ch_digital", "i"},
                                        {"channel_map", "a"},
                                        {"history_depth", "i"},
                                        {"n_channels", "i"},
                                        {"n_windows", "i"},
                                        {"timestamp_delta", "n"}};

const QMap<QString, QString> TypesOfElements{{"values", "snb"},    {"origins", "s"},
                                             {"x_positions", "i"}, {"y_positions", "i"},
                                             {"positions", "i"},   {"correlated_channels", "i"},
                                             {"channel_map", "s"}};

struct Place {
  QString key;   // as the check calls it
  QString type;  // as in the tables above
};

bool IsNumber(const QString& step) {
  bool isNumber = false;
  step.toInt(&isNumber);
  return isNumber;
}

// A parameter's value goes by the parameter's name.
QString NameOf(const QJsonObject& whole, const QStringList& path) {
  const QString name = test::At(whole, path.mid(0, path.size() - 1))["param_name"].toString();
  return path.last() == "param_value" ? name : path.last();
}

Place PlaceOf(const QJsonObject& whole, const QStringList& path) {
  const QString last = path.last();
  if (IsNumber(last)) {
    const QString array = NameOf(whole, path.mid(0, path.size() - 1));
    const bool isLevel = !TypesOfElements.contains(array);
    return isLevel ? Place{{}, "o"} : Place{"key \"" + array + "\"[" + last + "]", TypesOfElements.value(array)};
  }
  const QString name = NameOf(whole, path);
  const QJsonObject block = test::At(whole, path.mid(0, 6)).toObject();
  const QString type =
      name == "y_positions" ? (block["block_type"] == "image" ? "a" : "i") : TypesByKey.value(name);
  EXPECT_FALSE(type.isEmpty()) << qPrintable(name);
  return {"key \"" + name + "\"", type};
}

QJsonArray WrongValuesFor(const QString& type) {
  QJsonArray wrong{QJsonValue()};
  if (!type.contains('b')) {
    wrong << true;
  }
  if (!type.contains('n')) {
    wrong << 7.5 << 3e9;
  }
  if (!type.contains('n') && !type.contains('i')) {
    wrong << 8;
  }
  if (!type.contains('s')) {
    wrong << "text";
  }
  if (!type.contains('a')) {
    wrong << QJsonValue(QJsonArray{"text"});
  }
  if (!type.contains('o')) {
    wrong << QJsonObject{{"some", "member"}};
  }
  return wrong;
}

// The server reads these as something else without a word; a person means it so too often for an error.
bool IsOnlyWarned(const QStringList& path, const QJsonObject& whole, const QJsonValue& wrong) {
  const QJsonValue block = test::At(whole, path.mid(0, 6));
  return path.last() == "value" || (wrong.isBool() && (path.last() == "display_ui" || path.last() == "loop")) ||
         (path.last() == "pin" && block["block_type"] != "source" && block["block_type"] != "hv");
}

// The same for places that differ in numbers of elements alone. What stands beside a key can matter: the type of
// the block, of the board's parameter, and the name of the block's parameter.
QString ShapeOf(const QJsonObject& whole, const QStringList& path) {
  QStringList shape;
  for (int i = 0; i < path.size(); ++i) {
    const QJsonObject around = test::At(whole, path.mid(0, i)).toObject();
    shape << (IsNumber(path[i]) ? QStringLiteral("#") : path[i]) << around["block_type"].toString()
          << around["value_type"].toString() << around["param_name"].toString();
  }
  return shape.join('/');
}

// One place of each shape: all of them take minutes with sanitizers.
std::vector<QStringList> PlacesToTry(const QJsonObject& whole) {
  std::vector<QStringList> places;
  QSet<QString> shapes;
  for (const QStringList& path : test::AllPaths(whole)) {
    const QString shape = ShapeOf(whole, path);
    if (!shapes.contains(shape)) {
      shapes << shape;
      places.push_back(path);
    }
  }
  return places;
}

// Each of every third place, so that no test is long.
class WrongTypes : public testing::TestWithParam<std::tuple<const char*, std::size_t>> {};

TEST_P(WrongTypes, areRefusedByTheSchemaAndNamedByTheCheckAtTheirKeyAndLine) {
  const korvax::JsonSchema schema(test::Object(korvax::ConfigurationSchemaText()));
  const QJsonObject good = test::ProjectConfiguration(QLatin1String(std::get<0>(GetParam())));
  const std::vector<QStringList> places = PlacesToTry(good);
  int tried = 0;
  for (std::size_t i = std::get<1>(GetParam()); i < places.size(); i += 3) {
    const QStringList& path = places[i];
    const Place place = PlaceOf(good, path);
    const QString line = QString::number(test::LineOf(good, path));
    for (const QJsonValue& wrong : WrongValuesFor(place.type)) {
      const QJsonObject edited = test::With(good, path, wrong);
      const QByteArray text = test::Text(edited);
      EXPECT_FALSE(schema.Accepts(edited)) << qPrintable(path.join('/')) << text.toStdString();
      const QStringList findings = test::SchemaFindingsIn(text);
      ASSERT_EQ(findings.size(), 1) << test::Joined(findings) << text.toStdString();
      const QString severity = IsOnlyWarned(path, good, wrong) ? ": warning: " : ": error: ";
      EXPECT_TRUE(findings[0].startsWith(line + severity)) << test::Joined(findings) << text.toStdString();
      EXPECT_TRUE(findings[0].contains(place.key + ": expected ")) << test::Joined(findings) << text.toStdString();
      EXPECT_TRUE(test::FindingsIn(text).contains(findings[0])) << text.toStdString();
      ++tried;
    }
  }
  EXPECT_GT(tried, 80);
}

INSTANTIATE_TEST_SUITE_P(Files, WrongTypes,
                         testing::Combine(testing::Values("tests/unit/configuration/complete.json",
                                                          "examples/demo.json", "examples/replay.json"),
                                          testing::Values(0, 1, 2)));

}  // namespace
