// The input says a data type, how it is decoded and who consumes it, and lays out what a board library hands out:
// the entries of one block with their records. They are decoded, perhaps copied by a tee, and consumed.

#include "acquisition/AcquisitionClock.h"
#include "acquisition/Decoder.h"
#include "acquisition/EnergyCalibration.h"
#include "acquisition/Source_Thread.h"
#include "boards/DigitizerBoard.h"
#include "framework/DataMessage.h"
#include "processing/Process_Tee.h"
#include "tests/fuzz/BoardMemory.h"
#include "tests/fuzz/Consumers.h"
#include "tests/fuzz/FuzzProcess.h"
#include "tests/support/FakeVendor.h"

#include <QJsonArray>
#include <QJsonObject>

#include <array>
#include <cstdlib>

namespace {

constexpr std::array DataTypes{"energy", "energy_pair", "waveform", "rate_counters", "?"};
enum ModeBits : std::uint8_t { UseBoardKev = 1, ThroughSource = 2, AbsurdCount = 4, NullEntries = 8, Copy = 16 };

struct Mode {
  explicit Mode(fuzz::Input& input)
      : dataType(QLatin1String(DataTypes[input.Take<std::uint8_t>() % DataTypes.size()])),
        bits(input.Take<std::uint8_t>()),
        count(input.Take<qint32>()),
        expression(QString::fromLatin1(input.TextUpTo('\n'))) {}

  bool Has(ModeBits bit) const { return (bits & bit) != 0; }

  const QString dataType;
  const std::uint8_t bits;
  const qint32 count;  // claimed by a block that claims an absurd one
  const QString expression;
};

std::vector<DataMessage> Decoded(const Mode& mode, const std::vector<board::Entry>& entries) {
  static const AcquisitionClock clock;
  std::vector<DataMessage> messages;
  EnergyCalibration calibration(mode.expression);
  const auto decoded = acquisition::Decode(entries, {mode.dataType, &calibration, mode.Has(UseBoardKev), &clock},
                                           [&](std::unique_ptr<PayloadBatch> batch) {
                                             DataMessage& message = messages.emplace_back();
                                             message.dataType = mode.dataType;
                                             message.batch = std::move(batch);
                                           });
  if (decoded > entries.size()) {
    std::abort();
  }
  return messages;
}

// What the library's read fills in. A count that the source takes is the real one.
board::ReadBlock BlockOf(const Mode& mode, const std::vector<board::Entry>& entries) {
  board::ReadBlock block;
  block.count = static_cast<qint32>(entries.size());
  if (mode.Has(AbsurdCount) && (mode.count <= 0 || mode.count > acquisition::MostEntries)) {
    block.count = mode.count;
  }
  block.entries = mode.Has(NullEntries) ? nullptr : reinterpret_cast<const std::byte*>(entries.data());
  return block;
}

std::vector<DataMessage> AllOf(PinInput& pin) {
  std::vector<DataMessage> messages;
  for (DataMessage message; pin.Pop(message) == PinInput::Taken; message = {}) {
    messages.push_back(std::move(message));
  }
  return messages;
}

// What a source's own thread runs otherwise, until a read asks it to stop.
class SourceLoop : public Source_Thread {
public:
  static void Run(Source_Thread& thread) {
    (thread.*&SourceLoop::run)();
    const korvax::Account::Statement account = thread.Records().Get();
    if (account.received != account.fates.Sum()) {
      std::abort();
    }
  }
};

// Read from a board by a source, as one block.
std::vector<DataMessage> ReadBySource(const Mode& mode, const std::vector<board::Entry>& entries) {
  test::FakeVendor vendor;
  DigitizerBoard digitizer(vendor.Lookup());
  digitizer.name = QStringLiteral("b");
  digitizer.LoadEndpoints({{"endpoints", QJsonArray{QJsonObject{{"name", "e"}}}}});
  const DataDistructorSource distructor(digitizer, QStringLiteral("endpoints\\e"));
  KorvaxBlock::OutputPins outputs;
  outputs.push_back(std::make_unique<PinOutput>(mode.dataType));
  const std::atomic<double> interval = 0.0;
  ReadWatch watch(QStringLiteral("s"), QStringLiteral("endpoints\\e"));
  Source_Thread thread(mode.dataType, {&digitizer, 0, QStringLiteral("endpoints\\e")}, outputs, &distructor,
                       interval, watch);
  thread.SetExpression(mode.expression);
  thread.SetUseBoardKev(mode.Has(UseBoardKev));
  vendor.onRead = [&](void* block) {
    const board::ReadBlock filled = BlockOf(mode, entries);
    std::memcpy(block, &filled, sizeof filled);
    thread.RequestStop();
    return 0;
  };
  SourceLoop::Run(thread);
  PinInput pin(mode.dataType);
  pin.Connect(outputs.front().get());
  return AllOf(pin);
}

// What comes out of a tee, which works on the thread that pushes.
std::vector<DataMessage> Copies(std::vector<DataMessage> messages) {
  PinOutput feed(QStringLiteral("feed"));
  const Process_Tee tee(nullptr, {}, QJsonObject{{"output_count", 1}});
  tee.Inputs().front()->Connect(&feed);
  PinInput pin(QStringLiteral("pin"));
  pin.Connect(tee.Outputs().front().get());
  for (DataMessage& message : messages) {
    feed.Push(std::move(message));
  }
  return AllOf(pin);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Prepare();
  fuzz::Input input(data, size);
  const Mode mode(input);
  const QByteArray consumer = input.Text(48);
  const fuzz::BoardMemory memory(input, mode.dataType);
  std::vector<DataMessage> messages =
      mode.Has(ThroughSource) ? ReadBySource(mode, memory.Entries()) : Decoded(mode, memory.Entries());
  if (mode.Has(Copy)) {
    messages = Copies(std::move(messages));
  }
  fuzz::Input consumerInput(reinterpret_cast<const std::uint8_t*>(consumer.constData()),
                            static_cast<std::size_t>(consumer.size()));
  fuzz::Consume(std::move(messages), consumerInput);
  return 0;
}
