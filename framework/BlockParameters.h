#pragma once

#include <QJsonValue>
#include <QLatin1String>

#include <functional>
#include <initializer_list>
#include <vector>

namespace korvax {

/// One parameter that a block knows: its exact name and what its value does.
struct ParameterRule {
  QLatin1String name;
  std::function<void(const QJsonValue& value)> apply;
};

/// Walks the block's "parameters" list in order and applies the rule whose name equals each "param_name", so a
/// later entry overwrites an earlier one. Unknown names and a missing list change nothing.
void ApplyParameters(const QJsonValue& block, std::initializer_list<ParameterRule> rules);

/// The elements of an array, 0 for each that is no integer; empty for anything but an array.
std::vector<qint32> Integers(const QJsonValue& value);

}  // namespace korvax
