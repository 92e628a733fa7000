#include "tests/system/SystemTest.h"

#include "tests/support/NetworkNamespace.h"
#include "tests/support/WaitFor.h"

#include <QDir>
#include <QElapsedTimer>
#include <QJsonArray>

#include <algorithm>
#include <csignal>
#include <iterator>
#include <numeric>

namespace test {

namespace {

QString MadeFolder(const QString& path) {
  EXPECT_TRUE(QDir().mkpath(path));
  return path;
}

}  // namespace

const QString SystemTest::Success = QStringLiteral("[{\"response\": true}]");
const QString SystemTest::SpectrumPath = QStringLiteral("processing/0/filter_chain/main/chain/spectrum");

QString Query(const QString& path, const QByteArray& args) {
  return QStringLiteral(R"({"path":"%1","args":[%2]})").arg(path, QString::fromUtf8(args));
}

void SystemTest::SetUpTestSuite() {
  OwnThePort();
}

SystemTest::SystemTest()
    : installation(QStringLiteral(KORVAX_SERVER)),
      board(MadeFolder(installation.Path(QStringLiteral("board")))),
      configuration(ValidConfiguration(installation.StoragePath(), board.Connection())),
      server(installation.Executable(), installation.WorkingFolder()) {
  installation.AddBoardLibrary(Library(QStringLiteral("scripted_board_all")),
                               QStringLiteral("libCAENDig2Scripted.so"));
}

void SystemTest::TearDown() {
  EndServer();
}

void SystemTest::EndServer() {
  client_.reset();
  if (server.IsRunning()) {
    server.Send(SIGTERM);
    EXPECT_EQ(server.WaitForExit(), 0);
  }
  const QStringList report = server.SanitizerReport();
  EXPECT_TRUE(report.isEmpty()) << report.join(QLatin1Char('\n')).toStdString();
}

QString SystemTest::Library(const QString& target) {
  return QStringLiteral(KORVAX_SCRIPTED_BOARDS "/lib%1.so").arg(target);
}

void SystemTest::Start() {
  installation.WriteConfiguration(ToText(configuration));
  server.Start({QStringLiteral("-c"), installation.ConfigurationPath()});
}

void SystemTest::StartAndWaitUntilReady() {
  Start();
  ASSERT_TRUE(server.WaitUntilReady()) << server.ErrorLines().join(QLatin1Char('\n')).toStdString();
}

QString SystemTest::Ask(const QByteArray& args) {
  if (client_ == nullptr) {
    client_ = std::make_unique<TestClient>(QStringLiteral("query_by_json"));
    EXPECT_TRUE(client_->Connect());
  }
  const std::optional<QString> answer = client_->Ask(Query(SpectrumPath, args));
  EXPECT_TRUE(answer.has_value()) << args.constData();
  return answer.value_or(QString());
}

std::vector<int> SystemTest::Counts(int channel) {
  const QString answer = Ask("{\"cmd\":\"get_data\",\"channels\":[" + QByteArray::number(channel) + "]}");
  const QJsonArray data = QJsonDocument::fromJson(answer.toUtf8()).array()[0].toObject()["data"].toArray();
  std::vector<int> counts;
  std::transform(data.begin(), data.end(), std::back_inserter(counts),
                 [](const QJsonValue& count) { return count.toInt(); });
  return counts;
}

bool SystemTest::WaitForData(const std::function<bool()>& condition) {
  constexpr int FeedAgainMs = 100;
  QElapsedTimer sinceFed;
  sinceFed.start();
  return WaitFor([&] {
    if (condition()) {
      return true;
    }
    if (sinceFed.elapsed() > FeedAgainMs) {
      board.FeedRamp(7, 0, 1);
      sinceFed.restart();
    }
    return false;
  });
}

void SystemTest::ExpectEachBinOnce(int channel, int first, int count) {
  std::vector<int> expected(1024, 0);
  std::fill_n(expected.begin() + first, count, 1);
  std::vector<int> counts;
  const bool complete = WaitForData([&] {
    counts = Counts(channel);
    return std::accumulate(counts.begin(), counts.end(), 0) >= count;
  });
  EXPECT_TRUE(complete) << "events are missing on channel " << channel;
  EXPECT_EQ(counts, expected) << "channel " << channel;
}

QStringList SystemTest::FirstLines() const {
  return {QStringLiteral("Velmor - Korvax is starting"),
          QStringLiteral("Board server configuration is:  \"%1\"").arg(installation.ConfigurationPath())};
}

QStringList SystemTest::LinesUntilBoard() const {
  return FirstLines() + QStringList{
                            QStringLiteral("Storage folder is:  \"%1\"").arg(installation.StoragePath()),
                            QStringLiteral("Connecting to board:  \"7\""),
                            QStringLiteral("\tName: \"Digitizer\""),
                            QStringLiteral("\tBoard Type: \"DT\""),
                            QStringLiteral("\tConnection address: \"%1\"").arg(board.Connection()),
                        };
}

QStringList SystemTest::LinesUntilReady() const {
  return LinesUntilBoard() + QStringList{
                                 QStringLiteral("Using  \"libcaendig2scripted\"  for board  \"Digitizer\""),
                                 QStringLiteral("Connection status:  0"),
                                 QStringLiteral(R"(Set "\\par\\Thr"   "100")"),
                                 QStringLiteral(R"(Apply  "Threshold" :  "100"  RES:  )"),
                                 QStringLiteral(R"(Set "\\Channel0\\ChEnable"   "on")"),
                                 QStringLiteral(R"(Apply  "Enable" [ 0 ] :  ""  RES:  )"),
                                 QStringLiteral(R"(Set "\\Channel1\\ChEnable"   "2.5")"),
                                 QStringLiteral(R"(Apply  "Enable" [ 1 ] :  ""  RES:  )"),
                                 QStringLiteral(R"(Set "\\Channel2\\ChEnable"   "1")"),
                                 QStringLiteral(R"(Apply  "Enable" [ 2 ] :  ""  RES:  )"),
                                 QStringLiteral("KORVAX IS STARTED AND READY"),
                             };
}

}  // namespace test
