#include "boards/DigitizerBoard.h"

#include "boards/ChannelPath.h"

#include <QJsonArray>
#include <QtDebug>

#include <algorithm>
#include <array>

namespace {

constexpr std::size_t LongestValue = 63;
// A library that writes more than it may shouldn't reach what lies behind.
constexpr std::size_t Slack = 192;

// Kept: the result of a configuration write is shown as the character of its low byte, not as a number.
char ResultCharacter(qint32 result) {
  return static_cast<char>(result);
}

}  // namespace

DigitizerBoard::DigitizerBoard(vendor::FunctionLookup library) : library_(std::move(library)) {}

template <typename Function>
Function* DigitizerBoard::Lookup(const char* functionName) const {
  return reinterpret_cast<Function*>(library_(functionName));
}

qint32 DigitizerBoard::Open(const QString& connectionString) {
  if (connected_) {
    return AlreadyOpen;
  }
  auto* const open = Lookup<vendor::Open>("CAENDig2_Open");
  if (open == nullptr) {
    return FunctionMissing;
  }
  const qint32 result = open(connectionString.toLatin1().constData(), &handle_);
  connected_ = result == 0;
  return result;
}

qint32 DigitizerBoard::SendCommand(const QString& query) const {
  auto* const send = Lookup<vendor::SendCommand>("CAENDig2_SendCommandByQuery");
  return send == nullptr ? FunctionMissing : send(handle_, query.toLatin1().constData());
}

qint32 DigitizerBoard::SetValue(const QString& path, const QString& value) const {
  qInfo() << "Set" << path << " " << value;
  auto* const set = Lookup<vendor::SetValue>("CAENDig2_SetValueByQuery");
  return set == nullptr ? FunctionMissing
                        : set(handle_, path.toLatin1().constData(), value.toLatin1().constData());
}

qint32 DigitizerBoard::GetValue(const QString& query, QString& out) const {
  auto* const get = Lookup<vendor::GetValue>("CAENDig2_GetValueByQuery");
  if (get == nullptr) {
    return FunctionMissing;
  }
  std::array<char, LongestValue + 1 + Slack> buffer{};
  const qint32 result = get(handle_, query.toLatin1().constData(), buffer.data());
  buffer[LongestValue] = '\0';
  out = QString::fromLatin1(buffer.data());
  return result;
}

qint32 DigitizerBoard::ReadData(const QString& query, void* block) const {
  auto* const read = Lookup<vendor::ReadData>("CAENDig2_ReadDataByQuery");
  return read == nullptr ? FunctionMissing : read(handle_, query.toLatin1().constData(), ReadTimeoutMs, block);
}

qint32 DigitizerBoard::FreePointer(const QString& query, void* block) const {
  auto* const free = Lookup<vendor::FreePointer>("CAENDig2_FreePointerByQuery");
  return free == nullptr ? FunctionMissing : free(handle_, query.toLatin1().constData(), block);
}

bool DigitizerBoard::ApplyConfigs(const QJsonObject& entry) {
  parameters_.clear();
  const QJsonArray configs = entry["configs"].toArray();
  for (const QJsonValue& config : configs) {
    const QJsonArray elements = config.toObject()["elements"].toArray();
    for (const QJsonValue& element : elements) {
      parameters_.push_back(BoardParameter::FromJson(element.toObject()));
      if (parameters_.back().directApply) {
        WriteParameter(parameters_.back());
      }
    }
  }
  return true;
}

void DigitizerBoard::WriteParameter(const BoardParameter& parameter) const {
  if (parameter.values.isEmpty()) {
    const qint32 result = SetValue(parameter.path, parameter.value);
    qInfo() << "Apply " << parameter.name << ": " << parameter.value << " RES: " << ResultCharacter(result);
    return;
  }
  for (int i = 0; i < parameter.values.size(); ++i) {
    const qint32 result = SetValue(korvax::ChannelPath(parameter.path, i), parameter.values[i]);
    qInfo() << "Apply " << parameter.name << "[" << i << "] : " << parameter.value
            << " RES: " << ResultCharacter(result);
  }
}

bool DigitizerBoard::LoadEndpoints(const QJsonObject& entry) {
  endpoints_.clear();
  const QJsonArray endpoints = entry["endpoints"].toArray();
  for (const QJsonValue& endpoint : endpoints) {
    endpoints_.push_back(BoardEndpoint::FromJson(endpoint.toObject()));
  }
  return true;
}

void DigitizerBoard::LoadCommands(const QJsonObject& entry) {
  const QJsonArray commands = entry["commands"].toArray();
  for (const QJsonValue& value : commands) {
    const QJsonObject description = value.toObject();
    BoardCommand command = BoardCommand::FromJson(description);
    const QString endpointName = description["endpoint_type"].toString();
    const auto endpoint = std::find_if(endpoints_.begin(), endpoints_.end(),
                                       [&](const BoardEndpoint& e) { return e.name == endpointName; });
    if (endpoint != endpoints_.end()) {
      command.attached = true;
      endpoint->Attach(command);
    }
    commands_.push_back(command);
  }
}

void DigitizerBoard::SendCommands(const std::vector<BoardCommand>& commands) const {
  for (const BoardCommand& command : commands) {
    SendCommand(command.path);
  }
}

void DigitizerBoard::SendBoardWideConfig() const {
  bool sentAny = false;
  for (const BoardCommand& command : commands_) {
    if (command.type == CommandType::ConfigAll) {
      SendCommand(command.path);
      sentAny = true;
    }
  }
  if (sentAny) {
    return;
  }
  for (const BoardCommand& command : commands_) {
    if (command.type == CommandType::Config && !command.attached) {
      SendCommand(command.path);
    }
  }
}

void DigitizerBoard::ConfigureBoard() const {
  SendBoardWideConfig();
  for (const BoardEndpoint& endpoint : endpoints_) {
    SendCommands(endpoint.stopCommands);
    SendCommands(endpoint.configCommands);
    if (endpoint.enabled) {
      SendCommands(endpoint.startCommands);
    }
  }
}

void DigitizerBoard::StopEndpoints() const {
  for (const BoardEndpoint& endpoint : endpoints_) {
    SendCommands(endpoint.stopCommands);
  }
}

void DigitizerBoard::ArmEndpoints() const {
  for (const BoardEndpoint& endpoint : endpoints_) {
    if (endpoint.enabled) {
      SendCommands(endpoint.resetCommands);
      SendCommands(endpoint.startCommands);
    }
  }
}
