#pragma once

#include "tests/unit/configuration/Edits.h"

#include <QJsonArray>

#include <random>

namespace test {

/// Puts values that fit some keys in the place of others, takes members away, and joins what doesn't belong
/// together.
class Mutation {
public:
  explicit Mutation(const QJsonObject& good) : good_(good), paths_(AllPaths(good)) {}

  QJsonObject Next() {
    QJsonObject mutated = good_;
    for (auto edits = 1 + Below(2); edits > 0; --edits) {
      const QStringList path = Path();
      const bool isThere = !At(mutated, path.mid(0, path.size() - 1)).isUndefined();
      mutated = isThere ? With(mutated, path, Value()) : mutated;
    }
    return mutated;
  }

private:
  std::size_t Below(std::size_t end) { return random_() % end; }
  QStringList Path() { return paths_[Below(paths_.size())]; }
  QJsonValue Value() {
    static const QJsonArray odd{QJsonValue(), true,  false, 0,   -1,           1.5,
                                3e9,          1e300, "",    "0", QJsonArray(), QJsonObject()};
    switch (Below(3)) {
      case 0:
        return QJsonValue(QJsonValue::Undefined);
      case 1:
        return odd[static_cast<int>(Below(static_cast<std::size_t>(odd.size())))];
      default:
        return At(good_, Path());
    }
  }

  const QJsonObject good_;
  const std::vector<QStringList> paths_;
  std::mt19937 random_{1};
};

}  // namespace test
