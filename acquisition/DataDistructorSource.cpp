#include "acquisition/DataDistructorSource.h"

#include "boards/DigitizerBoard.h"

DataDistructorSource::DataDistructorSource(const DigitizerBoard& board, const QString& endpointQuery)
    : board_(board), endpointQuery_(endpointQuery) {}

void DataDistructorSource::Destroy(const DataMessage& message) const {
  if (message.word3 != 0) {
    HandBack(*reinterpret_cast<board::ReadBlock*>(static_cast<quintptr>(message.word3)));
  }
}

void DataDistructorSource::HandBack(board::ReadBlock& block) const {
  board_.FreePointer(endpointQuery_, &block);
}
