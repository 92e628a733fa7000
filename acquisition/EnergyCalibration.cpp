#include "acquisition/EnergyCalibration.h"

#include <tinyexpr.h>

#include <locale.h>

namespace {

constexpr std::size_t RememberedEnergies = 1U << 16;  // 16 bits, as converters give them

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

EnergyCalibration::EnergyCalibration() = default;

EnergyCalibration::EnergyCalibration(const QString& expression) {
  Use(expression);
}

EnergyCalibration::~EnergyCalibration() = default;

void EnergyCalibration::Free::operator()(te_expr* expression) const {
  te_free(expression);
}

void EnergyCalibration::Use(const QString& expression) {
  if (expression == text_) {
    return;
  }
  text_ = expression;
  expression_.reset();
  values_.clear();
  if (expression.isEmpty() || expression.size() > LongestExpression) {
    return;
  }
  const DecimalPoint decimalPoint;
  const te_variable variable = {"x", &x_, TE_VARIABLE, nullptr};
  int errorPosition = 0;
  expression_.reset(te_compile(expression.toLatin1().constData(), &variable, 1, &errorPosition));
  if (expression_ != nullptr) {
    values_.assign(RememberedEnergies, std::bit_cast<double>(NotYet));
  }
}

double EnergyCalibration::EvaluateAnew(quint32 energyRaw) {
  x_ = energyRaw;
  const double value = te_eval(expression_.get());
  if (energyRaw < values_.size()) {
    values_[energyRaw] = value;
  }
  return value;
}
