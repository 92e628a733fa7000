#pragma once

#include "client/LiveView.h"
#include "client/RateQueries.h"

namespace korvax::client {

/// The latest rate record of a rate counter.
class RatesView : public LiveView {
public:
  RatesView(const ServerAddress& server, RatesRequest request, Console& console);

private:
  QString Begin() override;
  Step Take(const QString& answer) override;
  QStringList Lines() const override;

  QStringList Notes() const;

  const RatesRequest request_;
  RateReading reading_;
};

}  // namespace korvax::client
