// The input is the text of a configuration file: looked through as `korvaxctl check` does.

#include "configuration/ConfigurationCheck.h"
#include "tests/fuzz/FuzzProcess.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Prepare();
  const QByteArray text(reinterpret_cast<const char*>(data), static_cast<int>(size));
  const korvax::CheckReport report = korvax::CheckConfiguration(text);
  for (const korvax::Finding& finding : report.findings) {
    korvax::FindingLine(QStringLiteral("configuration.json"), finding);
  }
  return 0;
}
