#pragma once

#include "boards/DigitizerBoard.h"
#include "boards/HV.h"
#include "tests/support/FakeVendor.h"
#include "tests/support/Json.h"
#include "tests/support/LogCapture.h"
#include "tests/support/Printing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

/// A board "det", whose every value is its own path in angle brackets, and HV blocks on it.
class HvFixture : public testing::Test {
protected:
  HvFixture() { AddBoard("det"); }

  DigitizerBoard& AddBoard(const char* name) {
    boards_.push_back(std::make_unique<DigitizerBoard>(PathsAsValues()));
    boards_.back()->name = name;
    return *boards_.back();
  }

  /// From the keys of a block's object, such as R"("name": "hv")".
  HV& Make(const QByteArray& keys) {
    block_ = std::make_unique<HV>(nullptr, ChainContext{&boards_, nullptr, "processing/0/x", "c.json"},
                                  test::Object("{" + keys + "}"));
    return *block_;
  }

  /// A block "hv" on "det".
  HV& MakeBound(const QByteArray& channels = "2") {
    return Make(R"("name": "hv", "sources": [{"source": "det"}],
                   "parameters": [{"param_name": "n_channels", "param_value": )" +
                channels + "}]");
  }

  /// One row for each parameter: name, path, value type, and "read_only" or anything else.
  void SetParameters(const std::vector<std::array<const char*, 4>>& rows) {
    QJsonArray elements;
    for (const auto& [name, path, type, access] : rows) {
      elements << QJsonObject{{"name", name}, {"path", path}, {"value_type", type}, {"access", access}};
    }
    boards_.front()->ApplyConfigs({{"configs", QJsonArray{QJsonObject{{"elements", elements}}}}});
  }

  std::string AnswerTo(const QString& message) {
    QString query = message;
    QString answer;
    block_->InterpretMessage(&query, &answer);
    return answer.toStdString();
  }
  std::string All() { return AnswerTo(R"({"args": [{"cmd": "get_all_ch_values", "param": "all"}]})"); }
  std::string ReadOnly() { return AnswerTo(R"({"args": [{"cmd": "get_all_ch_values", "param": "read_only"}]})"); }

  test::FakeVendor vendor_;
  test::LogCapture log_;
  BoardList boards_;
  std::unique_ptr<HV> block_;
  bool plainVendor_ = false;  ///< values are the fake library's, and its calls are recorded

private:
  static std::int32_t GetPath(std::uint64_t /*handle*/, const char* path, char* value) {
    const std::string text = std::string("<") + path + ">";
    text.copy(value, 63);
    value[std::min<std::size_t>(text.size(), 63)] = '\0';
    return 0;
  }

  vendor::FunctionLookup PathsAsValues() {
    return [this, fake = vendor_.Lookup()](const char* name) {
      return std::string(name) == "CAENDig2_GetValueByQuery" && !plainVendor_
                 ? reinterpret_cast<QFunctionPointer>(GetPath)
                 : fake(name);
    };
  }
};
