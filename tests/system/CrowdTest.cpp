#include "tests/support/DescriptorLimit.h"
#include "tests/support/WaitFor.h"
#include "tests/system/RunTest.h"

#include <QDir>
#include <QFile>
#include <QNetworkProxy>
#include <QTcpSocket>

#include <sys/resource.h>
#include <algorithm>
#include <limits>

namespace test {

namespace {

// More clients than the server takes, and clients that take more than they should. The server records runs.
class CrowdTest : public RunTest {
protected:
  void Configure(const QJsonObject& network) { Change(QStringLiteral("network"), network); }

  void ConnectSockets(int count) {
    for (int i = 0; i < count; ++i) {
      sockets_.push_back(std::make_unique<QTcpSocket>());
      sockets_.back()->setProxy(QNetworkProxy::NoProxy);
      sockets_.back()->connectToHost(QStringLiteral("127.0.0.1"), 51234);
    }
  }
  bool WaitUntilRefused(std::ptrdiff_t count) {
    return WaitFor([&] {
      return std::count_if(sockets_.begin(), sockets_.end(), [](const auto& socket) {
               return socket->state() == QAbstractSocket::UnconnectedState;
             }) >= count;
    });
  }

  static bool IsServed(TestClient& client) {
    return client.Ask(R"({"cmd":"get_run_info"})").value_or(QString()).startsWith(QStringLiteral("[{"));
  }

  QStringList LinesOfClients() const { return server.ErrorLines().filter(QStringLiteral("Client")); }

