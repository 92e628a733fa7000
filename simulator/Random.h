#pragma once

#include <cmath>
#include <cstdint>
#include <numbers>
#include <random>

namespace korvax::sim {

// Random numbers that are the same on every machine: the standard fixes the engine's bits but not what
// its distributions make of them, so these are written out.
class Random {
public:
  // `stream` sets apart generators that share a seed.
  Random(std::uint64_t seed, std::uint64_t stream) : engine_(Mix(Mix(seed) ^ stream)) {}

  // Uniform in [0, 1).
  double Uniform() { return static_cast<double>(engine_() >> 11) * 0x1.0p-53; }
  double Uniform(double low, double high) { return low + (high - low) * Uniform(); }
  // Uniform in 0 .. count - 1.
  std::uint32_t Below(std::uint32_t count) {
    return static_cast<std::uint32_t>(Uniform() * static_cast<double>(count));
  }
  double Exponential(double mean) { return -mean * std::log1p(-Uniform()); }
  // Box and Muller, Annals of Mathematical Statistics 29 (1958) 610; the second value is not kept.
  double Normal(double mean, double sigma) {
    const double radius = std::sqrt(-2.0 * std::log1p(-Uniform()));
    return mean + sigma * radius * std::cos(2.0 * std::numbers::pi * Uniform());
  }

private:
  // The finaliser of splitmix64: neighbouring seeds give unrelated states.
  static std::uint64_t Mix(std::uint64_t x) {
    x += 0x9e3779b97f4a7c15U;
    x = (x ^ (x >> 30)) * 0xbf58476d1ce4e5b9U;
    x = (x ^ (x >> 27)) * 0x94d049bb133111ebU;
    return x ^ (x >> 31);
  }

  std::mt19937_64 engine_;
};

}  // namespace korvax::sim
