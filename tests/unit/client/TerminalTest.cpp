#include "tests/support/WaitFor.h"
#include "tests/unit/client/ScriptedServer.h"

#include <QProcess>

#include <gmock/gmock.h>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>
#include <array>
#include <csignal>
#include <cstdlib>

namespace {

using test::ScriptedServer;
using test::WaitFor;
using testing::HasSubstr;

/// A pseudo-terminal: the program writes to its slave, the test reads what would be on the screen.
class Terminal {
public:
  Terminal(unsigned short columns, unsigned short rows) : master_(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK)) {
    grantpt(master_);
    unlockpt(master_);
    Resize(columns, rows);
    slave_ = open(ptsname(master_), O_RDWR | O_NOCTTY);
  }
  ~Terminal() {
    close(slave_);
    close(master_);
  }
  Terminal(const Terminal&) = delete;
  Terminal& operator=(const Terminal&) = delete;

  QString Path() const { return QString::fromUtf8(ptsname(master_)); }

  void Resize(unsigned short columns, unsigned short rows) {
    const winsize size{rows, columns, 0, 0};
    ioctl(master_, TIOCSWINSZ, &size);
  }

  /// Everything that was written so far.
  const QByteArray& Output() {
    std::array<char, 4096> bytes{};
    for (ssize_t count = 0; (count = read(master_, bytes.data(), bytes.size())) > 0;) {
      output_.append(bytes.data(), static_cast<int>(count));
    }
    return output_;
  }

private:
  int master_;
  int slave_ = -1;
  QByteArray output_;
};

const QByteArray enterScreen = "\x1b[?1049h\x1b[?25l";
const QByteArray leaveScreen = "\x1b[?25h\x1b[?1049l";
const QString data = QStringLiteral(R"([{"data":[1,2,3]},{"data":[4,5,6]}])");
const QString counting = QStringLiteral(R"([{"response": true, "status":"freerun"}])");

class OnATerminal : public testing::Test {
protected:
  void Start(const QStringList& more) { StartFor(server_, QStringList{"spectrum", "a/b"} + more); }

  void StartFor(const ScriptedServer& server, const QStringList& words) {
    program_.setStandardOutputFile(terminal_.Path());
    program_.start(QStringLiteral(KORVAXCTL_PROGRAM),
                   words + QStringList{"--port", QString::number(server.Port())});
    ASSERT_TRUE(program_.waitForStarted());
  }

  bool Ends() {
    return WaitFor([&] { return program_.state() == QProcess::NotRunning; });
  }

  void Signal(int number) { kill(static_cast<pid_t>(program_.processId()), number); }

  /// The widest line of what stands after the last jump to the top left.
  int WidestLine() {
    const QString picture = QString::fromUtf8(terminal_.Output()).section(QStringLiteral("\x1b[H"), -1);
    int widest = 0;
    for (const QString& line : picture.split(QStringLiteral("\x1b[K"))) {
      widest = std::max(widest, static_cast<int>(line.trimmed().size()));
    }
    return widest;
  }

  Terminal terminal_{60, 20};
  ScriptedServer server_{test::SpectrumScript(data, counting)};
  QProcess program_;
};

