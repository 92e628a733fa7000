#include "configuration/ParameterList.h"

#include <QJsonArray>

namespace korvax {

ParameterList::ParameterList(const BlockEntry& block) {
  const QJsonArray parameters = block.keys["parameters"].toArray();
  for (int i = 0; i < parameters.size(); ++i) {
    const QJsonObject parameter = parameters[i].toObject();
    const QString name = parameter["param_name"].toString();
    const QStringList path = block.path + QStringList{"parameters", QString::number(i)};
    if (entries_.contains(name)) {
      repeated_.push_back(path + QStringList{"param_name"});
    }
    entries_.insert(name, {path + QStringList{"param_value"}, parameter["param_value"]});
  }
}

const ParameterList::Entry* ParameterList::Find(const QString& name) const {
  const auto found = entries_.constFind(name);
  return found == entries_.constEnd() ? nullptr : &*found;
}

int ParameterList::Integer(const QString& name, int fallback) const {
  const Entry* const entry = Find(name);
  return entry == nullptr ? fallback : entry->value.toInt();
}

}  // namespace korvax
