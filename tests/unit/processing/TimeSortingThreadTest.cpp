#include "tests/unit/processing/SorterFixture.h"

namespace {

class ASorter : public test::SorterFixture {};

TEST_F(ASorter, emitsInGroupsWhatHasWaitedLongerThan5Milliseconds) {
  PushAndDrain({101, 100, 0, 50});
  EXPECT_EQ(TakeGroups(), Groups{});
  PassMicroseconds(6'000);
  PushAndDrain({1'000});
  EXPECT_EQ(TakeGroups(), (Groups{{0, 50, 100}, {101}}));
}

TEST_F(ASorter, holdsAnEventFor5000MicrosecondsAndNoLonger) {
  PushAndDrain({0, 1'000});
  PassMicroseconds(5'000);
  PushAndDrain({2'000});
  EXPECT_EQ(TakeGroups(), Groups{});
  clock.nanosecondsSinceEpoch += 999;
  PushAndDrain({3'000});
  EXPECT_EQ(TakeGroups(), Groups{}) << "part of a microsecond doesn't count";
  clock.nanosecondsSinceEpoch += 1;
  PushAndDrain({4'000});
  EXPECT_EQ(TakeGroups(), (Groups{{0}, {1'000}}));
}

TEST_F(ASorter, putsEventsOfSeveralMessagesInOrder) {
  PushAndDrain({300, 200});
  PushAndDrain({250, 900});
  PushAndDrain({100, 5'000});
  PassMicroseconds(6'000);
  PushAndDrain({9'000});
  EXPECT_EQ(TakeGroups(), (Groups{{100, 200}, {250, 300}, {900}, {5'000}}));
}

TEST_F(ASorter, anEventThatHasJustArrivedHoldsBackTheLaterOnesBehindIt) {
  PushAndDrain({1'000, 2'000});
  PassMicroseconds(6'000);
  PushAndDrain({500});
  EXPECT_EQ(TakeGroups(), Groups{});
  PassMicroseconds(6'000);
  PushAndDrain({9'000});
  EXPECT_EQ(TakeGroups(), (Groups{{500}, {1'000}, {2'000}}));
}

TEST_F(ASorter, anEventThatHasJustArrivedJoinsAGroupThatIsDue) {
  PushAndDrain({1'000, 5'000});
  PassMicroseconds(6'000);
  PushAndDrain({1'050, 5'100});
  EXPECT_EQ(TakeGroups(), (Groups{{1'000, 1'050}, {5'000, 5'100}}));
}

TEST_F(ASorter, keepsTheLastEventOfABurstUntilTheNextMessage) {
  PushAndDrain({0, 1'000, 2'000});
  PassMicroseconds(6'000);
  Drain();
  EXPECT_EQ(TakeGroups(), Groups{}) << "without a message no time has passed for it";
  PushAndDrain({3'000});
  EXPECT_EQ(TakeGroups(), (Groups{{0}, {1'000}, {2'000}}));
  PassMicroseconds(6'000);
  PushAndDrain({4'000});
  EXPECT_EQ(TakeGroups(), Groups{{3'000}});
}

TEST_F(ASorter, neverEmitsALoneEvent_isKept) {
  PushAndDrain({7});
  for (int i = 0; i < 3; ++i) {
    PassMicroseconds(3'600'000'000);
    PushAndDrain({});
    EXPECT_EQ(TakeGroups(), Groups{});
  }
  PushAndDrain({8'000});
  EXPECT_EQ(TakeGroups(), Groups{{7}}) << "two are enough to look again";
}

TEST_F(ASorter, onceItEmitsGoesOnToTheLastEvent) {
  PushAndDrain({0, 1'000});
  PassMicroseconds(6'000);
  PushAndDrain({});
  EXPECT_EQ(TakeGroups(), (Groups{{0}, {1'000}})) << "two are needed to begin, not to go on";
}

TEST_F(ASorter, aClockThatIsSetBackMakesEverythingBeforeItDue_isKept) {
  PushAndDrain({0, 1'000});
  PassMicroseconds(-1);
  PushAndDrain({2'000});
  EXPECT_EQ(TakeGroups(), (Groups{{0}, {1'000}}));
  PassMicroseconds(-3'600'000'000);
  PushAndDrain({3'000});
  EXPECT_EQ(TakeGroups(), (Groups{{2'000}}));
}

TEST_F(ASorter, aClockThatIsSetBackHoldsWhatArrivesThenAsUsual) {
  PushAndDrain({5'000});
  PassMicroseconds(-1'000'000);
  PushAndDrain({4'000});
  EXPECT_EQ(TakeGroups(), Groups{}) << "the first in order has only arrived now";
}

TEST_F(ASorter, writesTheArrivalTimeInMicrosecondsIntoEachEvent) {
  PushAndDrain({0, 50});
  PassMicroseconds(7'000);
  clock.nanosecondsSinceEpoch += 900;
  PushAndDrain({60});
  DataMessage message;
  ASSERT_EQ(reader.Pop(message), PinInput::Taken);
  EXPECT_EQ(test::EventAt(*message.batch, 0).arrivalTime, 1'000'000'000'000);
  EXPECT_EQ(test::EventAt(*message.batch, 1).arrivalTime, 1'000'000'000'000);
  EXPECT_EQ(test::EventAt(*message.batch, 2).arrivalTime, 1'000'000'007'000);
}

// Nanoseconds go into a double before they are divided. It holds those of today in steps of 256 only, so that a
// microsecond may read as the one before.
TEST_F(ASorter, arrivalTimesOfTodayAreThoseOfADouble_isKept) {
  clock.nanosecondsSinceEpoch = 1'700'000'000'000'016'000;
  PushAndDrain({0, 50});
  clock.nanosecondsSinceEpoch = 1'700'000'000'505'000'000;
  PushAndDrain({});
  DataMessage message;
  ASSERT_EQ(reader.Pop(message), PinInput::Taken);
  EXPECT_EQ(test::EventAt(*message.batch, 0).arrivalTime, 1'700'000'000'000'015);
}

TEST_F(ASorter, takesAClockThatStandsBefore1970) {
  clock.nanosecondsSinceEpoch = -7'000'000;
  PushAndDrain({0, 50});
  PassMicroseconds(6'000);
  PushAndDrain({});
  DataMessage message;
  ASSERT_EQ(reader.Pop(message), PinInput::Taken);
  EXPECT_EQ(test::EventAt(*message.batch, 0).arrivalTime, -7'000);
}

// A clock that goes on by a second with each reading.
class TickingClock final : public korvax::Clock {
public:
  qint64 SteadyMs() const override { return 0; }
  qint64 SecondsSinceEpoch() const override { return 0; }
  qint64 NanosecondsSinceEpoch() const override { return 1'000'000'000 * ++readings_; }

private:
  mutable std::atomic<qint64> readings_ = 0;
};

TEST_F(ASorter, readsTheClockOncePerMessageAndEmitsByTheTimeOfTheLast) {
  const TickingClock ticking;
  Time_Sorting_Thread sorter(inputs, outputs, "sorter", settings, ticking);
  Push({0, 10});
  Push({1'000, 20});
  Push({2'000});
  sorter.start();
  sorter.Stop();
  DataMessage message;
  ASSERT_EQ(reader.Pop(message), PinInput::Taken);
  ASSERT_EQ(test::TimestampsOf(*message.batch), (Timestamps{0, 10, 20}));
  EXPECT_EQ(test::EventAt(*message.batch, 0).arrivalTime, 1'000'000);
  EXPECT_EQ(test::EventAt(*message.batch, 1).arrivalTime, 1'000'000);
  EXPECT_EQ(test::EventAt(*message.batch, 2).arrivalTime, 2'000'000);
  EXPECT_EQ(TakeGroups(), Groups{{1'000}}) << "the last message's event has waited for no time";
}

}  // namespace
