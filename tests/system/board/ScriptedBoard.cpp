// A board library for tests: hands out what the test has written into a file, and writes every call with its
// arguments into another. KORVAX_WITHOUT_<FUNCTION> leaves one of the six functions out.
//
// The connection string is a folder, or a folder followed by "?open=CODE" for an Open that fails; an empty one
// opens a board that records nothing. In the folder:
//   calls   one line per call, for example "read 4711 endpoints\energy 1000"
//   feed    one line per read that finds something; a read that finds no further line times out:
//           "ramp CHANNEL FIRST COUNT ..."  COUNT events of the energies FIRST, FIRST + 1, ... (any number of
//           ramps) "fail CODE" | "nothing" | "negative" | "null" (a count without entries)

#include "acquisition/BoardRecords.h"

#include <fcntl.h>
#include <unistd.h>
#include <chrono>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <map>
#include <memory>
#include <mutex>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace {

constexpr std::int32_t TimedOut = -11;
constexpr std::int32_t NotHandedOut = -2;
constexpr std::uint64_t FirstHandle = 4711;

struct Block {
  std::vector<board::EnergyRecord> records;
  std::vector<board::Entry> entries;
};

class Board {
public:
  explicit Board(const std::string& folder) : folder_(folder) {}

  // One write per line: calls come from several threads.
  void Record(const std::string& line) const {
    if (folder_.empty()) {
      return;
    }
    const int file = open((folder_ + "/calls").c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
    const std::string text = line + '\n';
    [[maybe_unused]] const ssize_t written = write(file, text.data(), text.size());
    close(file);
  }

  std::int32_t Read(board::ReadBlock& out) {
    const std::lock_guard lock(mutex_);
    std::string line;
    return NextLine(line) ? Obey(line, out) : TimedOut;
  }

  std::int32_t Free(const board::ReadBlock& block) {
    const std::lock_guard lock(mutex_);
    return handedOut_.erase(block.entries) == 1 ? 0 : NotHandedOut;
  }

private:
  // Only lines that the test has finished writing.
  bool NextLine(std::string& line) {
    std::ifstream feed(folder_ + "/feed");
    feed.seekg(position_);
    if (folder_.empty() || !std::getline(feed, line) || feed.eof()) {
      return false;
    }
    position_ = feed.tellg();
    return true;
  }

  std::int32_t Obey(const std::string& line, board::ReadBlock& out) {
    std::istringstream words(line);
    std::string verb;
    words >> verb;
    if (verb == "ramp") {
      HandOut(words, out);
    } else if (verb == "fail") {
      std::int32_t code = 0;
      words >> code;
      return code;
    } else if (verb == "negative") {
      out.count = -3;
    } else if (verb == "null") {
      out.count = 3;
    }
    return 0;
  }

  void HandOut(std::istringstream& words, board::ReadBlock& out) {
    auto block = std::make_unique<Block>();
    std::uint32_t channel = 0;
    std::uint32_t first = 0;
    std::uint32_t count = 0;
    while (words >> channel >> first >> count) {
      for (std::uint32_t i = 0; i < count; ++i) {
        block->records.push_back({++timestamp_, channel, first + i, 0.5, 0, 0, {}, 0});
      }
    }
    for (const board::EnergyRecord& record : block->records) {
      block->entries.push_back({0, record.timestamp, 0, &record});
    }
    out.entries = reinterpret_cast<const std::byte*>(block->entries.data());
    out.count = static_cast<std::int32_t>(block->entries.size());
    handedOut_.emplace(out.entries, std::move(block));
  }

  const std::string folder_;
  std::mutex mutex_;
  std::streamoff position_ = 0;
  std::uint64_t timestamp_ = 0;
  std::map<const std::byte*, std::unique_ptr<Block>> handedOut_;
};

std::vector<std::unique_ptr<Board>>& Boards() {
  static std::vector<std::unique_ptr<Board>> boards;
  return boards;
}

// Boards are opened before any thread reads.
Board& BoardOf(std::uint64_t handle) {
  return *Boards().at(handle - FirstHandle);
}

[[maybe_unused]] std::string Line(const char* call, std::uint64_t handle, const std::string& arguments) {
  return std::string(call) + ' ' + std::to_string(handle) + ' ' + arguments;
}

}  // namespace

extern "C" {

#ifndef KORVAX_WITHOUT_OPEN
std::int32_t CAENDig2_Open(const char* connection, std::uint64_t* handle) {
  const std::string text = connection;
  const std::size_t query = text.find("?open=");
  const std::int32_t code = query == std::string::npos ? 0 : std::stoi(text.substr(query + std::strlen("?open=")));
  Boards().push_back(std::make_unique<Board>(text.substr(0, query)));
  *handle = FirstHandle + Boards().size() - 1;
  BoardOf(*handle).Record("open " + text);
  return code;
}
#endif

#ifndef KORVAX_WITHOUT_SETVALUE
std::int32_t CAENDig2_SetValueByQuery(std::uint64_t handle, const char* path, const char* value) {
  BoardOf(handle).Record(Line("set", handle, std::string(path) + '=' + value));
  return 0;
}
#endif

#ifndef KORVAX_WITHOUT_GETVALUE
std::int32_t CAENDig2_GetValueByQuery(std::uint64_t handle, const char* path, char* value) {
  BoardOf(handle).Record(Line("get", handle, path));
  std::strcpy(value, "1");
  return 0;
}
#endif

#ifndef KORVAX_WITHOUT_SENDCOMMAND
std::int32_t CAENDig2_SendCommandByQuery(std::uint64_t handle, const char* command) {
  BoardOf(handle).Record(Line("command", handle, command));
  return 0;
}
#endif

#ifndef KORVAX_WITHOUT_READDATA
std::int32_t CAENDig2_ReadDataByQuery(std::uint64_t handle, const char* endpoint, std::int32_t timeoutMs,
                                      void* block) {
  Board& board = BoardOf(handle);
  board.Record(Line("read", handle, std::string(endpoint) + ' ' + std::to_string(timeoutMs)));
  const std::int32_t result = board.Read(*static_cast<board::ReadBlock*>(block));
  if (result == TimedOut) {
    std::this_thread::sleep_for(std::chrono::milliseconds(2));  // what a board does that waits for events
  }
  return result;
}
#endif

#ifndef KORVAX_WITHOUT_FREEPOINTER
std::int32_t CAENDig2_FreePointerByQuery(std::uint64_t handle, const char* endpoint, void* block) {
  Board& board = BoardOf(handle);
  const std::int32_t result = board.Free(*static_cast<board::ReadBlock*>(block));
  board.Record(Line("free", handle, std::string(endpoint) + ' ' + std::to_string(result)));
  return result;
}
#endif

}  // extern "C"
