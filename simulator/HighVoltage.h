#pragma once

#include "simulator/RunClock.h"

#include <mutex>
#include <string>
#include <vector>

namespace korvax::sim {

// The high-voltage supply of each channel. After SwitchOn the enabled channels climb to their set point at
// their ramp speed, after SwitchOff all go down to 0; a new set point is approached likewise. Thread-safe.
class HighVoltage {
public:
  static constexpr double MaxVolt = 2000.0;
  static constexpr double MaxVoltPerSecond = 500.0;
  static constexpr double MicroampPerVolt = 0.1;  // load of the divider

  HighVoltage(std::size_t channels, Clock clock);

  void SwitchOn(bool on);
  bool IsOn() const;

  double SetPoint(std::size_t channel) const;  // V
  void ChangeSetPoint(std::size_t channel, double volt);
  double Ramp(std::size_t channel) const;  // V/s
  void ChangeRamp(std::size_t channel, double voltPerSecond);
  bool IsEnabled(std::size_t channel) const;
  void Enable(std::size_t channel, bool enabled);

  double Voltage(std::size_t channel) const;  // V, at this moment
  double Current(std::size_t channel) const;  // uA
  // "off", "ramp_up", "on" or "ramp_down".
  std::string State(std::size_t channel) const;

private:
  struct Supply {
    double setPoint = 800.0;
    double ramp = 50.0;
    bool enabled = true;
    double voltAtMark = 0.0;  // its voltage when something last changed, at `mark`
    std::uint64_t mark = 0;
  };

  template <typename Change>
  void Alter(std::size_t channel, Change change);
  void Mark(Supply& supply) const;
  double Target(const Supply& supply) const { return on_ && supply.enabled ? supply.setPoint : 0.0; }
  double VoltageOf(const Supply& supply) const;

  const Clock clock_;
  mutable std::mutex mutex_;  // guards all below
  std::vector<Supply> supplies_;
  bool on_ = false;
};

}  // namespace korvax::sim
