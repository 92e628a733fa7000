#include "acquisition/SourceBinding.h"

#include "boards/DigitizerBoard.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QtDebug>

#include <algorithm>

namespace {

template <typename List, typename Match>
auto FindFirst(const List& list, Match match) {
  return std::find_if(std::begin(list), std::end(list), match);
}

bool BindEntry(const QJsonObject& entry, const QString& blockName, const BoardList& boards,
               SourceBinding& binding) {
  const QString pin = entry["pin"].toString();
  const QString source = entry["source"].toString();
  const QStringList parts = pin.split(QLatin1Char('\\'));
  if (parts.size() != 2 || parts[0] != QLatin1String("endpoints")) {
    qInfo() << "Warning: source block " << blockName << " Invalid endpoint config parameter";
    return false;
  }
  const auto board = FindFirst(boards, [&](const auto& candidate) { return candidate->name == source; });
  if (board == boards.end()) {
    qInfo() << "Warning: a source block " << blockName
            << " has been detected but the related board has not been found";
    return false;
  }
  const auto& endpoints = (*board)->Endpoints();
  const auto endpoint = FindFirst(endpoints, [&](const BoardEndpoint& e) { return e.name == parts[1]; });
  if (endpoint == endpoints.end()) {
    qInfo() << "Warning: a source block " << blockName
            << " has been detected but related endpoint can not be found on board " << source;
    return false;
  }
  binding = {board->get(), static_cast<std::size_t>(endpoint - endpoints.begin()), pin};
  return true;
}

}  // namespace

const BoardEndpoint* SourceBinding::Endpoint() const {
  return board == nullptr ? nullptr : &board->Endpoints()[endpointIndex];
}

QString SourceBinding::EndpointPath() const {
  return board == nullptr ? QString() : board->name + QLatin1Char('\\') + Endpoint()->name;
}

std::optional<SourceBinding> SourceBinding::FromJson(const QJsonValue& block, const BoardList* boards) {
  SourceBinding binding;
  if (boards == nullptr) {
    return binding;
  }
  const QJsonObject keys = block.toObject();
  const QString name = keys["name"].toString();
  const QJsonArray sources = keys["sources"].toArray();
  for (const QJsonValue& entry : sources) {
    if (!BindEntry(entry.toObject(), name, *boards, binding)) {
      return std::nullopt;
    }
  }
  return binding;
}
