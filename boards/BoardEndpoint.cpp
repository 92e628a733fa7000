#include "boards/BoardEndpoint.h"

BoardEndpoint BoardEndpoint::FromJson(const QJsonObject& entry) {
  BoardEndpoint endpoint;
  endpoint.name = entry["name"].toString();
  endpoint.text = entry["text"].toString();
  endpoint.path = entry["path"].toString();
  endpoint.enabled = entry["enable"].toBool();
  endpoint.type = entry["type"].toString() == QLatin1String("energy_sci_u32") ? EndpointType::EnergySciU32
                                                                              : EndpointType::Other;
  return endpoint;
}

void BoardEndpoint::Attach(const BoardCommand& command) {
  switch (command.type) {
    case CommandType::Config:
      configCommands.push_back(command);
      break;
    case CommandType::Start:
      startCommands.push_back(command);
      break;
    case CommandType::Stop:
      stopCommands.push_back(command);
      break;
    case CommandType::Reset:
      resetCommands.push_back(command);
      break;
    case CommandType::ConfigAll:
    case CommandType::Unknown:
      break;
  }
}
