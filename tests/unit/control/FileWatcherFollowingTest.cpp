#include "tests/unit/control/FileWatcherFixture.h"

namespace {

namespace fs = std::filesystem;

// A watcher that follows a real file, whatever becomes of it. Values count up: what is applied is a change's own.
class AFollowedFile : public FileWatcherFixture {
protected:
  AFollowedFile() {
    Rewrite(Hardware(Entry("left", "start")));
    followed = watcher.addPath(Path());
  }

  std::string Change(const std::string& value) const { return Hardware(Entry("left", value)); }

  FileWatcher watcher{boards};
  bool followed = false;
};

TEST_F(AFollowedFile, IsNotAppliedBeforeItChanges) {
  EXPECT_TRUE(followed);
  test::DeliverEvents();
  EXPECT_EQ(vendor.Calls(), QStringList());
}

TEST_F(AFollowedFile, IsAppliedWhenItIsRewrittenInPlace) {
  Rewrite(Change("1"));
  EXPECT_TRUE(IsApplied("left", "1"));
  Rewrite(Change("2"));
  EXPECT_TRUE(IsApplied("left", "2"));
  EXPECT_EQ(vendor.CallsOf("set /right"), QStringList());
}

TEST_F(AFollowedFile, IsAppliedOnceWhenAnotherTakesItsPlace) {
  Replace(Change("1"));
  ASSERT_TRUE(IsApplied("left", "1"));
  EXPECT_EQ(ReconfigLines("left"), 1);
  Replace(Change("2"));
  ASSERT_TRUE(IsApplied("left", "2"));
  EXPECT_EQ(TimesApplied("left", "1"), 1) << "nothing of the first change came late";
  Rewrite(Change("3"));
  ASSERT_TRUE(IsApplied("left", "3"));
  EXPECT_EQ(TimesApplied("left", "1"), 1);
  EXPECT_EQ(TimesApplied("left", "2"), 1);
}

TEST_F(AFollowedFile, IsAppliedOnceForEachOfManyReplacements) {
  for (int i = 0; i < 50; ++i) {
    Replace(Change(std::to_string(i)));
    ASSERT_TRUE(IsApplied("left", QString::number(i)));
  }
  for (int i = 0; i < 49; ++i) {
    EXPECT_EQ(TimesApplied("left", QString::number(i)), 1) << i;
  }
}

TEST_F(AFollowedFile, EndsAtTheLastOfManyReplacementsInARow) {
  for (int i = 0; i < 200; ++i) {
    Replace(Change(std::to_string(i)));
  }
  ASSERT_TRUE(IsApplied("left", "199"));
  Replace(Change("after"));
  EXPECT_TRUE(IsApplied("left", "after"));
}

TEST_F(AFollowedFile, EndsAtTheLastOfManyChangesOfAllKinds) {
  for (int i = 0; i < 100; ++i) {
    switch (i % 4) {
      case 0:
        Rewrite(Change(std::to_string(i)));
        break;
      case 1:
        Replace(Change(std::to_string(i)));
        break;
      case 2:
        fs::remove(FilePath());
        break;
      default:
        Rewrite("{\"Hardware\":[");
        test::DeliverEvents();
    }
  }
  Rewrite(Change("last"));
  ASSERT_TRUE(IsApplied("left", "last"));
  Replace(Change("after"));
  EXPECT_TRUE(IsApplied("left", "after"));
}

TEST_F(AFollowedFile, IsAppliedWhenItIsCreatedAgainAfterItWasDeleted) {
  for (const char* value : {"1", "2", "3"}) {
    fs::remove(FilePath());
    test::DeliverEvents();
    Rewrite(Change(value));
    ASSERT_TRUE(IsApplied("left", value));
  }
  Rewrite(Change("4"));
  EXPECT_TRUE(IsApplied("left", "4"));
  Replace(Change("5"));
  EXPECT_TRUE(IsApplied("left", "5"));
}

TEST_F(AFollowedFile, IsAppliedWhenItIsDeletedAndCreatedBeforeAnybodyLooks) {
  fs::remove(FilePath());
  Rewrite(Change("1"));
  ASSERT_TRUE(IsApplied("left", "1"));
  Rewrite(Change("2"));
  EXPECT_TRUE(IsApplied("left", "2"));
}

TEST_F(AFollowedFile, IsAppliedWhenItIsMovedAwayAndBack) {
  Rewrite(Change("1"));
  ASSERT_TRUE(IsApplied("left", "1"));
  fs::rename(FilePath(), FilePath() + ".away");
  folder.Write("c.json.away", Change("2"));
  test::DeliverEvents();
  fs::rename(FilePath() + ".away", FilePath());
  ASSERT_TRUE(IsApplied("left", "2"));
  Rewrite(Change("3"));
  EXPECT_TRUE(IsApplied("left", "3"));
}

TEST_F(AFollowedFile, IsFollowedOnWhenItWasUnreadableForAWhile) {
  fs::permissions(FilePath(), fs::perms::none);
  test::DeliverEvents();
  fs::permissions(FilePath(), fs::perms::owner_read | fs::perms::owner_write);
  ASSERT_TRUE(IsApplied("left", "start")) << "each change that the system reports applies the file";
  Rewrite(Change("1"));
  EXPECT_TRUE(IsApplied("left", "1"));
}

TEST_F(AFollowedFile, IsFollowedOnWhenAFolderStoodInItsPlace) {
  fs::remove(FilePath());
  fs::create_directory(FilePath());
  test::DeliverEvents();
  fs::remove(FilePath());
  ASSERT_TRUE(test::WaitFor([this] {
    Rewrite(Change("1"));
    return TimesApplied("left", "1") > 0;
  }));
  Replace(Change("2"));
  EXPECT_TRUE(IsApplied("left", "2"));
}

TEST_F(AFollowedFile, IsFollowedOnAfterItWasNoJson) {
  Rewrite("{\"Hardware\":[" + Entry("left", "1"));
  test::DeliverEvents();
  Replace("no JSON");
  test::DeliverEvents();
  Rewrite(Change("2"));
  EXPECT_TRUE(IsApplied("left", "2"));
  EXPECT_EQ(TimesApplied("left", "1"), 0);
}

TEST_F(AFollowedFile, MayBeWrittenPieceByPiece) {
  const std::string whole = Change("1");
  for (std::size_t length = 0; length <= whole.size(); length += 10) {
    Rewrite(whole.substr(0, length));
    test::DeliverEvents();
  }
  EXPECT_EQ(TimesApplied("left", "1"), 0);
  Rewrite(whole);
  ASSERT_TRUE(IsApplied("left", "1"));
  EXPECT_EQ(log.Lines().filter("RECONFIG").size(), TimesApplied("left", "1"));
}

TEST_F(AFollowedFile, IsNotDisturbedByOthersInItsFolder) {
  folder.Write("other.json", Change("1"));
  fs::remove(folder.Write("c.json.swp", Change("2")));
  Rewrite(Change("3"));
  ASSERT_TRUE(IsApplied("left", "3"));
  EXPECT_EQ(TimesApplied("left", "1") + TimesApplied("left", "2"), 0);
}

TEST_F(AFollowedFile, IsFollowedBehindASymbolicLink) {
  fs::create_directory(folder.Path() + "/real");
  const auto replaceTarget = [this](const char* value) {
    fs::rename(folder.Write("real/new", Change(value)), folder.Path() + "/real/linked.json");
  };
  replaceTarget("0");
  fs::create_symlink("real/linked.json", folder.Path() + "/link.json");
  ASSERT_TRUE(watcher.addPath(QString::fromStdString(folder.Path() + "/link.json")));
  folder.Write("real/linked.json", Change("1"));
  ASSERT_TRUE(IsApplied("left", "1"));
  replaceTarget("2");
  ASSERT_TRUE(IsApplied("left", "2"));
  fs::remove(folder.Path() + "/real/linked.json");
  test::DeliverEvents();
  replaceTarget("3");
  EXPECT_TRUE(IsApplied("left", "3"));
}

TEST_F(AFollowedFile, IsLeftAloneByAWatcherThatIsGone) {
  {
    FileWatcher other(boards);
    EXPECT_TRUE(other.addPath(Path()));
  }
  Replace(Change("1"));
  ASSERT_TRUE(IsApplied("left", "1"));
  EXPECT_EQ(TimesApplied("left", "1"), 1);
}

class AMissingFile : public FileWatcherFixture {
protected:
  FileWatcher watcher{boards};
};

TEST_F(AMissingFile, IsReportedAndFollowedOnceItIsThere) {
  EXPECT_FALSE(watcher.addPath(Path()));
  EXPECT_EQ(log.Lines(), QStringList());
  Replace(Hardware(Entry("left", "1")));
  ASSERT_TRUE(IsApplied("left", "1"));
  Rewrite(Hardware(Entry("left", "2")));
  EXPECT_TRUE(IsApplied("left", "2"));
}

TEST_F(AMissingFile, BesideOneThatIsThereDisturbsItNot) {
  EXPECT_FALSE(watcher.addPath(Path()));
  const QString there = QString::fromStdString(folder.Write("there.json", "{}"));
  EXPECT_TRUE(watcher.addPath(there));
  folder.Write("there.json", Hardware(Entry("right", "1")));
  ASSERT_TRUE(IsApplied("right", "1"));
  Rewrite(Hardware(Entry("left", "2")));
  EXPECT_TRUE(IsApplied("left", "2"));
}

TEST_F(AMissingFile, InAFolderThatIsMissingTooIsReported) {
  EXPECT_FALSE(watcher.addPath(Path() + "/none/c.json"));
  EXPECT_EQ(vendor.Calls(), QStringList());
}

}  // namespace
