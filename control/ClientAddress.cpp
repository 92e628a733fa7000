#include "control/ClientAddress.h"

namespace korvax {

QString ClientAddress(const QHostAddress& address) {
  bool isOfFourthVersion = false;
  const QHostAddress short4(address.toIPv4Address(&isOfFourthVersion));
  return isOfFourthVersion ? short4.toString() : address.toString();
}

}  // namespace korvax
