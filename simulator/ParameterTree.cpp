#include "simulator/ParameterTree.h"

#include "simulator/Text.h"

#include <algorithm>
#include <limits>

namespace korvax::sim {
namespace {

std::optional<std::uint32_t> ChannelOfPart(std::string_view part) {
  constexpr std::string_view word = "Channel";
  if (part.size() <= word.size() || !EqualsIgnoringCase(part.substr(0, word.size()), word)) {
    return std::nullopt;
  }
  constexpr std::uint32_t highest = std::numeric_limits<std::uint32_t>::max();
  return ReadInteger<std::uint32_t>(part.substr(word.size()), 0, highest);
}

}  // namespace

std::optional<ParameterPath> ParseParameterPath(std::string_view path) {
  if (path.starts_with('\\')) {
    path.remove_prefix(1);
  }
  ParameterPath parsed;
  for (const std::string_view part : Split(path, '\\')) {
    const std::optional<std::uint32_t> channel = ChannelOfPart(part);
    if (part.empty() || (channel && parsed.channel && *channel != *parsed.channel)) {
      return std::nullopt;
    }
    if (channel) {
      parsed.channel = channel;
    } else {
      parsed.name.append(parsed.name.empty() ? "" : "\\").append(part);
    }
  }
  return parsed;
}

Status ParameterTree::Get(std::string_view path, std::string& value) const {
  const std::optional<Target> target = Find(path);
  if (!target) {
    return Status::UnknownPath;
  }
  const auto& [parameter, channel] = *target;
  value = parameter->perChannel && !channel ? ReadMask(*parameter) : parameter->read(channel.value_or(0));
  return Status::Ok;
}

Status ParameterTree::Set(std::string_view path, std::string_view value) const {
  const std::optional<Target> target = Find(path);
  if (!target) {
    return Status::UnknownPath;
  }
  const auto& [parameter, channel] = *target;
  if (!parameter->write) {
    return Status::ReadOnly;
  }
  const bool good = parameter->perChannel && !channel ? WriteMask(*parameter, value)
                                                      : parameter->write(channel.value_or(0), value);
  return good ? Status::Ok : Status::BadValue;
}

std::optional<ParameterTree::Target> ParameterTree::Find(std::string_view path) const {
  const std::optional<ParameterPath> parsed = ParseParameterPath(path);
  if (!parsed || parsed->channel.value_or(0) >= channels_) {
    return std::nullopt;
  }
  const auto found = std::ranges::find_if(
      parameters_, [&](const Parameter& each) { return EqualsIgnoringCase(each.name, parsed->name); });
  if (found == parameters_.end()) {
    return std::nullopt;
  }
  const bool reachable = parsed->channel ? found->perChannel : !found->perChannel || found->maskWithoutChannel;
  return reachable ? std::optional(Target{&*found, parsed->channel}) : std::nullopt;
}

std::uint32_t ParameterTree::MaskChannels() const {
  return std::min<std::uint32_t>(channels_, 64);
}

std::string ParameterTree::ReadMask(const Parameter& parameter) const {
  std::uint64_t mask = 0;
  for (std::uint32_t channel = 0; channel < MaskChannels(); ++channel) {
    mask |= std::uint64_t{parameter.read(channel) == "1"} << channel;
  }
  return std::to_string(mask);
}

bool ParameterTree::WriteMask(const Parameter& parameter, std::string_view value) const {
  const std::uint64_t highest = std::numeric_limits<std::uint64_t>::max() >> (64 - MaskChannels());
  const std::optional<std::uint64_t> mask = ReadInteger<std::uint64_t>(value, 0, highest);
  for (std::uint32_t channel = 0; mask && channel < MaskChannels(); ++channel) {
    parameter.write(channel, (*mask >> channel & 1U) != 0 ? "1" : "0");
  }
  return mask.has_value();
}

}  // namespace korvax::sim
