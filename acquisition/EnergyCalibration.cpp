#include "acquisition/EnergyCalibration.h"

#include <tinyexpr.h>

#include <locale.h>

namespace {

// The expression library reads numbers by the thread's locale, which comes from the user and may want a decimal
// comma. While one lives, this thread reads them with a point.
class DecimalPoint {
public:
  DecimalPoint() : before_(uselocale(PointLocale())) {}
  ~DecimalPoint() { uselocale(before_); }
  DecimalPoint(const DecimalPoint&) = delete;
  DecimalPoint& operator=(const DecimalPoint&) = delete;

private:
  static locale_t PointLocale() {
    static const locale_t locale = newlocale(LC_NUMERIC_MASK, "C", nullptr);
    return locale;
  }

  const locale_t before_;
};

}  // namespace

EnergyCalibration::EnergyCalibration(const QString& expression) {
  if (expression.isEmpty() || expression.size() > LongestExpression) {
    return;
  }
  const DecimalPoint decimalPoint;
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
