// A board library for the tests of loading and start-up. A connection string that is a number is the result of
// opening; any other opens. WITHOUT_... leaves the named function out.

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

// All calls in order, separated by ";".
std::string calls;

void Record(const std::string& call) {
  calls += call + ";";
}

}  // namespace

extern "C" {

const char* TestBoardLibrary_Calls() {
  return calls.c_str();
}

#ifndef WITHOUT_Open
std::int32_t CAENDig2_Open(const char* connection, std::uint64_t* handle) {
  Record(std::string("open ") + connection);
  *handle = 7;
  return static_cast<std::int32_t>(std::strtol(connection, nullptr, 10));
}
#endif

#ifndef WITHOUT_SetValueByQuery
std::int32_t CAENDig2_SetValueByQuery(std::uint64_t handle, const char* path, const char* value) {
  Record("set " + std::to_string(handle) + " " + path + "=" + value);
  return 0;
}
#endif

#ifndef WITHOUT_GetValueByQuery
std::int32_t CAENDig2_GetValueByQuery(std::uint64_t handle, const char* path, char* value) {
  Record("get " + std::to_string(handle) + " " + path);
  std::strcpy(value, "value");
  return 0;
}
#endif

#ifndef WITHOUT_SendCommandByQuery
std::int32_t CAENDig2_SendCommandByQuery(std::uint64_t handle, const char* command) {
  Record("command " + std::to_string(handle) + " " + command);
  return 0;
}
#endif

#ifndef WITHOUT_ReadDataByQuery
std::int32_t CAENDig2_ReadDataByQuery(std::uint64_t handle, const char* endpoint, std::int32_t timeoutMs, void*) {
  Record("read " + std::to_string(handle) + " " + endpoint + " " + std::to_string(timeoutMs));
  return 0;
}
#endif

#ifndef WITHOUT_FreePointerByQuery
std::int32_t CAENDig2_FreePointerByQuery(std::uint64_t handle, const char* endpoint, void*) {
  Record("free " + std::to_string(handle) + " " + endpoint);
  return 0;
}
#endif

}  // extern "C"
