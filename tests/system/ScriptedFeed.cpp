#include "tests/system/ScriptedFeed.h"

#include <QFile>

#include <gtest/gtest.h>

namespace test {

ScriptedFeed::ScriptedFeed(const QString& folder) : folder_(folder) {}

void ScriptedFeed::Feed(const QByteArray& line) const {
  QFile feed(folder_ + QStringLiteral("/feed"));
  ASSERT_TRUE(feed.open(QIODevice::WriteOnly | QIODevice::Append));
  feed.write(line + '\n');
}

void ScriptedFeed::FeedRamp(int channel, int first, int count) const {
  Feed("ramp " + QByteArray::number(channel) + ' ' + QByteArray::number(first) + ' ' + QByteArray::number(count));
}

QStringList ScriptedFeed::Calls() const {
  QFile file(folder_ + QStringLiteral("/calls"));
  if (!file.open(QIODevice::ReadOnly)) {
    return {};
  }
  QStringList calls = QString::fromLatin1(file.readAll()).split(QLatin1Char('\n'));
  calls.removeLast();
  return calls;
}

QStringList ScriptedFeed::CallsOf(const QString& name) const {
  QStringList matching;
  for (const QString& call : Calls()) {
    if (call.startsWith(name)) {
      matching << call;
    }
  }
  return matching;
}

}  // namespace test
