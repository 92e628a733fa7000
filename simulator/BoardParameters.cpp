#include "simulator/BoardParameters.h"

#include "simulator/Text.h"

#include <cmath>
#include <cstdio>

namespace korvax::sim {
namespace {

std::string BooleanText(bool value) {
  return value ? "1" : "0";
}

std::string RealText(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.1f", value);
  return text;
}

// Whole numbers come as digits or as a general form such as 1e+06.
std::optional<std::uint32_t> ReadWhole(std::string_view text, std::uint32_t low, std::uint32_t high) {
  const std::optional<double> value = ReadReal(text, low, high);
  if (!value || *value != std::floor(*value)) {
    return std::nullopt;
  }
  return static_cast<std::uint32_t>(*value);
}

// True for "negative", false for "positive".
std::optional<bool> ReadNegative(std::string_view polarity) {
  if (EqualsIgnoringCase(polarity, "negative")) {
    return true;
  }
  return EqualsIgnoringCase(polarity, "positive") ? std::optional(false) : std::nullopt;
}

// Gives a value that was read to `store`; false when there is none.
template <typename T, typename Store>
bool StoreIf(const std::optional<T>& value, Store store) {
  if (value) {
    store(*value);
  }
  return value.has_value();
}

// Moves by a degree or two around 38, as a board in a rack does.
double Temperature(std::uint64_t nowNs) {
  const double seconds = static_cast<double>(nowNs) * 1e-9;
  return 38.0 + 1.5 * std::sin(seconds / 60.0) + 0.5 * std::sin(seconds / 7.0);
}

void AddBoard(ParameterTree& tree, BoardState& state) {
  tree.Add({.name = "Model", .read = [&state](std::size_t) { return state.model; }, .write = {}});
  tree.Add({.name = "NumCh",
            .read = [&state](std::size_t) { return std::to_string(state.switches.Count()); },
            .write = {}});
  tree.Add({.name = "Temperature",
            .read = [&state](std::size_t) { return RealText(Temperature(state.clock())); },
            .write = {}});
  tree.Add({.name = "HVOn",
            .read = [&state](std::size_t) { return BooleanText(state.highVoltage.IsOn()); },
            .write = {}});
  tree.Add({.name = "Samples",
            .read = [&state](std::size_t) { return std::to_string(state.samples.load()); },
            .write =
                [&state](std::size_t, std::string_view value) {
                  return StoreIf(ReadWhole(value, 16, 16384), [&](auto samples) { state.samples = samples; });
                }});
}

void AddChannel(ParameterTree& tree, ChannelSwitches& switches) {
  tree.Add({.name = "ChEnable",
            .read = [&](std::size_t ch) { return BooleanText(switches[ch].enabled); },
            .write =
                [&](std::size_t ch, std::string_view value) {
                  return StoreIf(ReadBoolean(value), [&](bool enabled) { switches[ch].enabled = enabled; });
                },
            .perChannel = true,
            .maskWithoutChannel = true});
  tree.Add({.name = "ChThreshold",
            .read = [&](std::size_t ch) { return std::to_string(switches[ch].threshold.load()); },
            .write =
                [&](std::size_t ch, std::string_view value) {
                  return StoreIf(ReadWhole(value, 0, 65535), [&](auto raw) { switches[ch].threshold = raw; });
                },
            .perChannel = true});
  tree.Add({.name = "ChPolarity",
            .read = [&](std::size_t ch) { return switches[ch].negative ? "negative" : "positive"; },
            .write =
                [&](std::size_t ch, std::string_view value) {
                  return StoreIf(ReadNegative(value), [&](bool negative) { switches[ch].negative = negative; });
                },
            .perChannel = true});
}

void AddHighVoltage(ParameterTree& tree, HighVoltage& hv) {
  tree.Add({.name = "HVEnable",
            .read = [&](std::size_t ch) { return BooleanText(hv.IsEnabled(ch)); },
            .write =
                [&](std::size_t ch, std::string_view value) {
                  return StoreIf(ReadBoolean(value), [&](bool enabled) { hv.Enable(ch, enabled); });
                },
            .perChannel = true,
            .maskWithoutChannel = true});
  tree.Add({.name = "HVSet",
            .read = [&](std::size_t ch) { return RealText(hv.SetPoint(ch)); },
            .write =
                [&](std::size_t ch, std::string_view value) {
                  return StoreIf(ReadReal(value, 0.0, HighVoltage::MaxVolt),
                                 [&](double volt) { hv.ChangeSetPoint(ch, volt); });
                },
            .perChannel = true});
  tree.Add({.name = "HVRamp",
            .read = [&](std::size_t ch) { return RealText(hv.Ramp(ch)); },
            .write =
                [&](std::size_t ch, std::string_view value) {
                  return StoreIf(ReadReal(value, 0.1, HighVoltage::MaxVoltPerSecond),
                                 [&](double speed) { hv.ChangeRamp(ch, speed); });
                },
            .perChannel = true});
}

void AddMonitors(ParameterTree& tree, HighVoltage& hv) {
  tree.Add({.name = "HVVoltage",
            .read = [&](std::size_t ch) { return RealText(hv.Voltage(ch)); },
            .write = {},
            .perChannel = true});
  tree.Add({.name = "HVCurrent",
            .read = [&](std::size_t ch) { return RealText(hv.Current(ch)); },
            .write = {},
            .perChannel = true});
  tree.Add(
      {.name = "HVState", .read = [&](std::size_t ch) { return hv.State(ch); }, .write = {}, .perChannel = true});
}

}  // namespace

ParameterTree MakeParameters(BoardState& state) {
  ParameterTree tree(static_cast<std::uint32_t>(state.switches.Count()));
  AddBoard(tree, state);
  AddChannel(tree, state.switches);
  AddHighVoltage(tree, state.highVoltage);
  AddMonitors(tree, state.highVoltage);
  return tree;
}

}  // namespace korvax::sim
