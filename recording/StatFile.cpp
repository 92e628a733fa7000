#include "recording/StatFile.h"

#include "framework/ByteWriter.h"
#include "recording/RunFile.h"

namespace korvax {

bool StatFile::Append(bool withHeader, const StatLine& line) {
  QFile file(path_);
  if (!IsPath(path_) || !file.open(QIODevice::ReadWrite | QIODevice::Append | QIODevice::Unbuffered)) {
    return false;
  }
  const qint64 before = file.size();
  if (before != size_) {
    ReadAnew(file);
  }
  ByteWriter text;
  if (withHeader) {
    text.Text("RUNNING_TIME_s,TOTAL_EVENTS,EVENT_RATE_hz,USED_SPACE_byte\n");
  }
  text.General(line.runningTime).Text(",").Decimal(line.totalEvents).Text(",");
  text.General(line.eventRate).Text(",").Decimal(line.usedSpace).Text("\n");
  const auto bytes = static_cast<qint64>(text.Size());
  if (file.write(text.View().data(), bytes) != bytes) {
    file.resize(before);  // half a line would run into the next one
    return false;
  }
  checksum_.Add(text.View());
  size_ += bytes;
  return true;
}

// Left by an earlier part of the run, or changed by others meanwhile.
void StatFile::ReadAnew(QFile& file) {
  constexpr qint64 pieceSize = 1 << 16;
  checksum_ = {};
  size_ = 0;
  file.seek(0);
  for (QByteArray piece = file.read(pieceSize); !piece.isEmpty(); piece = file.read(pieceSize)) {
    checksum_.Add({piece.constData(), static_cast<std::size_t>(piece.size())});
    size_ += piece.size();
  }
}

}  // namespace korvax
