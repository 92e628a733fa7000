#include "tests/unit/acquisition/SourceFixture.h"

#include <atomic>

namespace {

using ASourceOfPairs = SourceFixture;

// While a consumer takes those, the next are made: else one great block would overflow the queue.
TEST_F(ASourceOfPairs, hasNoMoreThan1000MessagesInThePinBeforeTheFirstIsSignalled) {
  const test::Bytes record =
      test::Bytes().Unused(16).U64(7).U32(1).U32(1).U32(2).Unused(4).F64(0).F64(0).Unused(8).U32(0).U32(0);
  test::RawBlock pairs;
  for (int i = 0; i < 2'500; ++i) {
    pairs.Add(record);
  }
  Feed(pairs);
  Source& source = Make(Configuration("energy_pair", "endpoints\\energy"));
  const PinOutput& pin = *source.Outputs().front();
  std::atomic<int> levelAtTheFirst = 0;
  std::atomic<int> signalled = 0;
  QObject::connect(&pin, &PinOutput::NewDataPushedInPin, [&](int size) {  // on the source's thread
    if (size == 1) {
      levelAtTheFirst = pin.Level();
    }
    ++signalled;
  });
  source.Run();
  ASSERT_TRUE(test::WaitFor([&] { return signalled == 2'500; }));
  EXPECT_EQ(levelAtTheFirst, 1'000);
  EXPECT_EQ(pin.Level(), 2'500);
  EndSource();  // before what its records and the pin's listener look at
}

}  // namespace
