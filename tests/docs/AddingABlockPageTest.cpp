#include "examples/multiplicity/Multiplicity.h"
#include "tests/docs/MarkdownPage.h"
#include "tests/support/Json.h"
#include "tests/support/Records.h"
#include "tests/support/WaitFor.h"

#include <QFile>

#include <gtest/gtest.h>

namespace {

QString FileText(const QString& path) {
  QFile file(QStringLiteral(KORVAX_PROJECT_DIR "/") + path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
  return QString::fromUtf8(file.readAll());
}

QString OnlyBlock(const QString& kind) {
  const auto blocks = test::MarkdownPage(QStringLiteral("docs/adding-a-block.md")).BlocksOf(kind);
  EXPECT_EQ(blocks.size(), 1U) << qPrintable(kind);
  return blocks.empty() ? QString() : blocks.front();
}

QString Ask(Multiplicity& block, QString query) {
  QString answer;
  block.InterpretMessage(&query, &answer);
  return answer;
}

template <typename... Records>
void Push(PinOutput& feed, Records... records) {
  ASSERT_TRUE(feed.Push(test::MessageOf(std::move(records)...)));
}

TEST(AddingABlockPage, ShowsTheFilesThatAreCompiled) {
  for (const char* name : {"Multiplicity.h", "Multiplicity.cpp"}) {
    EXPECT_EQ(OnlyBlock(QStringLiteral("cpp ") + name) + QLatin1Char('\n'),
              FileText(QStringLiteral("examples/multiplicity/") + name));
  }
}

TEST(AddingABlockPage, ShowsALineOfTheFactoryAsTheyAre) {
  QString line = OnlyBlock(QStringLiteral("cpp line"));
  line.replace(QLatin1String("multiplicity"), QLatin1String("spectrum"));
  line.replace(QLatin1String("Multiplicity"), QLatin1String("Histogram"));
  EXPECT_TRUE(FileText(QStringLiteral("server/BlockFactory.cpp")).contains(line)) << qPrintable(line);
}

TEST(AddingABlockPage, ItsBlockAnswersAsThePageShows) {
  PinOutput feed(QStringLiteral("energy"));  // outlives the block, whose worker reads it to the end
  Multiplicity block(nullptr, ChainContext(), test::Object(OnlyBlock(QStringLiteral("json block")).toUtf8()));
  EXPECT_TRUE(block.Fault().isEmpty());
  block.Inputs().front()->Connect(&feed);
  Ask(block, QStringLiteral(R"({"args": [{"cmd": "run_control", "status": "freerun"}]})"));

  const auto event = [] { return std::make_unique<KorvaxPayload_Energy>(); };
  Push(feed, event());
  Push(feed, event());
  Push(feed, event(), event());
  Push(feed, event(), event(), event(), event(), event(), event(), event(), event(), event());
  const std::string expected = OnlyBlock(QStringLiteral("answer")).toStdString();
  std::string answer;
  EXPECT_TRUE(test::WaitFor([&] {
    block.NewDataInTheInputPin(0);  // again and again: a wake-up may be lost
    answer = Ask(block, OnlyBlock(QStringLiteral("query"))).toStdString();
    return answer == expected;
  })) << answer;
}

}  // namespace
