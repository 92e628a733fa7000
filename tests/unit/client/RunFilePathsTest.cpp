#include "client/RunFilePaths.h"

#include "tests/support/Printing.h"

#include <gmock/gmock.h>

namespace korvax::client {
namespace {

using testing::ElementsAre;

TEST(NaturalOrder, readsDigitsAsNumbers) {
  const std::vector<QString> sorted{"",    "a",   "a1",      "a1b",      "a01c",
                                    "a2",  "a10", "a10b1",   "a010b2",   "b0",
                                    "b00", "b1",  "x_9.csv", "x_10.csv", "x_18446744073709551616"};
  for (std::size_t i = 0; i < sorted.size(); ++i) {
    for (std::size_t j = 0; j < sorted.size(); ++j) {
      EXPECT_EQ(NaturallyBefore(sorted[i], sorted[j]), i < j)
          << qPrintable(sorted[i]) << " " << qPrintable(sorted[j]);
    }
  }
}

TEST(PathsOfRunFiles, areThePathItselfWhereItIsNoFolder) {
  EXPECT_THAT(RunFilePaths("absent.csv"), ElementsAre(QString("absent.csv")));
  EXPECT_THAT(RunFilePaths(""), ElementsAre(QString()));
  EXPECT_THAT(RunFilePaths(QStringLiteral("/dev/null")), ElementsAre(QString("/dev/null")));
}

}  // namespace
}  // namespace korvax::client
