#pragma once

#include "framework/ChainContext.h"

#include <QJsonValue>
#include <QString>

#include <optional>

class DigitizerBoard;
struct BoardEndpoint;

/// Where a source reads: one endpoint of one board.
struct SourceBinding {
  const DigitizerBoard* board = nullptr;  ///< null when the configuration names none
  std::size_t endpointIndex = 0;          ///< in the board's endpoint list
  QString endpointQuery;                  ///< the "pin" text, handed unchanged to the board library

  /// The bound endpoint; null without a board.
  const BoardEndpoint* Endpoint() const;
  /// Board name, a backslash and the endpoint's name; empty without a board.
  QString EndpointPath() const;

  /// Binds by the block's "sources"; a later entry overrides an earlier one. Logs why and returns nothing when
  /// an entry can't be bound. No board list or no entry leaves the source without a board, which is no fault.
  static std::optional<SourceBinding> FromJson(const QJsonValue& block, const BoardList* boards);
};
