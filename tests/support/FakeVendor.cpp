#include "tests/support/FakeVendor.h"

#include <cstring>
#include <mutex>
#include <vector>

namespace test {

namespace {

FakeVendor* current = nullptr;
std::mutex mutex;
std::vector<QString> calls;  // no list that callers would share

void Record(const char* kind, const QString& what) {
  const std::lock_guard lock(mutex);
  calls.push_back(QLatin1String(kind) + QLatin1Char(' ') + what);
}

std::int32_t Open(const char* connection, std::uint64_t* handle) {
  Record("open", QString::fromLatin1(connection));
  *handle = current->openHandle;
  return current->openResult;
}

std::int32_t SetValue(std::uint64_t /*handle*/, const char* path, const char* value) {
  Record("set", QString::fromLatin1(path) + QLatin1Char('=') + QString::fromLatin1(value));
  return current->result;
}

std::int32_t GetValue(std::uint64_t /*handle*/, const char* path, char* value) {
  Record("get", QString::fromLatin1(path));
  std::strcpy(value, current->value.c_str());
  return current->result;
}

std::int32_t SendCommand(std::uint64_t /*handle*/, const char* command) {
  Record("command", QString::fromLatin1(command));
  if (current->onCommand) {
    current->onCommand();
  }
  return current->result;
}

std::int32_t ReadData(std::uint64_t /*handle*/, const char* endpoint, std::int32_t /*timeoutMs*/, void* block) {
  Record("read", QString::fromLatin1(endpoint));
  return current->onRead ? current->onRead(block) : 0;
}

std::int32_t FreePointer(std::uint64_t /*handle*/, const char* endpoint, void* block) {
  Record("free", QString::fromLatin1(endpoint));
  if (current->onFree) {
    current->onFree(block);
  }
  return 0;
}

template <typename Function>
QFunctionPointer AsPointer(Function* function) {
  return reinterpret_cast<QFunctionPointer>(function);
}

QFunctionPointer Find(const QString& name) {
  if (name == QLatin1String("CAENDig2_Open")) {
    return AsPointer(Open);
  }
  if (name == QLatin1String("CAENDig2_SetValueByQuery")) {
    return AsPointer(SetValue);
  }
  if (name == QLatin1String("CAENDig2_GetValueByQuery")) {
    return AsPointer(GetValue);
  }
  if (name == QLatin1String("CAENDig2_SendCommandByQuery")) {
    return AsPointer(SendCommand);
  }
  if (name == QLatin1String("CAENDig2_ReadDataByQuery")) {
    return AsPointer(ReadData);
  }
  return name == QLatin1String("CAENDig2_FreePointerByQuery") ? AsPointer(FreePointer) : nullptr;
}

}  // namespace

FakeVendor::FakeVendor() {
  current = this;
  ClearCalls();
}

FakeVendor::~FakeVendor() {
  current = nullptr;
}

vendor::FunctionLookup FakeVendor::Lookup() const {
  return [this](const char* name) {
    const QString text = QString::fromLatin1(name);
    return missing.contains(text) ? nullptr : Find(text);
  };
}

QStringList FakeVendor::Calls() const {
  const std::lock_guard lock(mutex);
  return QStringList(calls.begin(), calls.end());
}

QStringList FakeVendor::CallsOf(const QString& prefix) const {
  QStringList matching;
  for (const QString& call : Calls()) {
    if (call.startsWith(prefix)) {
      matching << call;
    }
  }
  return matching;
}

void FakeVendor::ClearCalls() {
  const std::lock_guard lock(mutex);
  calls.clear();
}

}  // namespace test
