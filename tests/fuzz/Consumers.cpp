#include "tests/fuzz/Consumers.h"

#include "processing/Time_Sorting_Thread.h"
#include "recording/DataDumper_Thread.h"
#include "recording/SinkRateCounter_Thread.h"
#include "sinks/Histogram_Thread.h"
#include "sinks/Image_Thread.h"
#include "sinks/Oscilloscope_Thread.h"
#include "sinks/Position_Thread.h"
#include "sinks/time_distribution_Thread.h"
#include "tests/fuzz/FuzzProcess.h"

#include <QDir>

#include <array>
#include <cstdlib>

namespace fuzz {

namespace {

// The pins of a worker, filled. What a sorter puts out stays in its pin.
struct Pins {
  explicit Pins(std::vector<DataMessage> messages) {
    inputs.push_back(std::make_unique<PinInput>(QStringLiteral("in")));
    inputs.front()->Connect(&feed);
    outputs.push_back(std::make_unique<PinOutput>(QStringLiteral("out")));
    for (DataMessage& message : messages) {
      feed.Push(std::move(message));
    }
  }

  PinOutput feed{QStringLiteral("feed")};
  KorvaxBlock::InputPins inputs;
  KorvaxBlock::OutputPins outputs;
};

// What a worker's own thread runs otherwise. Each record must be accounted for at the end.
class Loop : public korvax::WorkerThread {
public:
  static void Run(korvax::WorkerThread& worker, const Pins& pins) {
    worker.Stop();  // so that the loop ends once it has emptied the queue
    (worker.*&Loop::run)();
    const korvax::Account::Statement account = worker.Records().Get();
    if (account.received != pins.feed.Counts().pushed ||
        account.received != account.waiting + account.fates.Sum()) {
      std::abort();
    }
  }
};

void IntoSpectrum(const Pins& pins, Input& input) {
  Histogram_Thread worker(pins.inputs, {input.Take<qint8>(), input.Take<qint8>()});
  worker.SetGain(input.Take<double>());
  worker.SetCuts(input.Take<double>(), input.Take<double>());
  worker.SetRunning(true);
  Loop::Run(worker, pins);
}

void IntoTimes(const Pins& pins, Input& input) {
  time_distribution_Thread worker(pins.inputs, {input.Take<qint8>(), input.Take<qint8>()});
  worker.SetBinning(input.Take<double>());
  Loop::Run(worker, pins);
}

std::vector<qint32> Numbers(Input& input) {
  std::vector<qint32> numbers(input.Take<quint8>() % 16);
  for (qint32& number : numbers) {
    number = input.Take<qint8>();
  }
  return numbers;
}

void IntoPositions(const Pins& pins, Input& input) {
  Position_Thread worker(pins.inputs, {Numbers(input), Numbers(input)}, input.Take<qint8>());
  worker.SetEnergyWindow({input.Take<double>(), input.Take<double>()});
  worker.SetRunning(true);
  Loop::Run(worker, pins);
  worker.TakeFrames();
}

void IntoImage(const Pins& pins, Input& input) {
  Image_Thread worker(pins.inputs, input.Take<qint8>(), input.Take<qint8>());
  worker.SetRunning(true);
  Loop::Run(worker, pins);
  worker.TakeImmediate();
}

void IntoSorter(const Pins& pins, Input& /*input*/) {
  Time_Sorting_Thread worker(pins.inputs, pins.outputs, QStringLiteral("sorter"), {});
  Loop::Run(worker, pins);
}

// Another form of file for each number, of which the last is none.
korvax::DumpSettings Settings(Input& input) {
  [[maybe_unused]] static const bool isMade = QDir(ScratchFolder()).mkdir(QStringLiteral("run"));
  constexpr std::array Types{"BIN", "CSV", "JSON", "?"};
  korvax::DumpSettings settings;
  settings.fileType = QLatin1String(Types[input.Take<quint8>() % Types.size()]);
  settings.eventsPerFile = input.Take<quint8>();
  settings.dumpTime = -1;  // every wave
  settings.filePath = ScratchFolder();
  settings.runId = QStringLiteral("run");
  return settings;
}

template <typename Worker>
void Record(Worker& worker, const Pins& pins, Input& input) {
  worker.Control().StartRun([&](korvax::DumpSettings& settings) { settings = Settings(input); });
  Loop::Run(worker, pins);
  worker.Control().SetStatus(korvax::DumpStatus::Stopped);
}

void IntoScope(const Pins& pins, Input& input) {
  const korvax::TraceShape shape{input.Take<qint8>(), input.Take<qint8>(), input.Take<qint8>(),
                                 input.Take<qint8>()};
  Oscilloscope_Thread worker(pins.inputs, QStringLiteral("scope"), shape);
  Record(worker, pins, input);
  worker.Traces({-1, 0, 1, 127});
}

void IntoDumper(const Pins& pins, Input& input) {
  DataDumper_Thread worker(pins.inputs, QStringLiteral("dumper"));
  Record(worker, pins, input);
}

void IntoRates(const Pins& pins, Input& input) {
  SinkRateCounter_Thread worker(pins.inputs, QStringLiteral("rates"), input.Take<quint8>());
  Record(worker, pins, input);
  worker.History().Records();
}

constexpr std::array Kinds{IntoSpectrum, IntoTimes, IntoPositions, IntoImage,
                           IntoSorter,   IntoScope, IntoDumper,    IntoRates};

}  // namespace

void Consume(std::vector<DataMessage> messages, Input& input) {
  const Pins pins(std::move(messages));
  Kinds[input.Take<quint8>() % Kinds.size()](pins, input);
}

}  // namespace fuzz
