#include "tests/system/SystemTest.h"

#include <QRegularExpression>

namespace test {

namespace {

// Replaces every part of a valid configuration, one at a time, by a value of every other type.
class WrongTypesTest : public SystemTest, public testing::WithParamInterface<QString> {
protected:
  void ExpectOutcome(const QJsonValue& wrong);
};

std::vector<QJsonValue> Samples() {
  return {QJsonValue(),
          QJsonValue(true),
          QJsonValue(-17),
          QJsonValue("text"),
          QJsonValue(QJsonArray{QJsonArray{1}}),
          QJsonValue(QJsonObject{{QStringLiteral("a"), 1}})};
}

struct Outcome {
  const char* path;  // a regular expression
  int status;        // of the process's end
  const char* line;  // the last one begins so
};

// What a part is needed for; without any other the server starts.
constexpr Outcome Failures[] = {
    {"storage(/file_path)?", 1, "Storage folder does not exist on this server. Create: "},
    {"Hardware", 1, "No HARDWARE devices is configuration file "},
    {"Hardware/0/board_plugin", 0, "Unable to locate a board plugin library for "},
    {"processing/0/filter_chain/0/chain/[01](/block_type)?", 1, "Processing group 0, chain \"main\", block "},
    {"processing/0/filter_chain/0/chain/0/name", 1, "Processing group 0, chain \"main\", block \"spectrum\", "},
    {"processing/0/filter_chain/0/chain/1/sources(/0(/source)?)?", 1,
     "Processing group 0, chain \"main\", block \"spectrum\", key \""},
};

const Outcome* FailureOf(const QString& path) {
  for (const Outcome& failure : Failures) {
    const QRegularExpression exactly(QLatin1Char('^') + QLatin1String(failure.path) + QLatin1Char('$'));
    if (exactly.match(path).hasMatch()) {
      return &failure;
    }
  }
  return nullptr;
}

void WrongTypesTest::ExpectOutcome(const QJsonValue& wrong) {
  configuration = With(ValidConfiguration(installation.StoragePath(), board.Connection()), GetParam(), wrong);
  Start();
  const Outcome* const failure = FailureOf(GetParam());
  if (failure != nullptr) {
    EXPECT_EQ(server.WaitForExit(), failure->status);
    EXPECT_TRUE(server.ErrorLines().last().startsWith(QLatin1String(failure->line)))
        << server.ErrorLines().last().toStdString();
    return;
  }
  EXPECT_TRUE(server.WaitUntilReady()) << server.ErrorLines().join(QLatin1Char('\n')).toStdString();
  EndServer();
}

TEST_P(WrongTypesTest, ReadAsMissing) {
  const QJsonValue::Type right = At(configuration, GetParam()).type();
  for (const QJsonValue& wrong : Samples()) {
    if (wrong.type() != right) {
      SCOPED_TRACE(testing::Message() << GetParam().toStdString() << " of type " << wrong.type());
      ExpectOutcome(wrong);
    }
  }
}

std::vector<QString> EveryPath() {
  const QStringList paths = PathsOf(ValidConfiguration({}, {}));
  return {paths.begin(), paths.end()};
}

std::string NameOf(const testing::TestParamInfo<QString>& info) {
  QString name = info.param;
  return name.replace(QLatin1Char('/'), QLatin1Char('_')).toStdString();
}

INSTANTIATE_TEST_SUITE_P(EveryPart, WrongTypesTest, testing::ValuesIn(EveryPath()), NameOf);

}  // namespace

}  // namespace test
