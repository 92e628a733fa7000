#include "client/Table.h"

#include <gmock/gmock.h>

namespace korvax::client {
namespace {

using testing::ElementsAre;

TEST(Table, columnsAreAsWideAsTheirWidestCell) {
  Table table({"name", "n"}, 1);
  table.Add({"a", "12345"});
  table.Add({"longer", "1"});
  EXPECT_THAT(table.Lines(), ElementsAre("name        n", "a       12345", "longer      1"));
}

TEST(Table, aRowMayBeShortAndHasNoBlanksAtItsEnd) {
  Table table({"left", "also left", "right"}, 2);
  table.Add({"a"});
  table.Add({"", "", ""});
  EXPECT_THAT(table.Lines(), ElementsAre("left  also left  right", "a", ""));
}

TEST(Table, makesCellsAndHeadingsHarmless) {
  Table table({QStringLiteral("a\x1b"), "b"}, 2);
  table.Add({QStringLiteral("x\ny"), QStringLiteral("\tz")});
  EXPECT_THAT(table.Lines(), ElementsAre("a    b", "x y   z"));
}

}  // namespace
}  // namespace korvax::client
