#pragma once

#include "simulator/BlockStore.h"
#include "simulator/EndpointSet.h"

#include <atomic>
#include <memory>
#include <string>
#include <string_view>

namespace korvax::sim {

// One simulated board: parameters, commands, and endpoints with the blocks that their readers hold.
// All operations are safe from any thread.
class Board {
public:
  // Makes a board by its connection string, or says in `status` why not and returns nothing.
  static std::unique_ptr<Board> Open(std::string_view connection, Clock clock, std::int32_t& status);

  Status SetValue(std::string_view path, std::string_view value) const;
  Status GetValue(std::string_view path, std::string& value) const;
  Status SendCommand(std::string_view command);
  // Fills `out`: with status Ok the entries and their count (0, negative, or not that of the entries, only where
  // the connection string asks for it), else no entries.
  Status Read(std::string_view endpoint, std::int32_t timeoutMs, layout::ReadBlock& out);
  Status Free(std::string_view endpoint, const layout::ReadBlock& block);

private:
  struct Slot {
    BlockStore blocks;
    std::atomic<std::uint64_t> reads{0};
    std::atomic<std::uint64_t> frees{0};
    std::atomic<std::uint64_t> failsUntilNs{0};
    layout::Entry unreal{};  // what a count that is much too high begins with
  };

  Board(const BoardSettings& settings, std::string model, std::vector<Hit> recorded, Clock clock);
  // Position of the endpoint in the set; the set's size when there is none of that name.
  static std::size_t FindEndpoint(std::string_view name);
  static std::size_t FindEndpointByPath(std::string_view path);
  Status SendToEndpoint(std::string_view name, std::string_view verb);
  Status SendToBoard(std::string_view verb);
  // Whether an error that lasts holds at the read of this number, which may be its first.
  bool IsFailing(Slot& slot, std::uint64_t read) const;
  // True when this read misbehaves, which `status` and `out` then tell.
  bool Misbehaves(Slot& slot, Status& status, layout::ReadBlock& out) const;

  const BoardSettings settings_;
  BoardState state_;
  const ParameterTree parameters_;
  const EndpointSet endpoints_;
  std::array<Slot, EndpointNames.size()> slots_;
};

}  // namespace korvax::sim
