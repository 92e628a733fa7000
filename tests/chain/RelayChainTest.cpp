#include "tests/chain/ChainFixture.h"

#include "framework/KorvaxPayload_Energy.h"

namespace {

class Relay_Thread final : public korvax::WorkerThread {
public:
  Relay_Thread(const KorvaxBlock::InputPins& inputs, const KorvaxBlock::OutputPins& outputs)
      : WorkerThread(inputs), outputs_(outputs) {}

protected:
  void Consume(DataMessage&& message) override { outputs_.front()->Push(std::move(message)); }

private:
  const KorvaxBlock::OutputPins& outputs_;
};

// The least that a filter can be: its worker passes every message on.
class Relay final : public KorvaxBlock {
public:
  explicit Relay(const ChainContext& context) : KorvaxBlock("relay", false, context, nullptr) {
    const PinInput& input = AddInput();
    AddOutput();
    connect(&input, &PinInput::DataReady, this, [this] { worker_->Wake(); });
    worker_ = std::make_unique<Relay_Thread>(Inputs(), Outputs());
    worker_->start(korvax::StreamPriority);
  }
  ~Relay() override { StopWorker(); }

  void StopWorker() override { worker_->Stop(); }
  void Wake() { worker_->Wake(); }

private:
  std::unique_ptr<Relay_Thread> worker_;
};

class AFilterInTheChain : public ChainFixture {
protected:
  AFilterInTheChain() { Link(*source, relay); }
  ~AFilterInTheChain() override { source->StopWorker(); }

  std::unique_ptr<Source> source = MakeSource();
  Relay relay{Context("relay")};
};

TEST_F(AFilterInTheChain, passesEveryEventToTheSpectrumOnce) {
  constexpr int Events = 5'000;
  const auto spectrum = MakeSpectrum(Events, 1);
  Link(relay, *spectrum);
  Run(*spectrum);
  source->Run();
  for (quint32 energy = 0; energy < Events; ++energy) {
    digitizer.Offer(test::OneEvent(0, energy));
  }
  ASSERT_TRUE(test::WaitFor([&] {
    relay.Wake();
    spectrum->NewDataInTheInputPin(0);
    return Total(*spectrum, 1) >= Events;
  }));
  source->StopWorker();
  relay.StopWorker();
  spectrum->StopWorker();
  EXPECT_EQ(Counts(*spectrum, 0), std::vector<int>(Events, 1));
}

TEST_F(AFilterInTheChain, stoppedInTheOrderOfTheChainLosesNothing) {
  const auto spectrum = MakeSpectrum(1, 1);
  Link(relay, *spectrum);
  Run(*spectrum);
  for (int i = 0; i < 2'000; ++i) {
    digitizer.Offer(test::OneEvent(0, 0));
  }
  source->Run();
  ASSERT_TRUE(WaitUntilExhaustedWithoutSignals());
  source->StopWorker();
  relay.StopWorker();
  spectrum->StopWorker();
  EXPECT_EQ(Total(*spectrum, 1), 2'000);
}

TEST_F(AFilterInTheChain, leavesTheSourcesMessagesUnchangedAndInOrder) {
  for (quint64 timestamp = 100; timestamp < 150; ++timestamp) {
    digitizer.Offer(test::OneEvent(1, 2, timestamp));
  }
  source->Run();
  ASSERT_TRUE(WaitUntilExhaustedWithoutSignals());
  source->StopWorker();
  relay.StopWorker();
  PinInput end("energy");
  end.Connect(relay.Outputs()[0].get());
  for (quint64 timestamp = 100; timestamp < 150; ++timestamp) {
    DataMessage message;
    ASSERT_EQ(end.Pop(message), 0);
    EXPECT_EQ(message.dataType, "energy");
    EXPECT_EQ(message.endpointPath, "det\\energy");
    EXPECT_EQ(message.batch->dataType, QLatin1String("energy"));
    EXPECT_EQ(message.batch->timestamp, timestamp);
    ASSERT_EQ(message.batch->events.size(), 1U);
    EXPECT_EQ(message.batch->events[0].timestamp, timestamp);
  }
  DataMessage message;
  EXPECT_EQ(end.Pop(message), 1);
}

}  // namespace
