#pragma once

#include <QtGlobal>

#include <cstdint>
#include <functional>

/// The six functions that a board library exports. Texts are Latin-1 and end with NUL; results are 0 or the
/// library's own error code. The library is relied on to accept concurrent calls on one handle.
namespace vendor {

using Open = std::int32_t(const char* connection, std::uint64_t* handle);
using SetValue = std::int32_t(std::uint64_t handle, const char* path, const char* value);
/// `value` has room for 63 characters and the NUL.
using GetValue = std::int32_t(std::uint64_t handle, const char* path, char* value);
using SendCommand = std::int32_t(std::uint64_t handle, const char* command);
/// Waits at most `timeoutMs`; fills the caller's 16-byte read block: pointer to the entries, 4 bytes unused,
/// 32-bit count. Entries and the records that they point to are aligned as their types demand.
using ReadData = std::int32_t(std::uint64_t handle, const char* endpoint, std::int32_t timeoutMs, void* block);
/// Takes back what the read block, filled by ReadData with the same endpoint, points to.
using FreePointer = std::int32_t(std::uint64_t handle, const char* endpoint, void* block);

/// Finds a function by its exact exported name; null when the library lacks it. Called at every use, from any
/// thread.
using FunctionLookup = std::function<QFunctionPointer(const char* name)>;

}  // namespace vendor
