#pragma once

#include "tests/support/Json.h"
#include "tests/system/ConfigurationText.h"

namespace test {

/// A configuration whose first board becomes the simulated one, with two channels of high voltage, and whose chain
/// gets an HV block "supply" at position 2.
inline QJsonValue WithHighVoltage(QJsonValue configuration) {
  const auto change = [&configuration](const char* path, const QJsonValue& value) {
    configuration = With(configuration, QLatin1String(path), value);
  };
  change("Hardware/0/board_plugin", QStringLiteral("libCAENDig2Sim"));
  change("Hardware/0/board_connection_string", QStringLiteral("sim:array?channels=4"));
  change("Hardware/0/configs", Array(R"([{"elements": [
    {"name": "Ramp", "path": "\\HVRamp", "value_type": "string_array", "values": ["500", "500"], "direct_apply": true},
    {"name": "Set", "path": "\\HVSet", "value_type": "u32_array", "values": [20, 30], "direct_apply": true},
    {"name": "On", "path": "\\HVOn", "value_type": "boolean", "access": "read_only"},
    {"name": "Voltage", "path": "\\HVVoltage", "value_type": "u32_array", "access": "read_only"},
    {"name": "State", "path": "\\HVState", "value_type": "list_array", "access": "read_only"}]}])"));
  change("Hardware/0/endpoints", Array(R"([
    {"name": "energy", "path": "endpoints\\energy", "enable": true, "type": "energy_sci_u32"}])"));
  change("Hardware/0/commands", Array(R"([
    {"name": "Start", "path": "endpoints\\energy\\start", "command_type": "start", "endpoint_type": "energy"},
    {"name": "Stop", "path": "endpoints\\energy\\stop", "command_type": "stop", "endpoint_type": "energy"}])"));
  change("processing/0/filter_chain/0/chain/2",
         Object(R"({"block_type": "hv", "name": "supply", "sources": [{"source": "Digitizer"}],
                    "parameters": [{"param_name": "n_channels", "param_value": 2}]})"));
  return configuration;
}

}  // namespace test
