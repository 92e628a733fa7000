#pragma once

#include <QString>

#include <bit>
#include <memory>
#include <vector>

struct te_expr;

/// Turns raw energies into calibrated ones by the source's expression in the variable "x". Remembers the values of
/// small raw energies, as an expression gives the same for the same x. Not thread-safe; not movable, because the
/// compiled expression points to its variable.
class EnergyCalibration {
public:
  /// Longer expressions count as not compilable: the expression library parses by recursion, and this length
  /// fits the stack of a source thread whatever the text (see Source_Thread).
  static constexpr int LongestExpression = 16384;

  EnergyCalibration();
  explicit EnergyCalibration(const QString& expression);
  ~EnergyCalibration();
  EnergyCalibration(const EnergyCalibration&) = delete;
  EnergyCalibration& operator=(const EnergyCalibration&) = delete;

  /// Goes by this expression from now on. Costs next to nothing when it is the one in use. Characters outside
  /// Latin-1 never compile.
  void Use(const QString& expression);

  /// The expression's value at x = energyRaw; 0.0 when the expression is empty or doesn't compile.
  double Evaluate(quint32 energyRaw) {
    if (expression_ == nullptr) {
      return 0.0;
    }
    if (energyRaw < values_.size()) {
      const double value = values_[energyRaw];
      if (std::bit_cast<quint64>(value) != NotYet) {
        return value;
      }
    }
    return EvaluateAnew(energyRaw);
  }

private:
  struct Free {
    void operator()(te_expr* expression) const;
  };

  // One of the many patterns of "not a number". Were it ever a result, it would be computed each time.
  static constexpr quint64 NotYet = 0x7ff4'6b6f'7276'6178;

  double EvaluateAnew(quint32 energyRaw);

  QString text_;
  double x_ = 0.0;
  std::unique_ptr<te_expr, Free> expression_;
  std::vector<double> values_;  // by raw energy; empty without an expression
};
