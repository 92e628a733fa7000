#pragma once

#include "benchmarks/Inputs.h"
#include "benchmarks/Result.h"

#include <QString>

#include <functional>

namespace bench {

// Roads through real blocks. `blocks` are read from the board in all, at so many events a second, or as fast as
// they are fetched when the rate is 0.

/// Hands out the usual blocks of events.
void Load(qint64 blocks, double eventsPerSecond);

Result ToSpectrum(const QString& sourceParameters, qint64 blocks, double eventsPerSecond);
/// With a quadratic calibration.
Result Calibrated(qint64 blocks, double eventsPerSecond);

/// What a stream is like, and where it goes.
struct Shape {
  int eventsPerBlock = EventsPerBlock;
  int channels = Channels;
  int spectra = 1;  ///< behind a tee when there are more
};
Result ToSpectra(const Shape& shape, qint64 blocks, double eventsPerSecond);
/// `afterwards` is part of what is measured.
Result ToFiles(const QString& type, qint64 blocks, double eventsPerSecond,
               const std::function<void(const QString& folder)>& afterwards = {});
/// To BIN files, until the medium has them.
Result ToMedium(qint64 blocks, double eventsPerSecond);
/// The rate is of records, of two events each.
Result PairsToSpectrum(qint64 blocks, double recordsPerSecond);
Result SortedToPosition(qint64 blocks, double eventsPerSecond);
/// An "event" is a sample.
Result ToOscilloscope(qint64 blocks);

}  // namespace bench
