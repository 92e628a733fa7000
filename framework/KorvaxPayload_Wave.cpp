#include "framework/KorvaxPayload_Wave.h"

std::unique_ptr<KorvaxPayload> KorvaxPayload_Wave::Clone() const {
  auto copy = std::make_unique<KorvaxPayload_Wave>();
  copy->Unname();
  copy->analog = analog;
  copy->digital = digital;
  return copy;
}

bool KorvaxPayload_Wave::Write(quint32 /*format*/, korvax::ByteWriter& /*out*/) const {
  return false;
}
