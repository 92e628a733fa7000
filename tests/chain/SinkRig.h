#pragma once

#include "framework/KorvaxBlock.h"
#include "framework/QueryHandler.h"
#include "tests/chain/SorterRig.h"
#include "tests/support/Records.h"
#include "tests/support/WaitFor.h"

#include <QJsonArray>
#include <QJsonObject>

#include <atomic>
#include <memory>

namespace test {

inline QJsonObject Parameter(const char* name, const QJsonValue& value) {
  return {{"param_name", name}, {"param_value", value}};
}

inline QJsonArray Numbers(const std::vector<int>& numbers) {
  QJsonArray array;
  for (const int number : numbers) {
    array << number;
  }
  return array;
}

/// A real sink behind a pin of the test's.
template <typename Sink>
class SinkRig {
public:
  explicit SinkRig(const QJsonArray& parameters)
      : sink_(nullptr, {}, QJsonObject{{"name", "sink"}, {"data_type", "energy"}, {"parameters", parameters}}) {
    sink_.Inputs().front()->Connect(&feed_);
  }

  /// The queue must not be full.
  void Push(const RecordedEvents& group) { feed_.Push(MessageWith(group)); }
  /// Waits until the sink is done with everything that was pushed.
  [[nodiscard]] bool Settle() {
    auto done = std::make_shared<std::atomic<bool>>(false);
    feed_.Push(MessageOf(Watched([done] { done->store(true); })));
    return WaitFor([&] {
      sink_.NewDataInTheInputPin(0);
      return done->load();
    });
  }
  /// The answer to one element of "args".
  QString Ask(const QString& args) {
    QString query = QStringLiteral(R"({"args":[%1]})").arg(args);
    QString answer;
    sink_.InterpretMessage(&query, &answer);
    return answer;
  }
  QString AskForData(const char* source) {
    return Ask(QStringLiteral(R"({"cmd":"get_data","source":"%1"})").arg(QLatin1String(source)));
  }
  void Run() { Ask(QStringLiteral(R"({"cmd":"run_control","status":"freerun"})")); }

private:
  PinOutput feed_{QStringLiteral("energy")};
  Sink sink_;
};

}  // namespace test
