#pragma once

#include "simulator/Status.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace korvax::sim {

// Where a path leads: each "ChannelN" part names the channel, the other parts are the parameter.
struct ParameterPath {
  std::optional<std::uint32_t> channel;
  std::string name;
};

// "\Name", "Name", "\Channel3\Name", "\Channel3\Group\Channel3\Name"; nothing when a part is empty or two
// channels differ. Whether there is such a parameter isn't looked at.
std::optional<ParameterPath> ParseParameterPath(std::string_view path);

// One parameter. `read` gives the text of a value; `write` takes one and says false when it is out of its
// type or range. Without `write` it is a read-only one. Both may be called from any thread.
struct Parameter {
  std::string name;
  std::function<std::string(std::size_t channel)> read;
  std::function<bool(std::size_t channel, std::string_view value)> write;
  bool perChannel = false;
  // The path without a channel holds all channels as a decimal number, channel i being bit i.
  bool maskWithoutChannel = false;
};

// Parameters by path; letter case is ignored. The list is fixed before the first read or write; then it is
// as thread-safe as its parameters.
class ParameterTree {
public:
  explicit ParameterTree(std::uint32_t channels) : channels_(channels) {}

  void Add(Parameter parameter) { parameters_.push_back(std::move(parameter)); }
  // UnknownPath leaves `value` as it was.
  Status Get(std::string_view path, std::string& value) const;
  // UnknownPath, ReadOnly or BadValue change nothing.
  Status Set(std::string_view path, std::string_view value) const;

private:
  struct Target {
    const Parameter* parameter;
    std::optional<std::uint32_t> channel;
  };

  std::optional<Target> Find(std::string_view path) const;
  std::string ReadMask(const Parameter& parameter) const;
  bool WriteMask(const Parameter& parameter, std::string_view value) const;
  std::uint32_t MaskChannels() const;

  const std::uint32_t channels_;
  std::vector<Parameter> parameters_;
};

}  // namespace korvax::sim
