#include "simulator/HighVoltage.h"

#include <algorithm>

namespace korvax::sim {

HighVoltage::HighVoltage(std::size_t channels, Clock clock) : clock_(std::move(clock)), supplies_(channels) {}

void HighVoltage::SwitchOn(bool on) {
  const std::lock_guard lock(mutex_);
  std::ranges::for_each(supplies_, [this](Supply& supply) { Mark(supply); });
  on_ = on;
}

bool HighVoltage::IsOn() const {
  const std::lock_guard lock(mutex_);
  return on_;
}

template <typename Change>
void HighVoltage::Alter(std::size_t channel, Change change) {
  const std::lock_guard lock(mutex_);
  Mark(supplies_[channel]);
  change(supplies_[channel]);
}

void HighVoltage::ChangeSetPoint(std::size_t channel, double volt) {
  Alter(channel, [volt](Supply& supply) { supply.setPoint = volt; });
}

void HighVoltage::ChangeRamp(std::size_t channel, double voltPerSecond) {
  Alter(channel, [voltPerSecond](Supply& supply) { supply.ramp = voltPerSecond; });
}

void HighVoltage::Enable(std::size_t channel, bool enabled) {
  Alter(channel, [enabled](Supply& supply) { supply.enabled = enabled; });
}

double HighVoltage::SetPoint(std::size_t channel) const {
  const std::lock_guard lock(mutex_);
  return supplies_[channel].setPoint;
}

double HighVoltage::Ramp(std::size_t channel) const {
  const std::lock_guard lock(mutex_);
  return supplies_[channel].ramp;
}

bool HighVoltage::IsEnabled(std::size_t channel) const {
  const std::lock_guard lock(mutex_);
  return supplies_[channel].enabled;
}

double HighVoltage::Voltage(std::size_t channel) const {
  const std::lock_guard lock(mutex_);
  return VoltageOf(supplies_[channel]);
}

double HighVoltage::Current(std::size_t channel) const {
  return Voltage(channel) * MicroampPerVolt;
}

std::string HighVoltage::State(std::size_t channel) const {
  const std::lock_guard lock(mutex_);
  const double now = VoltageOf(supplies_[channel]);
  const double target = Target(supplies_[channel]);
  if (now < target) {
    return "ramp_up";
  }
  if (now > target) {
    return "ramp_down";
  }
  return target > 0.0 ? "on" : "off";
}

void HighVoltage::Mark(Supply& supply) const {
  supply.voltAtMark = VoltageOf(supply);
  supply.mark = clock_();
}

double HighVoltage::VoltageOf(const Supply& supply) const {
  const double way = supply.ramp * static_cast<double>(clock_() - supply.mark) * 1e-9;
  const double target = Target(supply);
  return target > supply.voltAtMark ? std::min(target, supply.voltAtMark + way)
                                    : std::max(target, supply.voltAtMark - way);
}

}  // namespace korvax::sim
