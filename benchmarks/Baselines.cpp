#include "benchmarks/Baselines.h"

#include "benchmarks/Inputs.h"
#include "sinks/BinIndex.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtDebug>

#include <fcntl.h>
#include <unistd.h>
#include <cstring>
#include <vector>

namespace bench {

Result BareLoop(qint64 blocks) {
  std::vector<quint32> counts(static_cast<std::size_t>(Channels) * Bins);
  const Blocks input = EventBlocks();
  const Cost cost = Measure([&] {
    for (qint64 i = 0; i < blocks; ++i) {
      for (const board::Entry& entry : input[static_cast<std::size_t>(i) % input.size()]) {
        const auto* record = static_cast<const board::EnergyRecord*>(entry.record);
        const qint32 bin = korvax::ClampIndex(korvax::TruncateToBin(record->energyRaw * 1.0), Bins);
        const qint32 channel = korvax::ClampIndex(static_cast<qint32>(record->channel), Channels);
        ++counts[static_cast<std::size_t>(channel * Bins + bin)];
      }
      asm volatile("" : : "r"(counts.data()) : "memory");
    }
  });
  const double events = static_cast<double>(blocks) * EventsPerBlock;
  return ResultOf(cost, events);
}

void Sync(const QString& folder) {
  const int descriptor = open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY);
  syncfs(descriptor);
  close(descriptor);
}

Result PlainWrite(qint64 blocks) {
  constexpr std::size_t BytesOfAnEvent = 25;
  const QTemporaryDir folder;
  const std::vector<char> bytes(EventsPerBlock * BytesOfAnEvent, 'e');
  const Cost cost = Measure([&] {
    for (qint64 block = 0; block < blocks;) {
      const QString name = folder.filePath(QString::number(block));
      const int file = open(QFile::encodeName(name).constData(), O_WRONLY | O_CREAT, 0600);
      for (qint64 events = 0; events < EventsPerFile && block < blocks; events += EventsPerBlock, ++block) {
        if (write(file, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) {
          qFatal("Can't write %s", qPrintable(name));
        }
      }
      close(file);
    }
    Sync(folder.path());
  });
  const double events = static_cast<double>(blocks) * EventsPerBlock;
  return ResultOf(cost, events);
}

Result CopySamples(std::size_t places, qint64 blocks) {
  struct Place {
    std::vector<qint32> analog = std::vector<qint32>(Waves * Samples);
    std::vector<quint32> digital = std::vector<quint32>(Waves * Samples);
  };
  std::vector<Place> copies(places);
  const auto& reads = WaveReads();
  const Cost cost = Measure([&] {
    for (qint64 i = 0; i < blocks; ++i) {
      const auto& read = reads[static_cast<std::size_t>(i) % reads.size()];
      Place& copy = copies[static_cast<std::size_t>(i) % places];
      std::memcpy(copy.analog.data(), read.analog.data(), copy.analog.size() * sizeof(qint32));
      std::memcpy(copy.digital.data(), read.digital.data(), copy.digital.size() * sizeof(quint32));
      asm volatile("" : : "r"(copy.analog.data()), "r"(copy.digital.data()) : "memory");
    }
  });
  const double samples = static_cast<double>(blocks) * Waves * Samples;
  return ResultOf(cost, samples);
}

}  // namespace bench
