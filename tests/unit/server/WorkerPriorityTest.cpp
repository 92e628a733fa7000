#include "boards/DigitizerBoard.h"
#include "framework/KorvaxBlock.h"
#include "server/BlockFactory.h"
#include "tests/support/Json.h"
#include "tests/support/Records.h"
#include "tests/support/WaitFor.h"

#include <QThread>

#include <gtest/gtest.h>

#include <atomic>

namespace {

const BoardList Boards;
const BlockList Blocks;

// The priority of the thread that destroys what the block's input pin is fed.
QThread::Priority PriorityOfWorker(const char* type) {
  const auto block = BlockFactory::Create(type, {&Boards, &Blocks, "p", ""}, test::Object(R"({"name": "n"})"));
  PinOutput feed("energy");
  block->Inputs().front()->Connect(&feed);
  std::atomic<bool> consumed = false;
  std::atomic<QThread::Priority> priority = QThread::IdlePriority;
  feed.Push(test::MessageOf(test::Watched([&] {
    priority = QThread::currentThread()->priority();
    consumed = true;
  })));
  EXPECT_TRUE(test::WaitFor([&] {
    QMetaObject::invokeMethod(block.get(), "NewDataInTheInputPin", Q_ARG(int, 1));  // a wake-up may be lost
    return consumed.load();
  })) << type;
  block->StopWorker();
  return priority;
}

TEST(Workers, RunAtTimeCriticalPriority) {
  for (const char* type : {"time_sorting", "position", "image", "spectrum", "tof_histogram", "dumper",
                           "rate_counters_sink"}) {
    EXPECT_EQ(PriorityOfWorker(type), QThread::TimeCriticalPriority) << type;
  }
}

TEST(Workers, OfOscilloscopesRunAtThePriorityOfTheMainThread) {
  EXPECT_EQ(PriorityOfWorker("oscilloscope"), QThread::InheritPriority);
}

}  // namespace
