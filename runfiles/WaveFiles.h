#pragma once

#include "runfiles/RecordReader.h"

#include <memory>
#include <span>
#include <string>
#include <vector>

namespace korvax::runfiles {

/// The waveforms of all channels at one time.
struct WaveRecord {
  std::uint32_t channels = 0;
  std::uint32_t samples = 0;        // of each channel
  std::uint32_t analogTraces = 0;   // as configured; a record holds one per channel, whatever this says
  std::uint32_t digitalTraces = 0;  // of each channel, packed into the words below
  std::uint64_t timestamp = 0;
  std::vector<double> analog;          // channels x samples, channel by channel
  std::vector<std::uint32_t> digital;  // likewise; bit d of a word is digital trace d

  std::span<const double> Analog(std::size_t channel) const {
    return std::span(analog).subspan(channel * samples, samples);
  }
  std::span<const std::uint32_t> Digital(std::size_t channel) const {
    return std::span(digital).subspan(channel * samples, samples);
  }
};

/// A record with more samples, of all channels together, counts as malformed: memory stays bounded (by 1.6 GB).
inline constexpr std::uint64_t MostSamples = std::uint64_t{1} << 27;

/// Reads a wave file, the first of a dump or one of those that follow. JSON holds analog samples as integers.
std::unique_ptr<RecordReader<WaveRecord>> OpenWaves(const std::string& path, Form form);

}  // namespace korvax::runfiles
