#include "simulator/Board.h"

#include "simulator/Replay.h"
#include "simulator/Text.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <limits>
#include <thread>
#include <utility>

namespace korvax::sim {
namespace {

constexpr std::uint32_t MaxChannels = 256;

std::string_view ModelName(Mode mode) {
  switch (mode) {
    case Mode::Array:
      return "simulated array";
    case Mode::Replay:
      return "simulated replay";
    case Mode::Full:
      break;
  }
  return "simulated full load";
}

EndpointSet MakeEndpoints(const BoardSettings& settings, std::vector<Hit> recorded, BoardState& state) {
  switch (settings.mode) {
    case Mode::Array:
      return MakeArrayEndpoints(settings, state);
    case Mode::Replay:
      return MakeReplayEndpoints(settings, std::move(recorded), state);
    case Mode::Full:
      break;
  }
  return MakeFullEndpoints(settings, state);
}

// Gives a replayed board as many channels as its file speaks of, or those that were asked for; false when
// these are too few, or the file speaks of more than a board can have.
bool FitChannels(BoardSettings& settings, const std::vector<Hit>& recorded) {
  const std::uint32_t highest = std::ranges::max_element(recorded, {}, &Hit::channel)->channel;
  if (!settings.channelsGiven && highest < MaxChannels) {
    settings.generator.channels = highest + 1;
  }
  return highest < settings.generator.channels;
}

Status LoadRecording(BoardSettings& settings, std::vector<Hit>& recorded) {
  if (settings.file.empty()) {
    return Status::BadConnectionString;
  }
  const Status status = LoadHits(settings.file, recorded);
  if (status != Status::Ok) {
    return status;
  }
  return FitChannels(settings, recorded) ? Status::Ok : Status::BadChannels;
}

bool Applies(Endpoint& endpoint, std::string_view verb) {
  if (EqualsIgnoringCase(verb, "start")) {
    endpoint.Start();
  } else if (EqualsIgnoringCase(verb, "stop")) {
    endpoint.Stop();
  } else if (EqualsIgnoringCase(verb, "reset")) {
    endpoint.Reset();
  } else {
    return EqualsIgnoringCase(verb, "config");  // parameters act at once, there is nothing left to do
  }
  return true;
}

std::vector<std::string_view> SplitPath(std::string_view path) {
  if (path.starts_with('\\')) {
    path.remove_prefix(1);
  }
  return Split(path, '\\');
}

// Every n-th, n being 0 for never.
bool IsTurn(std::uint64_t count, std::uint64_t n) {
  return n != 0 && count % n == 0;
}

}  // namespace

std::unique_ptr<Board> Board::Open(std::string_view connection, Clock clock, std::int32_t& status) {
  status = static_cast<std::int32_t>(Status::BadConnectionString);
  std::optional<BoardSettings> settings = ParseConnectionString(connection);
  if (!settings) {
    return nullptr;
  }
  if (settings->openResult != 0) {
    status = settings->openResult;
    return nullptr;
  }
  std::vector<Hit> recorded;
  if (settings->mode == Mode::Replay) {
    status = static_cast<std::int32_t>(LoadRecording(*settings, recorded));
    if (status != 0) {
      return nullptr;
    }
  }
  status = static_cast<std::int32_t>(Status::Ok);
  return std::unique_ptr<Board>(
      new Board(*settings, std::string(ModelName(settings->mode)), std::move(recorded), std::move(clock)));
}

Board::Board(const BoardSettings& settings, std::string model, std::vector<Hit> recorded, Clock clock)
    : settings_(settings),
      state_(std::move(model), settings.generator.channels, settings.samples, std::move(clock)),
      parameters_(MakeParameters(state_)),
      endpoints_(MakeEndpoints(settings, std::move(recorded), state_)) {}

Status Board::SetValue(std::string_view path, std::string_view value) const {
  return parameters_.Set(path, value);
}

Status Board::GetValue(std::string_view path, std::string& value) const {
  return parameters_.Get(path, value);
}

Status Board::SendCommand(std::string_view command) {
  const std::vector<std::string_view> parts = SplitPath(command);
  if (parts.size() == 2 && EqualsIgnoringCase(parts[0], "commands")) {
    return SendToBoard(parts[1]);
  }
  if (parts.size() == 3 && EqualsIgnoringCase(parts[0], "endpoints")) {
    return SendToEndpoint(parts[1], parts[2]);
  }
  return Status::UnknownCommand;
}

Status Board::SendToEndpoint(std::string_view name, std::string_view verb) {
  const std::size_t index = FindEndpoint(name);
  if (index == endpoints_.size()) {
    return Status::UnknownEndpoint;
  }
  return Applies(*endpoints_[index], verb) ? Status::Ok : Status::UnknownCommand;
}

Status Board::SendToBoard(std::string_view verb) {
  if (EqualsIgnoringCase(verb, "global_on") || EqualsIgnoringCase(verb, "global_off")) {
    state_.highVoltage.SwitchOn(EqualsIgnoringCase(verb, "global_on"));
    return Status::Ok;
  }
  const bool good = std::ranges::all_of(
      endpoints_, [verb](const std::unique_ptr<Endpoint>& endpoint) { return Applies(*endpoint, verb); });
  return good ? Status::Ok : Status::UnknownCommand;
}

Status Board::Read(std::string_view endpoint, std::int32_t timeoutMs, layout::ReadBlock& out) {
  out = {nullptr, 0, 0};
  const std::size_t index = FindEndpointByPath(endpoint);
  if (index == endpoints_.size()) {
    return Status::UnknownEndpoint;
  }
  Status status = Status::Ok;
  if (Misbehaves(slots_[index], status, out)) {
    return status;
  }
  ReadResult result = endpoints_[index]->Read(timeoutMs);
  if (result.status == Status::Ok) {
    out = slots_[index].blocks.HandOut(std::move(result.block));
  }
  return result.status;
}

Status Board::Free(std::string_view endpoint, const layout::ReadBlock& block) {
  const std::size_t index = FindEndpointByPath(endpoint);
  if (index == endpoints_.size()) {
    return Status::UnknownEndpoint;
  }
  Slot& slot = slots_[index];
  if (slot.frees.fetch_add(1, std::memory_order_relaxed) + 1 == settings_.crashFree) {
    std::abort();
  }
  return slot.blocks.Free(block.entries);
}

std::size_t Board::FindEndpoint(std::string_view name) {
  const auto found = std::ranges::find_if(
      EndpointNames, [name](std::string_view each) { return EqualsIgnoringCase(each, name); });
  return static_cast<std::size_t>(found - EndpointNames.begin());
}

std::size_t Board::FindEndpointByPath(std::string_view path) {
  const std::vector<std::string_view> parts = SplitPath(path);
  const bool good = parts.size() == 2 && EqualsIgnoringCase(parts[0], "endpoints");
  return good ? FindEndpoint(parts[1]) : EndpointNames.size();
}

bool Board::IsFailing(Slot& slot, std::uint64_t read) const {
  if (settings_.failing.read == 0 || read < settings_.failing.read) {
    return false;
  }
  if (read == settings_.failing.read) {
    slot.failsUntilNs = state_.clock() + static_cast<std::uint64_t>(settings_.failing.seconds * 1e9);
  }
  return state_.clock() < slot.failsUntilNs;
}

bool Board::Misbehaves(Slot& slot, Status& status, layout::ReadBlock& out) const {
  const std::uint64_t read = slot.reads.fetch_add(1, std::memory_order_relaxed) + 1;
  if (read == settings_.hang.read) {
    std::this_thread::sleep_for(std::chrono::duration<double>(settings_.hang.seconds));
  }
  if (IsTurn(read, settings_.failRead) || IsFailing(slot, read)) {
    status = Status::ReadFailed;
    return true;
  }
  if (IsTurn(read, settings_.negativeRead)) {
    out.count = -1;
    return true;
  }
  if (IsTurn(read, settings_.nullRead)) {
    out.count = 1000;
    return true;
  }
  if (IsTurn(read, settings_.hugeRead)) {
    out = {&slot.unreal, 0, std::numeric_limits<std::int32_t>::max()};
    return true;
  }
  return IsTurn(read, settings_.emptyRead);
}

}  // namespace korvax::sim