TEST_F(OnATerminal, aLiveSpectrumDrawsInPlaceAndLeavesTheTerminalAsItWas) {
  for (const int signal : {SIGINT, SIGTERM}) {
    Start({"--live", "--interval", "0.05", "--channel", "0,1"});
    const int before = terminal_.Output().count("\x1b[H");
    ASSERT_TRUE(WaitFor([&] { return terminal_.Output().count("\x1b[H") >= before + 3; }));
    EXPECT_EQ(terminal_.Output().count(enterScreen), terminal_.Output().count(leaveScreen) + 1);
    Signal(signal);
    ASSERT_TRUE(Ends());
    EXPECT_EQ(program_.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(program_.exitCode(), 0);
    EXPECT_TRUE(terminal_.Output().endsWith(leaveScreen));
  }
}

TEST_F(OnATerminal, aLiveSpectrumFollowsTheTerminalsSize) {
  Start({"--live", "--interval", "3600", "--channel", "0,1"});
  ASSERT_TRUE(WaitFor([&] { return terminal_.Output().contains("Ctrl-C ends"); }));
  EXPECT_TRUE(WaitFor([&] { return WidestLine() == 60; }));
  terminal_.Resize(100, 30);
  Signal(SIGWINCH);
  EXPECT_TRUE(WaitFor([&] { return WidestLine() == 100; }));
  Signal(SIGINT);
  ASSERT_TRUE(Ends());
}

TEST_F(OnATerminal, aLiveSpectrumSaysOnTheScreenThatItIsStale) {
  Start({"--live", "--interval", "0.05", "--timeout", "0.5", "--channel", "0,1"});
  ASSERT_TRUE(WaitFor([&] { return terminal_.Output().contains("counting"); }));
  server_.StopAnswering();
  EXPECT_TRUE(WaitFor([&] { return terminal_.Output().contains("STALE"); }));
  EXPECT_THAT(terminal_.Output().toStdString(), HasSubstr("no answer from ws://"));
  Signal(SIGINT);
  ASSERT_TRUE(Ends());
  EXPECT_TRUE(terminal_.Output().endsWith(leaveScreen));
}

TEST_F(OnATerminal, aSpectrumDrawnOnceStaysOnTheScreenWithARowForThePrompt) {
  Start({"--channel", "0,1"});
  ASSERT_TRUE(Ends());
  EXPECT_EQ(program_.exitCode(), 0);
  EXPECT_FALSE(terminal_.Output().contains('\x1b'));
  EXPECT_EQ(terminal_.Output().count('\n'), 1 + 2 * 18);
}

TEST_F(OnATerminal, everyLiveViewDrawsInPlaceAndEndsAtASignal) {
  const QString obeyed = QStringLiteral(R"([{"response": true}])");
  const QString traces = QStringLiteral(R"([{"data":[1,2,3]}])");
  ScriptedServer server([&](const ScriptedServer::Query& query) -> std::optional<QString> {
    if (query.message.contains(QStringLiteral("immediate"))) {
      return QStringLiteral(R"({"status": "nodata"})");
    }
    return query.message.contains(QStringLiteral("require_data")) ? traces : obeyed;
  });
  const std::vector<std::pair<QStringList, const char*>> table{
      {{"rates", "a/b", "--live"}, "No record has arrived yet"}, {{"scope", "s", "--live"}, "1 to 3"}};
  for (const auto& [words, content] : table) {
    StartFor(server, words);
    ASSERT_TRUE(WaitFor([&, text = content] { return terminal_.Output().contains(text); })) << content;
    EXPECT_THAT(terminal_.Output().toStdString(), HasSubstr("Ctrl-C ends"));
    EXPECT_EQ(terminal_.Output().count(enterScreen), terminal_.Output().count(leaveScreen) + 1);
    Signal(SIGINT);
    ASSERT_TRUE(Ends());
    EXPECT_EQ(program_.exitCode(), 0);
    EXPECT_TRUE(terminal_.Output().endsWith(leaveScreen));
  }
}

/// A position map whose environment holds TERM and, where there is one, another variable.
class AMapOnATerminal : public OnATerminal {
protected:
  /// What the program wrote, which it does once.
  QByteArray Drawn(const char* terminal, const QStringList& more, const char* variable = nullptr) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("NO_COLOR"));
    environment.insert(QStringLiteral("TERM"), QString::fromUtf8(terminal));
    if (variable) {
      environment.insert(QString::fromUtf8(variable), QStringLiteral("1"));
    }
    program_.setProcessEnvironment(environment);
    const int before = terminal_.Output().size();
    StartFor(maps_, QStringList{"position", "a/b"} + more);
    EXPECT_TRUE(Ends());
    EXPECT_EQ(program_.exitCode(), 0);
    return terminal_.Output().mid(before);
  }

  ScriptedServer maps_{test::SpectrumScript(QStringLiteral(R"({"data":[[1,2],[3,4]]})"), counting)};
};

TEST_F(AMapOnATerminal, isColoured) {
  const QByteArray drawn = Drawn("xterm-256color", {});
  EXPECT_TRUE(drawn.contains("\x1b[38;5;231m"));
  EXPECT_EQ(drawn.count('\n'), 19) << "one row of the terminal is left for the prompt";
}

TEST_F(AMapOnATerminal, isUncolouredWhereTheUserWishesOrTheTerminalIsDumb) {
  EXPECT_FALSE(Drawn("xterm-256color", {"--no-colour"}).contains('\x1b'));
  EXPECT_FALSE(Drawn("xterm-256color", {}, "NO_COLOR").contains('\x1b'));
  EXPECT_FALSE(Drawn("dumb", {}).contains('\x1b'));
  EXPECT_FALSE(Drawn("", {}).contains('\x1b'));
}

class ALedgerOnATerminal : public OnATerminal {
protected:
  /// What the program wrote, with its carriage returns.
  std::string Shown(bool withoutColour) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("NO_COLOR"));
    environment.insert(QStringLiteral("TERM"), QStringLiteral("xterm-256color"));
    if (withoutColour) {
      environment.insert(QStringLiteral("NO_COLOR"), QStringLiteral("1"));
    }
    program_.setProcessEnvironment(environment);
    const int before = terminal_.Output().size();
    StartFor(ledger_, {"ledger"});
    EXPECT_TRUE(Ends());
    EXPECT_EQ(program_.exitCode(), 0);
    return terminal_.Output().mid(before).toStdString();
  }

  ScriptedServer ledger_{test::Always(QStringLiteral(
      R"({"ledger":{"blocks":[{"name":"a","type":"t","received":4,"waiting":0,"became":{"refused":4}}]}})"))};
};

TEST_F(ALedgerOnATerminal, showsLossesInRedUnlessTheUserWishesNoColour) {
  EXPECT_THAT(Shown(false), HasSubstr("\x1b[31m4 refused\x1b[0m\r\n"));
  EXPECT_THAT(Shown(true), HasSubstr("  !4 refused\r\n"));
}

TEST_F(AMapOnATerminal, isDrawnInPlaceWhenItIsLive) {
  StartFor(maps_, {"position", "a/b", "--live", "--interval", "0.05"});
  ASSERT_TRUE(WaitFor([&] { return terminal_.Output().count("\x1b[H") >= 3; }));
  EXPECT_THAT(terminal_.Output().toStdString(), HasSubstr("Ctrl-C ends"));
  Signal(SIGINT);
  ASSERT_TRUE(Ends());
  EXPECT_EQ(program_.exitCode(), 0);
  EXPECT_TRUE(terminal_.Output().endsWith(leaveScreen));
}

}  // namespace
