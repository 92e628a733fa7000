#pragma once

#include "framework/KorvaxBlock.h"
#include "tests/support/Json.h"
#include "tests/support/Printing.h"
#include "tests/support/Records.h"
#include "tests/support/WaitFor.h"

#include <gtest/gtest.h>

#include <atomic>

namespace test {

/// Names and values of "parameters", the values as JSON.
using Parameters = std::vector<std::pair<const char*, QByteArray>>;

inline QJsonObject BlockWith(const Parameters& parameters) {
  QByteArray list;
  for (const auto& [name, value] : parameters) {
    list += (list.isEmpty() ? R"({"param_name":")" : R"(,{"param_name":")") + QByteArray(name) +
            R"(","param_value":)" + value + "}";
  }
  return Object(R"({"name":"sink","data_type":"energy","parameters":[)" + list + "]}");
}

inline ChainContext SinkContext() {
  ChainContext context;
  context.fullPath = "processing/0/filter_chain/main/chain/sink";
  return context;
}

/// A JSON array of `count` zeros.
inline QByteArray Zeros(int count) {
  return "[0" + QByteArray(",0").repeated(count - 1) + "]";
}

/// A message whose events stand in its batch by value, as sources and the time sorting make them.
inline DataMessage MessageOfEvents(std::initializer_list<KorvaxPayload_Energy> events) {
  DataMessage message = MessageOf();
  message.batch->events = events;
  return message;
}
inline KorvaxPayload_Energy Event(quint32 channel, quint32 energyRaw, quint64 timestamp = 0) {
  KorvaxPayload_Energy event;
  event.channel = channel;
  event.energyRaw = energyRaw;
  event.timestamp = timestamp;
  return event;
}

/// A real analysis sink with its worker, fed by a pin of the test.
template <typename Block>
class Sink {
public:
  explicit Sink(const Parameters& parameters) : block(nullptr, SinkContext(), BlockWith(parameters)) {
    block.Inputs().front()->Connect(&feed);
  }

  QString Ask(QString query) {
    QString answer;
    block.InterpretMessage(&query, &answer);
    return answer;
  }
  QString Tell(const QString& command) { return Ask(R"({"args":[{"cmd":")" + command + R"("}]})"); }
  QString Data(const QString& source) {
    return Ask(R"({"args":[{"cmd":"get_data","source":")" + source + R"("}]})");
  }
  QString Channel(int channel) {
    return Ask(QStringLiteral(R"({"args":[{"cmd":"get_data","channels":[%1]}]})").arg(channel));
  }
  void Run() { Ask(R"({"args":[{"cmd":"run_control","status":"freerun"}]})"); }
  /// Parameters reach the live block.
  bool Apply(const Parameters& parameters) { return block.ParseParameters(BlockWith(parameters)); }

  /// Feeds one message and waits until the worker has counted it and everything before it.
  template <typename... Records>
  [[nodiscard]] bool Consume(Records... records) {
    return Consume(MessageOf(std::move(records)...));
  }
  [[nodiscard]] bool Consume(DataMessage message) {
    std::atomic<bool> destroyed = false;
    message.batch->records.push_back(Watched([&destroyed] { destroyed = true; }));
    if (!feed.Push(std::move(message))) {
      return false;
    }
    return WaitFor([&] {
      block.NewDataInTheInputPin(0);  // a wake-up may be lost
      return destroyed.load();
    });
  }

  PinOutput feed{"energy"};
  Block block;
};

}  // namespace test
