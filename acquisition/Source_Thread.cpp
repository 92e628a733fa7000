#include "acquisition/Source_Thread.h"

#include "acquisition/PauseLength.h"
#include "acquisition/RateDecoder.h"
#include "boards/DigitizerBoard.h"

#include <QtDebug>

namespace {

// Room for the recursion of the expression library on the longest expression that it is given.
constexpr uint StackBytes = 64U << 20;

// Hands the block back when the decoding is over, whichever way it ends.
class BlockGuard {
public:
  BlockGuard(const DataDistructorSource& distructor, board::ReadBlock& block)
      : distructor_(distructor), block_(block) {}
  ~BlockGuard() { distructor_.HandBack(block_); }
  BlockGuard(const BlockGuard&) = delete;
  BlockGuard& operator=(const BlockGuard&) = delete;

private:
  const DataDistructorSource& distructor_;
  board::ReadBlock& block_;
};

}  // namespace

Source_Thread::Source_Thread(const QString& dataType, const SourceBinding& binding,
                             const KorvaxBlock::OutputPins& outputs, const DataDistructorSource* distructor,
                             const std::atomic<double>& downloadIntervalMs, ReadWatch& watch)
    : dataType_(dataType),
      binding_(binding),
      endpointPath_(binding.EndpointPath()),
      isWaveform_(dataType == QLatin1String("waveform")),
      outputs_(outputs),
      distructor_(distructor),
      downloadIntervalMs_(downloadIntervalMs),
      watch_(watch),
      account_({korvax::Fate::Decoded, korvax::Fate::PassedOver, korvax::Fate::Refused}) {
  setStackSize(StackBytes);
}

Source_Thread::~Source_Thread() {
  Q_ASSERT(!isRunning());
}

void Source_Thread::RequestStop() {
  const korvax::Lock lock(mutex_);
  stopping_.store(true, std::memory_order_relaxed);
  wake_.wakeAll();
}

void Source_Thread::Stop() {
  RequestStop();
  wait();
  korvax::HappensAfter(this);
}

void Source_Thread::run() {
  if (isWaveform_) {
    StartWaveEndpoint();
  }
  while (!IsStopping()) {
    const bool read = ReadOnce();
    if (isWaveform_ && !read) {
      qInfo() << "W ERR";
    }
    Pause(acquisition::PauseLength(downloadIntervalMs_.load(std::memory_order_relaxed)));
    if (isWaveform_ && read) {
      qInfo() << "W OK";
    }
  }
  calibration_.Use({});  // on the stack that it was compiled on
  korvax::HappensBefore(this);
}

void Source_Thread::StartWaveEndpoint() const {
  const BoardEndpoint* endpoint = binding_.Endpoint();
  if (endpoint == nullptr) {
    return;
  }
  binding_.board->SendCommands(endpoint->configCommands);
  if (endpoint->enabled) {
    binding_.board->SendCommands(endpoint->startCommands);
  }
}

bool Source_Thread::ReadOnce() {
  if (binding_.board == nullptr) {
    return false;
  }
  board::ReadBlock block;
  watch_.Begin();
  const qint32 status = binding_.board->ReadData(binding_.endpointQuery, &block);
  watch_.End();
  if (status != 0 || block.count == 0) {
    return false;
  }
  DecodeBlock(block);
  return true;
}

void Source_Thread::DecodeBlock(board::ReadBlock& block) {
  // A negative count names no entries that could be handed back.
  if (block.count < 1) {
    return;
  }
  const BlockGuard guard(*distructor_, block);
  account_.Book(static_cast<quint64>(block.count), DecodeEntries(block));
  if (acquisition::IsRateType(dataType_)) {
    Pause(acquisition::RatePauseMs);
  }
}

korvax::Fates Source_Thread::DecodeEntries(const board::ReadBlock& block) {
  const auto count = static_cast<std::size_t>(block.count);
  korvax::Fates fates;
  if (block.entries == nullptr || block.count > acquisition::MostEntries) {
    TellOfGarbage(block.count);
    fates[korvax::Fate::Refused] = count;
    return fates;
  }
  calibration_.Use(expression_.Get());
  const acquisition::DecodeSettings settings{dataType_, &calibration_,
                                             useBoardKev_.load(std::memory_order_relaxed), &clock_};
  const std::span entries(reinterpret_cast<const board::Entry*>(block.entries), count);
  const std::size_t decoded = acquisition::Decode(
      entries, settings, [this](std::unique_ptr<PayloadBatch> batch) { Gather(std::move(batch)); });
  PushGathered();
  fates[korvax::Fate::Decoded] = decoded;
  fates[korvax::Fate::PassedOver] = count - decoded;
  return fates;
}

void Source_Thread::TellOfGarbage(qint32 count) {
  if (!std::exchange(garbageTold_, true)) {
    qInfo() << "Source" << endpointPath_ << ": the board's library gave" << count
            << "entries, which can't be. They are refused, and those to come without a line each: the ledger "
               "counts them."
            << "Look at the board";
  }
}

void Source_Thread::Gather(std::unique_ptr<PayloadBatch> batch) {
  gathered_ += batch->Size();
  messages_.push_back({dataType_, endpointPath_, 0, 0, std::move(batch), 0, 0});
  if (messages_.size() == PinOutput::AtATime) {
    PushGathered();
  }
}

// Many at a time where each record is a message: their consumer isn't woken for each.
void Source_Thread::PushGathered() {
  account_.BookMade(std::exchange(gathered_, 0));
  outputs_.front()->PushAll(messages_);
  messages_.clear();
}

void Source_Thread::Pause(unsigned long milliseconds) {
  if (milliseconds == 0) {
    return;
  }
  korvax::Lock lock(mutex_);
  if (!IsStopping()) {
    lock.WaitFor(wake_, milliseconds);
  }
}