  std::vector<std::unique_ptr<QTcpSocket>> sockets_;
};

TEST_F(CrowdTest, ConnectionsBeyondTheLimitAreClosedWithOneLineAndTheOthersAreServed) {
  Configure({{"max_connections", 5}});
  StartAndWaitUntilReady();
  TestClient first(QStringLiteral("commands"));
  ASSERT_TRUE(first.Connect());
  ConnectSockets(104);
  EXPECT_TRUE(WaitUntilRefused(100));
  EXPECT_TRUE(IsServed(first));
  EXPECT_EQ(LinesOfClients(), QStringList{QStringLiteral(
                                  "Client \"127.0.0.1\" refused: 5 connections are open, the most that "
                                  "\"max_connections\" and the limit of open files allow. Others are refused in "
                                  "silence until one leaves.")});
  sockets_.clear();
  TestClient second(QStringLiteral("commands"));
  EXPECT_TRUE(WaitFor([&] { return second.Connect(); }));
  EXPECT_TRUE(IsServed(second));
}

TEST_F(CrowdTest, ARunOpensItsFilesWhileConnectionsTakeAllDescriptorsThatTheyMay) {
  {
    const DescriptorLimit inherited(64);
    Start();
  }
  ASSERT_TRUE(server.WaitUntilReady());
  EXPECT_EQ(StartRun(1), Success);  // over a connection that stays
  ConnectSockets(147);
  EXPECT_TRUE(WaitUntilRefused(100));
  EXPECT_TRUE(FeedUntil([this] { return QFile::exists(File(1, 0, Form::Binary)); }));
  EXPECT_EQ(LinesOfClients().size(), 1);
}

TEST_F(CrowdTest, AClientThatLetsItsAnswersPileUpIsDisconnectedAndTheOthersAreServed) {
  Configure({{"max_unsent_bytes", 65536}});
  StartAndWaitUntilReady();
  TestClient other(QStringLiteral("commands"));
  ASSERT_TRUE(other.Connect());
  ConnectSockets(1);
  QTcpSocket& deaf = *sockets_.front();
  deaf.write(
      "GET /commands HTTP/1.1\r\nHost: 127.0.0.1:51234\r\nUpgrade: websocket\r\nConnection: Upgrade\r\n"
      "Sec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\nSec-WebSocket-Version: 13\r\n\r\n");
  ASSERT_TRUE(WaitFor([&] { return deaf.bytesAvailable() > 0; }));
  deaf.readAll();
  deaf.setReadBufferSize(1);
  const QByteArray query = QByteArray("\x81\x96\0\0\0\0", 6) + R"({"cmd":"get_run_info"})";
  EXPECT_TRUE(WaitFor([&] {
    if (deaf.state() == QAbstractSocket::ConnectedState && deaf.bytesToWrite() < 100'000) {
      deaf.write(query.repeated(1000));
    }
    return !LinesOfClients().isEmpty();
  }));
  EXPECT_TRUE(WaitUntilRefused(1));
  EXPECT_TRUE(IsServed(other));
  ASSERT_EQ(LinesOfClients().size(), 1);
  EXPECT_TRUE(LinesOfClients().first().startsWith(QStringLiteral("Client \"127.0.0.1\" disconnected: ")));
}

TEST_F(CrowdTest, AMessageBeyondTheLimitEndsItsConnection) {
  Configure({{"max_message_bytes", 4096}});
  StartAndWaitUntilReady();
  TestClient modest(QStringLiteral("commands"));
  ASSERT_TRUE(modest.Connect());
  EXPECT_EQ(modest.AskBinary(QByteArray(4096, 'x')), QByteArray(4096, 'x'));
  TestClient greedy(QStringLiteral("commands"));
  ASSERT_TRUE(greedy.Connect());
  EXPECT_EQ(greedy.AskBinary(QByteArray(4097, 'x')), std::nullopt);
  EXPECT_TRUE(IsServed(modest));
}

QStringList OpenFiles(qint64 process) {
  const QDir files(QStringLiteral("/proc/%1/fd").arg(process));
  return files.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
}

// The number that the next file would get. Of many looks the least: files that are open for a moment don't count.
int NextFile(qint64 process) {
  int next = std::numeric_limits<int>::max();
  for (int look = 0; look < 100; ++look) {
    const QStringList files = OpenFiles(process);
    int free = 0;
    while (files.contains(QString::number(free))) {
      ++free;
    }
    next = std::min(next, free);
  }
  return next;
}

// Keeps a process from opening files whose numbers aren't below this.
class FileLimit {
public:
  FileLimit(qint64 process, int files) : process_(static_cast<pid_t>(process)) {
    prlimit(process_, RLIMIT_NOFILE, nullptr, &before_);
    const rlimit limit{static_cast<rlim_t>(files), before_.rlim_max};
    EXPECT_EQ(prlimit(process_, RLIMIT_NOFILE, &limit, nullptr), 0);
  }
  ~FileLimit() { prlimit(process_, RLIMIT_NOFILE, &before_, nullptr); }
  FileLimit(const FileLimit&) = delete;
  FileLimit& operator=(const FileLimit&) = delete;

private:
  const pid_t process_;
  rlimit before_ = {};
};

// Whether the main thread is found asleep, time after time: one that tries on and on never is.
bool ComesToRest(qint64 process) {
  constexpr int Often = 20;
  int asleep = 0;
  return WaitFor([&] {
    QFile status(QStringLiteral("/proc/%1/stat").arg(process));
    EXPECT_TRUE(status.open(QIODevice::ReadOnly));
    const QByteArray line = status.readAll();
    asleep = line.mid(line.lastIndexOf(')') + 2, 1) == "S" ? asleep + 1 : 0;
    return asleep == Often;
  });
}

TEST_F(CrowdTest, WithoutFileDescriptorsClientsWaitTheOthersAreServedAndTheServerRests) {
  StartAndWaitUntilReady();
  TestClient client(QStringLiteral("commands"));
  ASSERT_TRUE(client.Connect());
  ASSERT_TRUE(IsServed(client));  // the undefined-behaviour sanitizer needs descriptors to look at a type at first
  const int next = NextFile(server.ProcessId());
  const int openBefore = OpenFiles(server.ProcessId()).size();
  const QString line = QStringLiteral(
      "Clients can't be accepted: Too many open files . They wait, and nothing else is disturbed. Let others "
      "close, "
      "or raise the limit of open files.");
  for (int time = 1; time <= 2; ++time) {
    QWebSocket waiting;
    waiting.setProxy(QNetworkProxy::NoProxy);
    {
      const FileLimit none(server.ProcessId(), next);
      waiting.open(QUrl(QStringLiteral("ws://127.0.0.1:51234/commands")));
      ConnectSockets(100);  // more than fit into a queue of usual length
      ASSERT_TRUE(WaitFor([&] { return server.ErrorLines().count(line) == time; }));
      EXPECT_TRUE(WaitFor([this] {
        return std::all_of(sockets_.begin(), sockets_.end(),
                           [](const auto& socket) { return socket->state() == QAbstractSocket::ConnectedState; });
      }));
      EXPECT_TRUE(ComesToRest(server.ProcessId()));
      for (int i = 0; i < 100; ++i) {
        ASSERT_TRUE(IsServed(client));
      }
      EXPECT_EQ(waiting.state(), QAbstractSocket::ConnectingState);
    }
    EXPECT_TRUE(WaitFor([&] { return waiting.state() == QAbstractSocket::ConnectedState; }));
    EXPECT_EQ(server.ErrorLines().count(line), time);
    sockets_.clear();
    waiting.abort();
    EXPECT_TRUE(WaitFor([&] { return OpenFiles(server.ProcessId()).size() <= openBefore; }));
  }
}

}  // namespace

}  // namespace test
