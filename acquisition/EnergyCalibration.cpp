#include "acquisition/EnergyCalibration.h"

#include <tinyexpr.h>

EnergyCalibration::EnergyCalibration(const QString& expression) {
  if (expression.isEmpty() || expression.size() > LongestExpression) {
    return;
  }
  const te_variable variable = {"x", &x_, TE_VARIABLE, nullptr};
  int errorPosition = 0;
  expression_.reset(te_compile(expression.toLatin1().constData(), &variable, 1, &errorPosition));
}

EnergyCalibration::~EnergyCalibration() = default;

void EnergyCalibration::Free::operator()(te_expr* expression) const {
  te_free(expression);
}

double EnergyCalibration::Evaluate(quint32 energyRaw) {
  if (expression_ == nullptr) {
    return 0.0;
  }
  x_ = energyRaw;
  return te_eval(expression_.get());
}
