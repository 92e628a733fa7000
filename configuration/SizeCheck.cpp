#include "configuration/SizeCheck.h"

#include <QJsonArray>

#include <algorithm>
#include <cmath>

namespace korvax {

namespace {

constexpr double MostCounters = 67'108'864;
constexpr double MostSamples = 16'777'216;
constexpr int MostTraces = 1'048'576;

struct Size {
  QString words;         // in parameter names
  const char* reported;  // the parameter that the finding stands at
  double number = 0;     // exact as far as it matters, and never too large
  double most = MostCounters;
};

double Entries(const ParameterList& parameters, const char* name) {
  const auto* const entry = parameters.Find(QLatin1String(name));
  return entry == nullptr ? 0 : entry->value.toArray().size();
}

double NotNegative(const ParameterList& parameters, const char* name, int fallback = 0) {
  return std::max(parameters.Integer(QLatin1String(name), fallback), 0);
}

// A 0 counts as 1 here, as in the block.
Size TraceSize(const ParameterList& parameters) {
  const double traces = NotNegative(parameters, "ch_analog") + NotNegative(parameters, "ch_digital");
  return {QStringLiteral("\"sample_number\" times \"ch_number\" times (\"ch_analog\" + \"ch_digital\")"),
          "sample_number",
          std::max(NotNegative(parameters, "sample_number"), 1.0) *
              std::max(NotNegative(parameters, "ch_number"), 1.0) * std::max(traces, 1.0),
          MostSamples};
}

Size SizeOf(const BlockEntry& block, const ParameterList& parameters) {
  if (block.type == QLatin1String("spectrum") || block.type == QLatin1String("tof_histogram")) {
    return {QStringLiteral("\"ch_number\" times \"bin_number\""), "bin_number",
            NotNegative(parameters, "ch_number") * NotNegative(parameters, "bin_number")};
  }
  if (block.type == QLatin1String("position")) {
    return {QStringLiteral("\"y_positions\" times half the entries of \"positions\""), "y_positions",
            NotNegative(parameters, "y_positions", 256) * std::floor(Entries(parameters, "positions") / 2)};
  }
  if (block.type == QLatin1String("image")) {
    return {QStringLiteral("the entries of \"x_positions\" times those of \"y_positions\""), "y_positions",
            Entries(parameters, "x_positions") * Entries(parameters, "y_positions")};
  }
  return block.type == QLatin1String("oscilloscope") ? TraceSize(parameters) : Size{{}, "", 0};
}

// Other numbers than 1 are only warned of, so that the schema says nothing more of those that are refused.
void CheckAnalogTraces(const BlockEntry& block, const ParameterList& parameters, FindingList& findings) {
  const auto* const entry = parameters.Find(QStringLiteral("ch_analog"));
  if (block.type == QLatin1String("oscilloscope") && entry != nullptr && entry->value.toInt() > MostTraces) {
    findings.Fail(entry->path, QStringLiteral("at most %1").arg(MostTraces),
                  QString::number(entry->value.toInt()));
  }
}

}  // namespace

void CheckSize(const BlockEntry& block, const ParameterList& parameters, FindingList& findings) {
  const Size size = SizeOf(block, parameters);
  if (size.number > size.most) {
    const auto* const entry = parameters.Find(QLatin1String(size.reported));
    findings.Fail(entry == nullptr ? block.path + QStringList{"parameters"} : entry->path,
                  size.words + QStringLiteral(" of at most %1").arg(size.most, 0, 'f', 0),
                  QString::number(size.number, 'f', 0));
  }
  CheckAnalogTraces(block, parameters, findings);
}

}  // namespace korvax
