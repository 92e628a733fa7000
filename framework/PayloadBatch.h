#pragma once

#include "framework/KorvaxPayload.h"

#include <vector>

/// The records that travel together in one message. Owns them: whoever holds the batch last destroys them.
struct PayloadBatch {
  QLatin1String dataType;  ///< "energy", "waveform" or "rate_counters"; always a literal
  quint64 timestamp = 0;   ///< board time units
  std::vector<std::unique_ptr<KorvaxPayload>> records;  ///< never null
};
