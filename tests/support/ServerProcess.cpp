#include "tests/support/ServerProcess.h"

#include "tests/support/WaitFor.h"

#include <QFile>

#include <grp.h>
#include <sys/prctl.h>
#include <unistd.h>
#include <csignal>

namespace test {

namespace {

constexpr uid_t Nobody = 65534;

QStringList LinesOf(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) {
    return {};
  }
  QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
  lines.removeLast();  // what follows the last line feed isn't a line yet
  return lines;
}

void Append(QProcessEnvironment& environment, const char* name, const char* options) {
  environment.insert(QLatin1String(name), environment.value(QLatin1String(name)) + QLatin1String(options));
}

// Nothing in the caller's environment may change what the server logs, or where.
QProcessEnvironment CleanEnvironment() {
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  for (const char* name : {"QT_LOGGING_RULES", "QT_LOGGING_CONF", "QT_MESSAGE_PATTERN", "QT_LOGGING_TO_CONSOLE",
                           "QT_FORCE_STDERR_LOGGING", "QT_ASSUME_STDERR_HAS_CONSOLE"}) {
    environment.remove(QLatin1String(name));
  }
  Append(environment, "TSAN_OPTIONS",
         " history_size=7 suppressions=" KORVAX_SANITIZER_SUPPRESSIONS "/thread-sanitizer.supp");
  Append(environment, "LSAN_OPTIONS",
         " print_suppressions=0 suppressions=" KORVAX_SANITIZER_SUPPRESSIONS "/leak-sanitizer.supp");
  return environment;
}

// Whether the process has a handler for the signal. The server's takes itself away when it runs.
[[maybe_unused]] bool Handles(qint64 process, int signal) {
  QFile status(QStringLiteral("/proc/%1/status").arg(process));
  if (!status.open(QIODevice::ReadOnly)) {
    return false;
  }
  const QString text = QString::fromLatin1(status.readAll());
  const QString caught = text.section(QStringLiteral("SigCgt:\t"), 1).section(QLatin1Char('\n'), 0, 0);
  return (caught.toULongLong(nullptr, 16) >> (signal - 1) & 1) != 0;
}

}  // namespace

void ServerProcess::Process::setupChildProcess() {
  if (unprivileged && geteuid() == 0 &&
      (setgroups(0, nullptr) != 0 || setresgid(Nobody, Nobody, Nobody) != 0 ||
       setresuid(Nobody, Nobody, Nobody) != 0)) {
    _exit(126);
  }
  prctl(PR_SET_PDEATHSIG, SIGKILL);
}

ServerProcess::ServerProcess(const QString& executable, const QString& workingFolder) {
  process_.setProgram(executable);
  process_.setWorkingDirectory(workingFolder);
  process_.setProcessEnvironment(CleanEnvironment());
  process_.setStandardInputFile(QProcess::nullDevice());
  process_.setStandardOutputFile(folder_.filePath(QStringLiteral("stdout")));
  process_.setStandardErrorFile(folder_.filePath(QStringLiteral("stderr")));
}

ServerProcess::~ServerProcess() {
  if (process_.state() != QProcess::NotRunning) {
    process_.kill();
    process_.waitForFinished();
  }
}

void ServerProcess::Start(const QStringList& arguments) {
  sent_ = 0;
  process_.setArguments(arguments);
  process_.start();
  process_.waitForStarted();
}

bool ServerProcess::WaitForLine(const QString& line) {
  const bool ended = !WaitFor([&] { return !IsRunning() || ErrorLines().contains(line); });
  return !ended && ErrorLines().contains(line);
}

std::optional<int> ServerProcess::WaitForExit() {
  if (!WaitFor([this] {
        SendAgainWhenLost();
        return process_.state() == QProcess::NotRunning;
      }) ||
      process_.exitStatus() != QProcess::NormalExit) {
    return std::nullopt;
  }
  return process_.exitCode();
}

void ServerProcess::Send(int signal) {
  kill(static_cast<pid_t>(process_.processId()), signal);
  sent_ = signal;
  sinceSent_.start();
}

void ServerProcess::SendAgainWhenLost() {
#ifdef __SANITIZE_THREAD__
  constexpr int LostAfterMs = 2000;
  if (sent_ != 0 && sinceSent_.elapsed() > LostAfterMs && IsRunning() && Handles(process_.processId(), sent_)) {
    Send(sent_);
  }
#endif
}

QStringList ServerProcess::OutputLines() const {
  return LinesOf(folder_.filePath(QStringLiteral("stdout")));
}

QStringList ServerProcess::ErrorLines() const {
  return LinesOf(folder_.filePath(QStringLiteral("stderr")));
}

QStringList ServerProcess::SanitizerReport() const {
  const QStringList lines = ErrorLines();
  for (int i = 0; i < lines.size(); ++i) {
    if (lines[i].contains(QLatin1String("Sanitizer")) || lines[i].contains(QLatin1String("runtime error:"))) {
      return lines.mid(i);
    }
  }
  return {};
}

}  // namespace test
