#pragma once

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
  void Send(int signal) const;
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

  QTemporaryDir folder_;
  Process process_;
};

}  // namespace test
