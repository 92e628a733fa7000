#pragma once

#include "configuration/Layout.h"

#include <QHash>

namespace korvax {

/// The parameters of a block as it reads them.
class ParameterList {
public:
  struct Entry {
    QStringList path;  ///< of "param_value"
    QJsonValue value;
  };

  explicit ParameterList(const BlockEntry& block);

  /// Of several entries of one name the last; null when there is none.
  const Entry* Find(const QString& name) const;
  int Integer(const QString& name, int fallback) const;
  bool Has(const QString& name) const { return entries_.contains(name); }
  /// Paths of the names that an earlier entry has, too.
  const std::vector<QStringList>& Repeated() const { return repeated_; }

private:
  QHash<QString, Entry> entries_;
  std::vector<QStringList> repeated_;
};

}  // namespace korvax
