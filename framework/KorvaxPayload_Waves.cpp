#include "framework/KorvaxPayload_Waves.h"

std::unique_ptr<KorvaxPayload> KorvaxPayload_Waves::Clone() const {
  auto copy = std::make_unique<KorvaxPayload_Waves>();
  copy->waves.reserve(waves.size());
  for (const auto& wave : waves) {
    copy->waves.push_back(wave->Clone());
  }
  return copy;
}

bool KorvaxPayload_Waves::Write(quint32 /*format*/, korvax::ByteWriter& /*out*/) const {
  return false;
}
