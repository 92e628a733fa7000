#pragma once

#include "tests/unit/boards/HvFixture.h"

/// A block of high voltage, with parameters and commands of its board for queries to use.
class HvQueries : public HvFixture {
protected:
  /// Every value type, read-only and writable in turn.
  void SetMixedParameters() {
    SetParameters({{"List", "\\l", "list", "read_only"},
                   {"Word", "\\w", "u32", "read_write"},
                   {"Text", "\\t", "string_array", "read_only"},
                   {"Words", "\\ws", "u32_array", "read_only"},
                   {"Flag", "\\f", "boolean", "read_only"},
                   {"Flags", "\\fs", "bool_array", "read_write"},
                   {"Odd", "\\o", "float", "read_write"},
                   {"Lists", "\\par\\ls", "list_array", "read_only"}});
  }

  /// "on" is enabled, "off" is not; each with a command of each kind that a configuration sends.
  void LoadCommands() {
    boards_.front()->LoadEndpoints(
        test::Object(R"({"endpoints": [{"name": "on", "enable": true}, {"name": "off"}]})"));
    boards_.front()->LoadCommands(test::Object(R"({"commands": [
        {"command_type": "start", "endpoint_type": "on", "path": "start-on"},
        {"command_type": "config", "endpoint_type": "on", "path": "config-on"},
        {"command_type": "stop", "endpoint_type": "on", "path": "stop-on"},
        {"command_type": "reset", "endpoint_type": "on", "path": "reset-on"},
        {"command_type": "config", "path": "config-board"},
        {"command_type": "start", "endpoint_type": "off", "path": "start-off"},
        {"command_type": "stop", "endpoint_type": "off", "path": "stop-off"}]})"));
  }

  /// What configuring the board calls then.
  const QStringList ConfigureCalls = {"command config-board", "command stop-on", "command config-on",
                                      "command start-on", "command stop-off"};
};
