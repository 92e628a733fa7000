#pragma once

#include "acquisition/BoardRecords.h"
#include "framework/DataDistructor.h"

#include <QString>

class DigitizerBoard;

/// Hands what a board library read out back to it. Word 3 of the message points to the read block. Used by the
/// source's worker; the board outlives it.
class DataDistructorSource final : public DataDistructor {
public:
  DataDistructorSource(const DigitizerBoard& board, const QString& endpointQuery);

  void Destroy(const DataMessage& message) const override;
  void HandBack(board::ReadBlock& block) const;

private:
  const DigitizerBoard& board_;
  const QString endpointQuery_;
};
