#include "processing/Process_Time_Sorting.h"
#include "tests/support/FakeClock.h"
#include "tests/support/Json.h"
#include "tests/support/LogCapture.h"
#include "tests/support/Printing.h"
#include "tests/support/Records.h"
#include "tests/support/WaitFor.h"
#include "tests/unit/processing/Events.h"

#include <gtest/gtest.h>

#include <QMetaMethod>

namespace {

using test::Energy;
using test::MessageOf;

// A real block with its worker between two pins of the test.
class Sorting {
public:
  explicit Sorting(const QByteArray& parameters = "")
      : block(nullptr, Context(),
              test::Object(R"({"name":"sorter","data_type":"energy","parameters":[)" + parameters + "]}"), clock) {
    block.Inputs().front()->Connect(&feed);
    reader.Connect(block.Outputs().front().get());
  }
  ~Sorting() {
    block.StopWorker();
    test::Empty(reader);
  }
  Sorting(const Sorting&) = delete;
  Sorting& operator=(const Sorting&) = delete;

  static ChainContext Context() {
    ChainContext context;
    context.fullPath = "processing/0/filter_chain/main/chain/sorter";
    return context;
  }

  /// Consumes one message, and everything before it.
  template <typename... Records>
  [[nodiscard]] bool Consume(Records... records) {
    std::atomic<bool> destroyed = false;
    feed.Push(MessageOf(std::move(records)..., test::Watched([&destroyed] { destroyed = true; })));
    return test::WaitFor([&] {
      block.NewDataInTheInputPin(0);  // a wake-up may be lost
      return destroyed.load();
    });
  }
  /// The next group; empty when none comes.
  std::vector<quint64> NextGroup() {
    DataMessage message;
    const bool came = test::WaitFor([&] {
      block.NewDataInTheInputPin(0);
      return reader.Pop(message) == PinInput::Taken;
    });
    return came ? test::TimestampsOf(*message.batch) : std::vector<quint64>();
  }
  void PassSeconds(qint64 seconds) { clock.nanosecondsSinceEpoch += 1'000'000'000 * seconds; }

  test::FakeClock clock;
  test::LogCapture log;
  PinOutput feed{"energy"};
  PinInput reader{"energy"};
  Process_Time_Sorting block;
};

TEST(TimeSorting, isABlockOfTypeTimeSortingThatTakesNoPartInRuns) {
  const Sorting sorting;
  EXPECT_EQ(sorting.block.BlockType(), "time_sorting");
  EXPECT_FALSE(sorting.block.IsDumpCapable());
  EXPECT_EQ(sorting.block.property("Name").toString(), "sorter");
  EXPECT_EQ(sorting.block.property("FullPath").toString(), "processing/0/filter_chain/main/chain/sorter");
  EXPECT_EQ(sorting.block.parent(), nullptr);
  EXPECT_EQ(sorting.block.Fault(), "");
}

TEST(TimeSorting, hasOneInputAndOneOutputNamedAfterItsDataType) {
  const Sorting sorting;
  ASSERT_EQ(sorting.block.Inputs().size(), 1U);
  ASSERT_EQ(sorting.block.Outputs().size(), 1U);
  EXPECT_EQ(sorting.block.Inputs()[0]->Name(), "energy");
  EXPECT_EQ(sorting.block.Outputs()[0]->Name(), "energy");
}

TEST(TimeSorting, hasTheInputSlotAndAnswersNoQueries) {
  const QMetaObject& meta = Process_Time_Sorting::staticMetaObject;
  ASSERT_EQ(meta.methodCount() - meta.methodOffset(), 1);
  const QMetaMethod slot = meta.method(meta.methodOffset());
  EXPECT_EQ(slot.methodSignature(), "NewDataInTheInputPin(int)");
  EXPECT_EQ(slot.parameterNames(), QList<QByteArray>{"FifoLevel"});
  EXPECT_EQ(slot.methodType(), QMetaMethod::Slot);
}

TEST(TimeSorting, readsItsParametersAsTheirTypesSay) {
  struct Row {
    const char* windows;
    const char* delta;
    qint32 expectedWindows;
    double expectedDelta;
  };
  const Row rows[] = {
      {"5", "100", 5, 100.0},   {"-3", "-99.7", -3, -99.0}, {"\"5\"", "\"100\"", 0, 0.0},
      {"2.5", "99.9", 0, 99.0}, {"null", "null", 0, 0.0},   {"2147483647", "1e300", 2'147'483'647, 1e300},
      {"1e10", "true", 0, 0.0}, {"[1]", "[1]", 0, 0.0},
  };
  for (const Row& row : rows) {
    const Sorting sorting(QByteArray(R"({"param_name":"n_windows","param_value":)") + row.windows +
                          R"(},{"param_name":"timestamp_delta","param_value":)" + row.delta + "}");
    EXPECT_EQ(sorting.block.Settings().windows, row.expectedWindows) << row.windows;
    EXPECT_EQ(sorting.block.Settings().timestampDelta, row.expectedDelta) << row.delta;
  }
}

TEST(TimeSorting, withoutParametersStillConstructs) {
  for (const QJsonValue& block :
       {QJsonValue(), QJsonValue(7), QJsonValue(test::Object(R"({"parameters":3,"name":[],"data_type":1})"))}) {
    Process_Time_Sorting sorting(nullptr, Sorting::Context(), block);
    EXPECT_EQ(sorting.Settings().windows, 0);
    EXPECT_EQ(sorting.Settings().timestampDelta, 0.0);
    sorting.NewDataInTheInputPin(1);  // without a link
  }
}

TEST(TimeSorting, theParameterStepReportsSuccessAndChangesNothingInALiveWorker) {
  Sorting sorting(R"({"param_name":"n_windows","param_value":4})");
  EXPECT_TRUE(sorting.block.ParseParameters(
      test::Object(R"({"parameters":[{"param_name":"n_windows","param_value":9}]})")));
  EXPECT_TRUE(sorting.block.ParseParameters(QJsonValue()));
  EXPECT_EQ(sorting.block.Settings().windows, 4);
}

TEST(TimeSorting, itsParametersChangeNeitherTheHoldTimeNorTheGroupWidth_isKept) {
  for (const char* value : {"0", "1", "-5", "1000000000"}) {
    Sorting sorting(QByteArray(R"({"param_name":"n_windows","param_value":)") + value +
                    R"(},{"param_name":"timestamp_delta","param_value":)" + value + "}");
    ASSERT_TRUE(sorting.Consume(Energy(0, 0, 100), Energy(0, 0, 101), Energy(0, 0, 0)));
    sorting.clock.nanosecondsSinceEpoch += 4'000'000;
    ASSERT_TRUE(sorting.Consume(Energy(0, 0, 5'000)));
    ASSERT_TRUE(sorting.Consume());
    EXPECT_EQ(sorting.block.Outputs()[0]->AcceptedMessages(), 0U) << value;
    sorting.clock.nanosecondsSinceEpoch += 2'000'000;
    ASSERT_TRUE(sorting.Consume(Energy(0, 0, 9'000)));
    EXPECT_EQ(sorting.NextGroup(), (std::vector<quint64>{0, 100})) << value;
    EXPECT_EQ(sorting.NextGroup(), (std::vector<quint64>{101})) << value;
    sorting.block.StopWorker();
    EXPECT_EQ(sorting.block.Outputs()[0]->AcceptedMessages(), 2U) << value;
  }
}

TEST(TimeSorting, isWokenByItsInputPin) {
  Sorting sorting;
  quint64 timestamp = 0;
  ASSERT_TRUE(test::WaitFor([&] {
    sorting.PassSeconds(1);
    sorting.feed.Push(MessageOf(Energy(0, 0, timestamp += 1'000)));
    return sorting.block.Outputs()[0]->Level() > 0;
  }));
  EXPECT_EQ(sorting.NextGroup(), std::vector<quint64>{1'000});
}

TEST(TimeSorting, sortsOnAWorkerOfTimeCriticalPriority) {
  Sorting sorting;
  std::atomic<QThread*> worker = nullptr;
  std::atomic<QThread::Priority> priority = QThread::IdlePriority;
  ASSERT_TRUE(sorting.Consume(test::Watched([&] {
    worker = QThread::currentThread();
    priority = QThread::currentThread()->priority();
  })));
  EXPECT_NE(worker, QThread::currentThread());
  EXPECT_EQ(priority, QThread::TimeCriticalPriority);
}

TEST(TimeSorting, stoppedTakesWhatHasReachedItAndLogsHowManyEventsStayed) {
  Sorting sorting;
  sorting.feed.blockSignals(true);
  for (quint64 i = 0; i < 7; ++i) {
    sorting.feed.Push(MessageOf(Energy(0, 0, 1'000 * i)));
  }
  sorting.block.StopWorker();
  EXPECT_EQ(sorting.feed.Level(), 0);
  EXPECT_EQ(sorting.log.Lines(),
            QStringList{"Time sorting \"sorter\" ends with 7 events that were still waiting"});
  sorting.block.StopWorker();
  EXPECT_EQ(sorting.log.Lines().size(), 1) << "a second stop does nothing";
}

TEST(TimeSorting, letsNothingGoLostOrTwiceUnderLoad) {
  Sorting sorting;
  quint64 pushed = 0;
  std::vector<quint64> emitted;
  const auto takeAll = [&] {
    for (DataMessage message; sorting.reader.Pop(message) == PinInput::Taken;) {
      const std::vector<quint64> group = test::TimestampsOf(*message.batch);
      emitted.insert(emitted.end(), group.begin(), group.end());
    }
  };
  while (pushed < 5'000) {
    sorting.clock.nanosecondsSinceEpoch += 10'000'000;
    const quint64 next = 30 * pushed;
    sorting.feed.Push(MessageOf(Energy(0, 0, next + 60), Energy(0, 0, next), Energy(0, 0, next + 30)));
    pushed += 3;
    takeAll();
  }
  ASSERT_TRUE(sorting.Consume());
  sorting.PassSeconds(1);  // since all have arrived
  ASSERT_TRUE(sorting.Consume());
  sorting.block.StopWorker();
  takeAll();
  ASSERT_EQ(emitted.size(), pushed);
  for (quint64 i = 0; i < pushed; ++i) {
    ASSERT_EQ(emitted[i], 30 * i);
  }
  EXPECT_EQ(sorting.log.Count("Order buffer full!"), 0);
}

}  // namespace
