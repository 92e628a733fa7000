#include "sinks/TraceStore.h"
#include "tests/unit/sinks/WaveFixture.h"

#include <gmock/gmock.h>

namespace {

using korvax::TraceShape;
using korvax::TraceStore;
using test::Waves;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<double> Slot(const TraceStore& store, qint64 slot) {
  const auto values = store.Slot(slot);
  return {values.begin(), values.end()};
}

std::vector<std::vector<double>> Slots(const TraceStore& store, qint64 count) {
  std::vector<std::vector<double>> traces;
  for (qint64 slot = 0; slot < count; ++slot) {
    traces.push_back(Slot(store, slot));
  }
  return traces;
}

TEST(TraceStore, isAllZerosAtFirst) {
  const TraceStore store({.samples = 2, .channels = 2, .analog = 1, .digital = 1});
  EXPECT_FALSE(store.IsTooLarge());
  EXPECT_THAT(Slots(store, 5),
              ElementsAre(ElementsAre(0, 0), ElementsAre(0, 0), ElementsAre(0, 0), ElementsAre(0, 0), IsEmpty()));
  EXPECT_THAT(Slot(store, -1), IsEmpty());
}

TEST(TraceStore, holdsAChannelsAnalogTraceAndThenItsDigitalOnes) {
  TraceStore store({.samples = 3, .channels = 2, .analog = 1, .digital = 2});
  store.Store(*Waves(3, {{{1.5, -2, 3}, {0b101, 0b010, 0b111}}, {{4, 5, 6}, {0b10, 0, 0xFFFFFFFC}}}));
  EXPECT_THAT(Slots(store, 6), ElementsAre(ElementsAre(1.5, -2, 3), ElementsAre(1, 0, 1), ElementsAre(0, 1, 1),
                                           ElementsAre(4, 5, 6), ElementsAre(0, 0, 0), ElementsAre(1, 0, 0)));
  EXPECT_THAT(store.DigitalWords(0), ElementsAre(1, 2, 3));
  EXPECT_THAT(store.DigitalWords(1), ElementsAre(2, 0, 0));
}

TEST(TraceStore, aDigitalWordHasNoMoreBitsThanTheChannelHasTraces) {
  TraceStore store({.samples = 1, .channels = 1, .analog = 1, .digital = 2});
  store.Store(*Waves(1, {{{9}, {0b101}}}));
  EXPECT_THAT(Slots(store, 3), ElementsAre(ElementsAre(9), ElementsAre(1), ElementsAre(0)));
  EXPECT_THAT(store.DigitalWords(0), ElementsAre(1));
}

TEST(TraceStore, digitalTracesBeyond32ShowTheBitsFromTheLowestAgain) {
  TraceStore store({.samples = 1, .channels = 1, .analog = 1, .digital = 35});
  store.Store(*Waves(1, {{{0}, {0x80000005}}}));
  EXPECT_THAT(Slot(store, 1 + 31), ElementsAre(1));
  EXPECT_THAT(Slot(store, 1 + 32), ElementsAre(1));
  EXPECT_THAT(Slot(store, 1 + 33), ElementsAre(0));
  EXPECT_THAT(Slot(store, 1 + 34), ElementsAre(1));
  EXPECT_THAT(store.DigitalWords(0), ElementsAre(0x80000005U));
}

TEST(TraceStore, packs32DigitalTracesIntoAWholeWord) {
  TraceStore store({.samples = 2, .channels = 1, .analog = 1, .digital = 32});
  store.Store(*Waves(2, {{{0, 0}, {0xFFFFFFFF, 0x80000000}}}));
  EXPECT_THAT(store.DigitalWords(0), ElementsAre(0xFFFFFFFFU, 0x80000000U));
}

TEST(TraceStore, withoutDigitalTracesHasWordsOf0) {
  TraceStore store({.samples = 2, .channels = 2, .analog = 1, .digital = 0});
  store.Store(*Waves(2, {{{1, 2}, {7, 7}}, {{3, 4}, {7, 7}}}));
  EXPECT_THAT(Slots(store, 3), ElementsAre(ElementsAre(1, 2), ElementsAre(3, 4), IsEmpty()));
  EXPECT_THAT(store.DigitalWords(1), ElementsAre(0, 0));
}

TEST(TraceStore, ofTwoAnalogTracesHasSlotsThatNobodyFills) {
  TraceStore store({.samples = 1, .channels = 2, .analog = 2, .digital = 1});
  store.Store(*Waves(1, {{{1}, {1}}, {{2}, {1}}}));
  EXPECT_THAT(Slots(store, 7), ElementsAre(ElementsAre(1), ElementsAre(1), ElementsAre(2), ElementsAre(1),
                                           ElementsAre(0), ElementsAre(0), IsEmpty()));
}

TEST(TraceStore, withoutAnalogTracesHasNoRoomForTheLastChannels) {
  TraceStore store({.samples = 1, .channels = 2, .analog = 0, .digital = 1});
  store.Store(*Waves(1, {{{5}, {1}}, {{6}, {1}}}));
  EXPECT_THAT(Slots(store, 4), ElementsAre(ElementsAre(5), ElementsAre(1), IsEmpty(), IsEmpty()));
  EXPECT_THAT(store.DigitalWords(0), ElementsAre(1));
  EXPECT_THAT(store.DigitalWords(1), ElementsAre(0));
}

TEST(TraceStore, passesOverWavesAndSamplesThatItHasNoRoomFor) {
  TraceStore store({.samples = 2, .channels = 1, .analog = 1, .digital = 1});
  store.Store(*Waves(4, {{{1, 2, 3, 4}, {1, 1, 1, 1}}, {{5, 6, 7, 8}, {0, 0, 0, 0}}}));
  EXPECT_THAT(Slots(store, 3), ElementsAre(ElementsAre(1, 2), ElementsAre(1, 1), IsEmpty()));
}

TEST(TraceStore, keepsWhatAPayloadDoesNotReach) {
  TraceStore store({.samples = 3, .channels = 2, .analog = 1, .digital = 1});
  store.Store(*Waves(3, {{{1, 2, 3}, {1, 1, 1}}, {{4, 5, 6}, {1, 1, 1}}}));
  store.Store(*Waves(2, {{{7, 8, 9}, {0, 0, 0}}}));
  EXPECT_THAT(Slots(store, 4),
              ElementsAre(ElementsAre(7, 8, 3), ElementsAre(0, 0, 1), ElementsAre(4, 5, 6), ElementsAre(1, 1, 1)));
}

TEST(TraceStore, readsNoSamplesThatAWaveDoesNotHave) {
  TraceStore store({.samples = 3, .channels = 3, .analog = 1, .digital = 1});
  store.Store(*Waves(3, {{{1, 2, 3}, {1, 1, 1}}, {{1, 2, 3}, {1, 1, 1}}, {{1, 2, 3}, {1, 1, 1}}}));
  store.Store(*Waves(0x7FFFFFFF, {{{9}, {0, 0}}, {{}, {}}, {{8, 8, 8}, {}}}));
  EXPECT_THAT(Slots(store, 6), ElementsAre(ElementsAre(9, 2, 3), ElementsAre(0, 0, 1), ElementsAre(1, 2, 3),
                                           ElementsAre(1, 1, 1), ElementsAre(8, 8, 8), ElementsAre(1, 1, 1)));
}

TEST(TraceStore, takesNothingFromWavesWithoutSamplesOrWithANegativeNumberOfThem) {
  TraceStore store({.samples = 1, .channels = 1, .analog = 1, .digital = 1});
  store.Store(*Waves(1, {{{1}, {1}}}));
  for (const qint32 samples : {0, -1, std::numeric_limits<qint32>::min()}) {
    store.Store(*Waves(samples, {{{2}, {0}}}));
  }
  store.Store(*Waves(1, {}));
  EXPECT_THAT(Slots(store, 2), ElementsAre(ElementsAre(1), ElementsAre(1)));
}

TEST(TraceStore, passesOverAWaveThatIsNone) {
  TraceStore store({.samples = 1, .channels = 3, .analog = 1, .digital = 0});
  auto waves = Waves(1, {{{1}, {}}, {{2}, {}}, {{3}, {}}});
  waves->waves[0] = nullptr;
  waves->waves[1] = Waves(1, {});
  store.Store(*waves);
  EXPECT_THAT(Slots(store, 3), ElementsAre(ElementsAre(0), ElementsAre(0), ElementsAre(3)));
}

TEST(TraceStore, keepsItsTracesWhenTheWavesPassedATee_isKept) {
  TraceStore store({.samples = 1, .channels = 1, .analog = 1, .digital = 1});
  const auto original = Waves(1, {{{1}, {1}}});
  const auto copy = original->Clone();
  store.Store(static_cast<KorvaxPayload_Waves&>(*copy));
  EXPECT_THAT(Slots(store, 2), ElementsAre(ElementsAre(0), ElementsAre(0)));
}

TEST(TraceStore, keepsWhatAShorterWaveDoesNotReachOfOneThatItTookWhole) {
  TraceStore store({.samples = 3, .channels = 1, .analog = 1, .digital = 1});
  store.Store(*Waves(3, {{{1, 2, 3}, {1, 1, 1}}}));
  store.Store(*Waves(3, {{{7, 8}, {0}}}));
  EXPECT_THAT(Slots(store, 2), ElementsAre(ElementsAre(7, 8, 3), ElementsAre(0, 1, 1)));
  store.Store(*Waves(5, {{{4, 5, 6, 7, 8}, {1, 0, 1, 0, 1}}}));
  EXPECT_THAT(Slots(store, 2), ElementsAre(ElementsAre(4, 5, 6), ElementsAre(1, 0, 1)));
}

TEST(TraceStore, countsNegativeNumbersAs0) {
  for (const TraceShape& shape : {TraceShape{-1, 2, 1, 1}, TraceShape{2, -1, 1, 1}, TraceShape{2, 2, -1, -1},
                                  TraceShape{-2147483647, -2147483647, -2147483647, -2147483647}}) {
    TraceStore store(shape);
    EXPECT_FALSE(store.IsTooLarge());
    store.Store(*Waves(1, {{{1}, {1}}, {{2}, {2}}}));
    EXPECT_THAT(Slot(store, 0), IsEmpty());
  }
  const TraceStore oneTrace({.samples = 2, .channels = 1, .analog = 1, .digital = -7});
  EXPECT_THAT(Slots(oneTrace, 2), ElementsAre(ElementsAre(0, 0), IsEmpty()));
}

TEST(TraceStore, hasNoSlotsWhenItWouldBeTooLarge) {
  constexpr qint32 Huge = 2147483647;
  for (const TraceShape& shape :
       {TraceShape{Huge, Huge, Huge, Huge}, TraceShape{1 << 24, 2, 1, 0}, TraceShape{(1 << 24) + 1, 1, 1, 0},
        TraceShape{1 << 12, 1 << 12, 1, 1}, TraceShape{0, Huge, 1, 1}, TraceShape{1, 1, Huge, 0},
        TraceShape{1, 1, 0, Huge}, TraceShape{1, 0, Huge, Huge}, TraceShape{1, (1 << 20) + 1, 1, 0}}) {
    const TraceStore store(shape);
    EXPECT_TRUE(store.IsTooLarge());
    EXPECT_THAT(Slot(store, 0), IsEmpty());
  }
  TraceStore fed({.samples = 1 << 24, .channels = 2, .analog = 1, .digital = 1});
  fed.Store(*Waves(1, {{{1}, {1}}, {{2}, {1}}}));
  EXPECT_THAT(Slot(fed, 0), IsEmpty());
  EXPECT_FALSE(TraceStore({.samples = 1 << 13, .channels = 1 << 10, .analog = 1, .digital = 1}).IsTooLarge());
}

// Nothing is stored then, but loops and files go by each of the numbers.
TEST(TraceStore, takesANumberOf0As1ForItsLimit) {
  const struct {
    TraceShape shape;
    bool tooLarge;
  } cases[] = {{{0, 0, 0, 0}, false},
               {{1 << 24, 0, 0, 0}, false},
               {{(1 << 24) + 1, 0, 0, 0}, true},
               {{(1 << 24) + 1, -1, -1, -1}, true},
               {{2147483647, 0, 1, 0}, true},
               {{0, 1 << 20, 16, 0}, false},
               {{0, 1 << 20, 16, 1}, true},
               {{0, 1 << 20, 1 << 20, 1 << 20}, true},
               {{16, 1 << 20, 0, 0}, false},
               {{17, 1 << 20, 0, 0}, true},
               {{8, 0, 1 << 20, 1 << 20}, false},
               {{9, 0, 1 << 20, 1 << 20}, true}};
  for (const auto& [shape, tooLarge] : cases) {
    const TraceStore store(shape);
    EXPECT_EQ(store.IsTooLarge(), tooLarge)
        << shape.samples << " " << shape.channels << " " << shape.analog << " " << shape.digital;
    EXPECT_THAT(Slot(store, 0), IsEmpty());
  }
}

}  // namespace
