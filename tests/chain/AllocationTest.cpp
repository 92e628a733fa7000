#include "processing/Process_Tee.h"
#include "recording/DataDumper.h"
#include "tests/chain/ChainFixture.h"

#include <QDir>
#include <QTemporaryDir>

#include <atomic>

namespace {

std::atomic<quint64> allocations = 0;

}  // namespace

// In place of the C library's, for the whole process, Qt included.
extern "C" {
void* __libc_malloc(std::size_t bytes);
void* __libc_calloc(std::size_t count, std::size_t bytes);
void* __libc_realloc(void* memory, std::size_t bytes);

void* malloc(std::size_t bytes) {
  allocations.fetch_add(1, std::memory_order_relaxed);
  return __libc_malloc(bytes);
}
void* calloc(std::size_t count, std::size_t bytes) {
  allocations.fetch_add(1, std::memory_order_relaxed);
  return __libc_calloc(count, bytes);
}
void* realloc(void* memory, std::size_t bytes) {
  allocations.fetch_add(1, std::memory_order_relaxed);
  return __libc_realloc(memory, bytes);
}
}

namespace {

// What a message may cost doesn't grow with its events.
class AStreamOfEvents : public ChainFixture {
protected:
  static constexpr int Messages = 300;
  static constexpr int EventsPerMessage = 1000;
  static constexpr quint64 Events = quint64{Messages} * EventsPerMessage;
  static constexpr quint64 MostAllocations = quint64{Messages} * 60;  // the board of the test has its share

  AStreamOfEvents() { source->Run(); }
  ~AStreamOfEvents() override { source->StopWorker(); }

  // Of the second of two equal portions: the first one fills what keeps its memory.
  quint64 AllocationsOfAPortion(const KorvaxBlock& sink) {
    Pass(sink);
    return Pass(sink);
  }

  std::unique_ptr<Source> source = MakeSource();

private:
  quint64 Pass(const KorvaxBlock& sink) {
    const quint64 end = sink.Records()->Get().received + Events;
    std::vector<test::RawBlock> blocks(Messages);
    for (test::RawBlock& block : blocks) {
      for (int event = 0; event < EventsPerMessage; ++event) {
        block.Add(test::EnergyRecord(static_cast<quint32>(event % 4), static_cast<quint32>(event % 64)));
      }
    }
    const quint64 before = allocations;
    for (test::RawBlock& block : blocks) {
      digitizer.Offer(std::move(block));
    }
    EXPECT_TRUE(test::WaitFor([&] { return sink.Records()->Get().received == end; }));
    return allocations - before;
  }
};

TEST(AnAllocation, isNoted) {
  const quint64 before = allocations;
  const auto event = std::make_unique<KorvaxPayload_Energy>();
  EXPECT_EQ(allocations - before, 1U);
}

TEST_F(AStreamOfEvents, allocatesNothingForAnEventOnItsWayIntoASpectrum) {
  const auto spectrum = MakeSpectrum(64, 4);
  Link(*source, *spectrum);
  Run(*spectrum);
  EXPECT_LT(AllocationsOfAPortion(*spectrum), MostAllocations);
  source->StopWorker();
}

TEST_F(AStreamOfEvents, allocatesNothingForAnEventOnItsWayThroughATee) {
  Process_Tee tee(nullptr, Context("tee"),
                  test::Object(R"({"name":"tee","data_type":"energy","output_count":2})"));
  const auto first = MakeSpectrum(64, 4);
  const auto second = MakeSpectrum(64, 4);
  Link(*source, tee);
  first->Inputs()[0]->Connect(tee.Outputs()[0].get());
  second->Inputs()[0]->Connect(tee.Outputs()[1].get());
  Run(*first);
  Run(*second);
  EXPECT_LT(AllocationsOfAPortion(*second), MostAllocations);
  source->StopWorker();
  first->StopWorker();
  second->StopWorker();
}

TEST_F(AStreamOfEvents, allocatesNothingForAnEventOnItsWayIntoAFile) {
  for (const char* type : {"BIN", "CSV", "JSON"}) {
    const QTemporaryDir folder;
    ASSERT_TRUE(QDir(folder.path()).mkdir("1"));
    DataDumper dumper(nullptr, Context("dumper"), test::Object(R"({"name":"dumper","data_type":"energy"})"));
    source = MakeSource();
    Link(*source, dumper);
    source->Run();
    dumper.ConfigureDump(1'000'000'000, type, folder.path());
    dumper.StartDump("1");
    EXPECT_LT(AllocationsOfAPortion(dumper), MostAllocations) << type;
    EXPECT_EQ(dumper.Records()->Get().fates[korvax::Fate::Written], 2 * Events) << type;
    source->StopWorker();
    dumper.StopWorker();
  }
}

}  // namespace
