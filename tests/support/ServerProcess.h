#pragma once

#include <QElapsedTimer>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

#include <optional>

namespace test {

/// The real executable as a process of its own. What it writes goes into files, as in an unattended
/// installation. It never outlives this object, nor the test process.
class ServerProcess {
public:
  ServerProcess(const QString& executable, const QString& workingFolder);
  /// Kills the process if it still runs.
  ~ServerProcess();

  /// The next start is as a user with no rights of its own, where the test itself runs as root.
  void RunUnprivileged() { process_.unprivileged = true; }
  void Start(const QStringList& arguments);

  /// Waits until the line has been written to standard error; false when the process ends without.
  bool WaitForLine(const QString& line);
  bool WaitUntilReady() { return WaitForLine(QStringLiteral("KORVAX IS STARTED AND READY")); }

  /// Waits for the process's own end. The exit status; nothing when a signal ended it, or it doesn't end.
  std::optional<int> WaitForExit();
  void Send(int signal);
  qint64 ProcessId() const { return process_.processId(); }
  bool IsRunning() const { return process_.state() == QProcess::Running; }

  QStringList OutputLines() const;
  QStringList ErrorLines() const;

  /// What a sanitizer has written; empty when all is well.
  QStringList SanitizerReport() const;

private:
  class Process : public QProcess {
  public:
    bool unprivileged = false;

  protected:
    void setupChildProcess() override;
  };

  /// The thread sanitizer's runtime takes a signal itself before it calls the program's handler, and now and then
  /// never calls it. Only in its builds a signal whose handler has not run is sent again.
  void SendAgainWhenLost();

  QTemporaryDir folder_;
  Process process_;
  int sent_ = 0;  // the last signal, 0 for none since the start
  QElapsedTimer sinceSent_;
};

}  // namespace test
