#include "configuration/NetworkCheck.h"

#include "configuration/Words.h"

#include <QHostAddress>

namespace korvax {

void CheckNetwork(const QJsonObject& configuration, FindingList& findings) {
  const QString address = configuration["network"].toObject()["address"].toString();
  if (!address.isEmpty() && !QHostAddress().setAddress(address)) {  // an empty one is against the schema
    findings.Fail({QStringLiteral("network"), QStringLiteral("address")},
                  QStringLiteral("an IP address, such as \"127.0.0.1\""), Quoted(address));
  }
}

}  // namespace korvax
