#include "framework/Account.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <thread>

namespace {

using korvax::Account;
using korvax::Fate;
using korvax::Fates;

Fates FatesOf(std::initializer_list<std::pair<Fate, quint64>> records) {
  Fates fates;
  for (const auto& [fate, count] : records) {
    fates[fate] += count;
  }
  return fates;
}

TEST(AnAccount, beginsEmpty) {
  const Account account({});
  const Account::Statement statement = account.Get();
  EXPECT_EQ(statement.received, 0U);
  EXPECT_EQ(statement.waiting, 0U);
  EXPECT_EQ(statement.made, 0U);
  EXPECT_EQ(statement.fates.Sum(), 0U);
}

TEST(AnAccount, addsUpWhatIsReceivedAndWhatBecameOfIt) {
  Account account({Fate::Counted, Fate::Cut});
  account.Book(5, FatesOf({{Fate::Counted, 3}, {Fate::Cut, 2}}));
  account.Book(7, FatesOf({{Fate::Counted, 7}}));
  account.Book(0, {});
  const Account::Statement statement = account.Get();
  EXPECT_EQ(statement.received, 12U);
  EXPECT_EQ(statement.fates[Fate::Counted], 10U);
  EXPECT_EQ(statement.fates[Fate::Cut], 2U);
  EXPECT_EQ(statement.fates[Fate::Other], 0U);
  EXPECT_EQ(statement.fates.Sum(), 12U);
}

TEST(AnAccount, holdsHowManyWaitNowNotTheirSum) {
  Account account({Fate::Grouped});
  account.Book(10, {}, 10);
  account.Book(5, {}, 15);
  EXPECT_EQ(account.Get().waiting, 15U);
  account.Book(0, FatesOf({{Fate::Grouped, 12}}), 3);
  EXPECT_EQ(account.Get().waiting, 3U);
  EXPECT_EQ(account.Get().received, 15U);
  account.Book(0, FatesOf({{Fate::Grouped, 3}}));
  EXPECT_EQ(account.Get().waiting, 0U) << "none, when nothing is said of them";
}

TEST(AnAccount, countsWhatIsMadeApartFromWhatIsReceived) {
  Account account({Fate::Decoded});
  account.BookMade(4);
  account.BookMade(0);
  account.BookMade(6);
  EXPECT_EQ(account.Get().made, 10U);
  EXPECT_EQ(account.Get().received, 0U);
  account.Book(1, FatesOf({{Fate::Decoded, 1}}));
  EXPECT_EQ(account.Get().made, 10U);
  EXPECT_EQ(account.Get().received, 1U);
}

TEST(AnAccount, knowsTheFatesThatItWasMadeForInTheirOrder) {
  const Account account({Fate::Other, Fate::Counted});
  EXPECT_EQ(account.PossibleFates(), (std::vector{Fate::Other, Fate::Counted}));
}

TEST(AnAccount, isReadAsAWholeWhileItIsBooked) {
  Account account({Fate::Grouped, Fate::Other});
  std::thread worker([&account] {
    quint64 waiting = 0;
    for (quint64 i = 0; i < 20'000; ++i) {
      const quint64 grouped = i % 3 == 0 ? waiting : 0;
      waiting = waiting - grouped + 2;
      account.Book(3, FatesOf({{Fate::Grouped, grouped}, {Fate::Other, 1}}), waiting);
    }
  });
  for (quint64 received = 0; received < 60'000;) {
    const Account::Statement statement = account.Get();
    EXPECT_EQ(statement.received, statement.waiting + statement.fates.Sum());
    EXPECT_GE(statement.received, received);
    received = statement.received;
  }
  worker.join();
}

TEST(Fates, areAddedAndSubtractedOneByOne) {
  Fates fates = FatesOf({{Fate::Written, 5}, {Fate::LeftOut, 1}});
  fates += FatesOf({{Fate::Written, 2}, {Fate::Other, 4}});
  EXPECT_EQ(fates[Fate::Written], 7U);
  EXPECT_EQ(fates[Fate::LeftOut], 1U);
  EXPECT_EQ(fates[Fate::Other], 4U);
  fates -= FatesOf({{Fate::Written, 6}, {Fate::Other, 4}});
  EXPECT_EQ(fates[Fate::Written], 1U);
  EXPECT_EQ(fates[Fate::Other], 0U);
  EXPECT_EQ(fates.Sum(), 2U);
}

TEST(Fates, countModulo2ToThe64_soThatWhatIsTakenBackComesOutRight) {
  Fates fates;
  fates -= FatesOf({{Fate::Written, 3}});
  EXPECT_EQ(fates.Sum(), ~quint64{2});
  fates += FatesOf({{Fate::Overwritten, 3}});
  EXPECT_EQ(fates.Sum(), 0U);
  fates += FatesOf({{Fate::Written, 5}});
  EXPECT_EQ(fates[Fate::Written], 2U);
}

TEST(AFate, hasTheNameThatClientsRead) {
  const std::pair<Fate, const char*> names[] = {
      {Fate::Decoded, "decoded"},
      {Fate::PassedOver, "passed_over"},
      {Fate::Refused, "refused"},
      {Fate::Copied, "copied"},
      {Fate::Grouped, "grouped"},
      {Fate::DroppedFull, "dropped"},
      {Fate::Counted, "counted"},
      {Fate::Cut, "cut"},
      {Fate::OutOfRange, "out_of_range"},
      {Fate::RepeatedChannel, "repeated_channel"},
      {Fate::WhileStopped, "while_stopped"},
      {Fate::WhilePaused, "while_paused"},
      {Fate::Written, "written"},
      {Fate::Overwritten, "overwritten"},
      {Fate::NotWritten, "not_written"},
      {Fate::LeftOut, "left_out"},
      {Fate::Other, "other"},
  };
  std::set<Fate> named;
  for (const auto& [fate, name] : names) {
    EXPECT_STREQ(korvax::NameOf(fate), name);
    named.insert(fate);
  }
  EXPECT_EQ(named.size(), korvax::FateCount) << "a fate isn't in this table";
}

}  // namespace
