#pragma once

#include "acquisition/Source.h"
#include "sinks/Histogram.h"
#include "tests/chain/ScriptedDigitizer.h"
#include "tests/support/Json.h"
#include "tests/support/Printing.h"
#include "tests/support/WaitFor.h"

#include <gtest/gtest.h>

#include <numeric>

/// What chains of real blocks are built of: a board, sources on it, spectra.
class ChainFixture : public testing::Test {
protected:
  ~ChainFixture() override {
    EXPECT_EQ(digitizer.WrongReturns(), 0);
    EXPECT_TRUE(digitizer.IsExhausted()) << "a block was not read or not handed back";
  }

  /// Reads as fast as the board hands out.
  std::unique_ptr<Source> MakeSource(const QByteArray& dataType = "energy",
                                     const QByteArray& endpoint = "energy") const {
    return std::make_unique<Source>(
        nullptr, Context("source"),
        test::Object(R"({"name":"source","data_type":")" + dataType + R"(","sources":[{"source":"det",
                        "pin":"endpoints\\)" +
                     endpoint + R"("}],
                        "parameters":[{"param_name":"download_interval","param_value":0}]})"));
  }

  std::unique_ptr<Histogram> MakeSpectrum(int bins, int channels) const {
    return std::make_unique<Histogram>(
        nullptr, Context("spectrum"),
        QJsonObject{{"name", "spectrum"},
                    {"data_type", "energy"},
                    {"parameters", QJsonArray{Parameter("bin_number", bins), Parameter("ch_number", channels)}}});
  }

  static QJsonObject Parameter(const char* name, double value) {
    return {{"param_name", name}, {"param_value", value}};
  }

  static void Link(const KorvaxBlock& upstream, const KorvaxBlock& downstream) {
    downstream.Inputs().at(0)->Connect(upstream.Outputs().at(0).get());
  }

  static QString Ask(Histogram& spectrum, QString query) {
    QString answer;
    spectrum.InterpretMessage(&query, &answer);
    return answer;
  }
  static void Run(Histogram& spectrum) {
    EXPECT_EQ(Ask(spectrum, R"({"args":[{"cmd":"run_control","status":"freerun"}]})"), "[{\"response\": true}]");
  }
  static std::vector<int> Counts(Histogram& spectrum, int channel) {
    const QString answer =
        Ask(spectrum, QStringLiteral(R"({"args":[{"cmd":"get_data","channels":[%1]}]})").arg(channel));
    std::vector<int> counts;
    const QJsonArray bins = test::Array(answer.toUtf8())[0].toObject()["data"].toArray();
    for (const QJsonValue& bin : bins) {
      counts.push_back(bin.toInt());
    }
    return counts;
  }
  static int Total(Histogram& spectrum, int channels) {
    int total = 0;
    for (int channel = 0; channel < channels; ++channel) {
      const std::vector<int> counts = Counts(spectrum, channel);
      total = std::accumulate(counts.begin(), counts.end(), total);
    }
    return total;
  }

  /// Wakes the worker again and again, because a wake-up may be lost.
  [[nodiscard]] static bool WaitForTotal(Histogram& spectrum, int channels, int total) {
    return test::WaitFor([&] {
      spectrum.NewDataInTheInputPin(0);
      return Total(spectrum, channels) >= total;
    });
  }

  /// Waits without delivering signals, so that no sink is woken.
  [[nodiscard]] bool WaitUntilExhaustedWithoutSignals() const {
    constexpr int LimitMs = 60'000;
    for (int waited = 0; waited < LimitMs && !digitizer.IsExhausted(); ++waited) {
      QThread::msleep(1);
    }
    return digitizer.IsExhausted();
  }

  ChainContext Context(const char* name) const {
    ChainContext context;
    context.boards = &digitizer.boards;
    context.fullPath = QStringLiteral("processing/0/filter_chain/main/chain/") + name;
    return context;
  }

  test::ScriptedDigitizer digitizer;
};
