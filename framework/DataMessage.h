#pragma once

#include "framework/PayloadBatch.h"

#include <QString>

/// What passes through a pin. Moved, never copied: the batch has one owner at a time.
struct DataMessage {
  QString dataType;      ///< "data_type" of the producing source
  QString endpointPath;  ///< board name, a backslash and the endpoint's name
  quint64 word1 = 0;     ///< the words are the producer's; every pin and filter carries them unchanged
  quint64 word2 = 0;
  std::unique_ptr<PayloadBatch> batch;
  quint64 word3 = 0;
  quint64 word4 = 0;
};
