#pragma once

#include <QString>

#include <memory>

struct te_expr;

/// Turns raw energies into calibrated ones by the source's expression in the variable "x". Compiled for each
/// read block, so that a new expression counts from the next block on. Not thread-safe; not movable, because
/// the compiled expression points to its variable.
class EnergyCalibration {
public:
  /// Longer expressions count as not compilable: the expression library parses by recursion, and this length
  /// fits the stack of a source thread whatever the text (see Source_Thread).
  static constexpr int LongestExpression = 16384;

  /// Characters outside Latin-1 never compile.
  explicit EnergyCalibration(const QString& expression);
  ~EnergyCalibration();
  EnergyCalibration(const EnergyCalibration&) = delete;
  EnergyCalibration& operator=(const EnergyCalibration&) = delete;

  /// The expression's value at x = energyRaw; 0.0 when the expression is empty or doesn't compile.
  double Evaluate(quint32 energyRaw);

private:
  struct Free {
    void operator()(te_expr* expression) const;
  };

  double x_ = 0.0;
  std::unique_ptr<te_expr, Free> expression_;
};
