#include "recording/StatFile.h"

#include "framework/ByteWriter.h"
#include "recording/RunFile.h"

#include <QFile>

namespace korvax {

bool AppendStatLine(const QString& path, bool withHeader, const StatLine& line) {
  QFile file(path);
  if (!IsPath(path) || !file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered)) {
    return false;
  }
  ByteWriter text;
  if (withHeader) {
    text.Text("RUNNING_TIME_s,TOTAL_EVENTS,EVENT_RATE_hz,USED_SPACE_byte\n");
  }
  text.General(line.runningTime).Text(",").Decimal(line.totalEvents).Text(",");
  text.General(line.eventRate).Text(",").Decimal(line.usedSpace).Text("\n");
  const qint64 before = file.size();
  const auto bytes = static_cast<qint64>(text.Size());
  if (file.write(text.View().data(), bytes) != bytes) {
    file.resize(before);  // half a line would run into the next one
    return false;
  }
  return true;
}

}  // namespace korvax
