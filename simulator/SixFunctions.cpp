// The library's whole surface. Texts are zero-terminated Latin-1; the result is a code of Status.h.

#include "simulator/BoardRegistry.h"

#include <algorithm>
#include <cstring>
#include <exception>

using korvax::sim::Board;
using korvax::sim::BoardRegistry;
using korvax::sim::Status;
using korvax::sim::layout::ReadBlock;

#define KORVAX_EXPORT extern "C" __attribute__((visibility("default")))

namespace {

constexpr std::size_t ValueSize = 64;  // of the caller's buffer, with the terminating zero

constexpr std::int32_t Code(Status status) {
  return static_cast<std::int32_t>(status);
}

// Runs an operation on the handle's board. No exception leaves the library: what can be thrown is that no
// memory is left.
template <typename Operation>
std::int32_t WithBoard(std::uint64_t handle, Operation operation) {
  Board* board = BoardRegistry::Instance().Find(handle);
  if (board == nullptr) {
    return Code(Status::BadHandle);
  }
  try {
    return Code(operation(*board));
  } catch (const std::exception&) {
    return Code(Status::BadArgument);
  }
}

void CopyValue(const std::string& from, char* to) {
  const std::size_t length = std::min(from.size(), ValueSize - 1);
  std::memcpy(to, from.data(), length);
  to[length] = '\0';
}

}  // namespace

KORVAX_EXPORT std::int32_t CAENDig2_Open(const char* connection, std::uint64_t* handle) {
  if (connection == nullptr || handle == nullptr) {
    return Code(Status::BadArgument);
  }
  *handle = 0;
  try {
    std::int32_t status = 0;
    if (auto board = Board::Open(connection, korvax::sim::MonotonicNanoseconds, status)) {
      *handle = BoardRegistry::Instance().Add(std::move(board));
    }
    return status;
  } catch (const std::exception&) {
    return Code(Status::BadArgument);
  }
}

KORVAX_EXPORT std::int32_t CAENDig2_SetValueByQuery(std::uint64_t handle, const char* path, const char* value) {
  if (path == nullptr || value == nullptr) {
    return Code(Status::BadArgument);
  }
  return WithBoard(handle, [=](Board& board) { return board.SetValue(path, value); });
}

// `value` has room for 64 characters; it is left as it was unless the result is 0.
KORVAX_EXPORT std::int32_t CAENDig2_GetValueByQuery(std::uint64_t handle, const char* path, char* value) {
  if (path == nullptr || value == nullptr) {
    return Code(Status::BadArgument);
  }
  return WithBoard(handle, [=](Board& board) {
    std::string text;
    const Status status = board.GetValue(path, text);
    if (status == Status::Ok) {
      CopyValue(text, value);
    }
    return status;
  });
}

KORVAX_EXPORT std::int32_t CAENDig2_SendCommandByQuery(std::uint64_t handle, const char* command) {
  if (command == nullptr) {
    return Code(Status::BadArgument);
  }
  return WithBoard(handle, [=](Board& board) { return board.SendCommand(command); });
}

// `descriptor` is a ReadBlock of the caller, filled here. What it points to is the library's until it is
// given to CAENDig2_FreePointerByQuery.
KORVAX_EXPORT std::int32_t CAENDig2_ReadDataByQuery(std::uint64_t handle, const char* endpoint,
                                                    std::int32_t timeoutMs, void* descriptor) {
  if (endpoint == nullptr || descriptor == nullptr) {
    return Code(Status::BadArgument);
  }
  return WithBoard(handle, [=](Board& board) {
    ReadBlock block{};
    const Status status = board.Read(endpoint, timeoutMs, block);
    std::memcpy(descriptor, &block, sizeof block);  // the caller's bytes may be unaligned
    return status;
  });
}

KORVAX_EXPORT std::int32_t CAENDig2_FreePointerByQuery(std::uint64_t handle, const char* endpoint,
                                                       void* descriptor) {
  if (endpoint == nullptr || descriptor == nullptr) {
    return Code(Status::BadArgument);
  }
  return WithBoard(handle, [=](Board& board) {
    ReadBlock block;
    std::memcpy(&block, descriptor, sizeof block);
    return board.Free(endpoint, block);
  });
}
