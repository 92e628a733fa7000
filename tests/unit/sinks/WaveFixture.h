#pragma once

#include "sinks/WaveRecorder.h"
#include "tests/support/FakeClock.h"
#include "tests/support/LinesPrinting.h"
#include "tests/support/LogCapture.h"
#include "tests/support/RunFolder.h"

namespace test {

using WavesRecord = std::unique_ptr<KorvaxPayload_Waves>;

struct Samples {
  WaveSamples<double> analog;
  WaveSamples<quint32> digital;
};

/// The waves of one board read, channel by channel.
inline WavesRecord Waves(qint32 samplesPerWave, const std::vector<Samples>& channels, quint64 timestamp = 0) {
  auto waves = std::make_unique<KorvaxPayload_Waves>();
  waves->samplesPerWave = samplesPerWave;
  waves->timestamp = timestamp;
  for (const Samples& samples : channels) {
    auto wave = std::make_unique<KorvaxPayload_Wave>();
    wave->analog = samples.analog;
    wave->digital = samples.digital;
    waves->waves.push_back(std::move(wave));
  }
  return waves;
}

/// A recorder named "scope" of one channel with one sample, one analog and one digital trace, that records to the
/// folder of run_1, by a clock that the test moves. A record's timestamp, and its sample, tell it from others.
class WaveBench {
public:
  explicit WaveBench(const QString& fileType, qint32 eventsPerFile = 1000)
      : control(
            input_,
            {.eventsPerFile = eventsPerFile, .fileType = fileType, .filePath = folder.Root(), .runId = "run_1"}) {}

  void Start() { control.SetStatus(korvax::DumpStatus::Recording); }
  /// Starts and takes one payload, which opens the file and leaves no record.
  void Open() {
    Start();
    Take(999, 0);
  }
  void Pause() { control.SetStatus(korvax::DumpStatus::Paused); }
  void Stop() { control.SetStatus(korvax::DumpStatus::Stopped); }
  template <typename Change>
  void Set(Change change) {
    control.Set(change);
  }

  /// A payload with one wave, `ms` after the one before.
  void Take(int value, qint64 ms = 1, quint64 further = 0) {
    clock.steadyMs += ms;
    const WavesRecord waves = Waves(1, {{{static_cast<double>(value)}, {1}}}, static_cast<quint64>(value));
    store.Store(*waves);
    recorder.Take(waves.get(), further);
  }
  void TakeWithoutWaves() { recorder.Take(nullptr, 0); }

  /// The line on a file of the run that is emptied.
  QString Reuse(const QString& file, int records) const {
    return QStringLiteral("Run file \"%1\" is used again: its %2 records are given up")
        .arg(folder.Path(file))
        .arg(records);
  }

  RunFolder folder;

private:
  PinInput input_{"waveform"};

public:
  korvax::DumpControl control;
  FakeClock clock;
  korvax::TraceStore store{{.samples = 1, .channels = 1, .analog = 1, .digital = 1}};
  korvax::WaveRecorder recorder{"scope", control, store, clock};
};

/// What a CSV file has of such a payload.
inline std::string CsvLine(int value) {
  const std::string text = std::to_string(value);
  return "1,1,1,1," + text + "," + text + ",1,\n";
}

/// A JSON file of such payloads that isn't ended.
inline std::string OpenJsonFile(const std::vector<int>& values) {
  std::string file = "[";
  for (const int value : values) {
    const std::string text = std::to_string(value);
    file.append(file.size() == 1 ? "" : ",");
    file.append(R"({"n_channels":1,"n_samples":1,"n_analog":1,"n_digital":1,"timestamp":)").append(text);
    file.append(R"(,"channels":[{"analog_traces": [)").append(text).append(R"(],"digital_traces": [1]}]})");
  }
  return file;
}

/// One that is.
inline std::string JsonFile(const std::vector<int>& values) {
  return OpenJsonFile(values).append("]");
}

}  // namespace test
