#include "sinks/Image.h"
#include "tests/unit/sinks/SinkFixture.h"

#include <thread>

namespace {

// The sum of all pixels.
qint64 Total(const QString& answer) {
  qint64 total = 0;
  const QJsonArray rows = test::Object(answer.toUtf8())["data"].toArray();
  for (const QJsonValue& row : rows) {
    const QJsonArray counts = row.toArray();
    for (const QJsonValue& count : counts) {
      total += count.toInt();
    }
  }
  return total;
}

DataMessage SomeEvents(quint32 seed) {
  DataMessage message = test::MessageOf();
  for (quint32 i = 0; i < 20; ++i) {
    message.batch->records.push_back(test::Energy((seed + i * i) % 12, 1));
  }
  return message;
}

TEST(ReadingAnImage, losesNoCountBetweenAReadingAndItsClearing) {
  test::Sink<Image> sink({{"x_positions", "[0,0,0,0]"}, {"y_positions", "[0,0,0]"}});
  sink.Run();
  constexpr int Messages = 4'000;
  std::atomic<bool> done = false;
  std::thread source([&] {
    for (quint32 i = 0; i < Messages; ++i) {
      while (!sink.feed.Push(SomeEvents(i))) {
        std::this_thread::yield();
      }
    }
    done = true;
  });
  qint64 read = 0;
  do {
    sink.block.NewDataInTheInputPin(0);
    read += Total(sink.Data("immediate"));
  } while (!done);
  source.join();
  ASSERT_TRUE(sink.Consume());
  read += Total(sink.Data("immediate"));
  EXPECT_EQ(read, qint64{Messages} * 20);
  EXPECT_EQ(Total(sink.Data("cumulative")), qint64{Messages} * 20);
}

}  // namespace
