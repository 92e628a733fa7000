#include "control/RunBook.h"

#include "recording/RunSummary.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDateTime>
#include <QFile>
#include <QJsonObject>

namespace korvax {

namespace {

constexpr int PollIntervalMs = 100;

QString Now() {
  return QDateTime::currentDateTimeUtc().toString(Qt::ISODate);
}

// Empty when the file can't be read.
QString DigestOf(const QString& path) {
  QFile file(path);
  QCryptographicHash hash(QCryptographicHash::Sha256);
  return file.open(QIODevice::ReadOnly) && hash.addData(&file) ? QString::fromLatin1(hash.result().toHex())
                                                               : QString();
}

QJsonObject Line(const char* event, const QString& time) {
  return {{QStringLiteral("event"), QLatin1String(event)}, {QStringLiteral("time"), time}};
}

}  // namespace

RunBook::RunBook(const BlockList& blocks, std::function<bool()> hasOpenFiles)
    : blocks_(blocks), hasOpenFiles_(std::move(hasOpenFiles)) {
  closing_.setInterval(PollIntervalMs);
  connect(&closing_, &QTimer::timeout, this, &RunBook::EndIfClosed);
}

RunBook::~RunBook() {
  End();
}

void RunBook::Begin(const QString& folder, const QString& runId, const QString& configurationPath) {
  End();
  QJsonObject line = Line("start", Now());
  line[QStringLiteral("run_id")] = runId;
  line[QStringLiteral("configuration")] = configurationPath;
  line[QStringLiteral("configuration_sha256")] = DigestOf(configurationPath);
  line[QStringLiteral("server")] = QCoreApplication::applicationVersion();
  line[QStringLiteral("qt")] = QString::fromLatin1(qVersion());
  RunSummary::Begin(folder, line);
  run_ = Run{folder, Ledger::Of(blocks_), {}, false};
}

void RunBook::Note(const char* event) {
  if (run_) {
    RunSummary::Append(run_->folder, Line(event, Now()));
  }
}

void RunBook::NoteRestart() {
  closing_.stop();
  Note("restart");
  if (run_) {
    run_->stopTime.clear();
    run_->hasEnded = false;
  }
}

void RunBook::Stop() {
  if (run_ && run_->stopTime.isEmpty()) {
    run_->stopTime = Now();
    closing_.start();
    EndIfClosed();
  }
}

void RunBook::EndIfClosed() {
  if (!hasOpenFiles_()) {
    End();
  }
}

void RunBook::End() {
  closing_.stop();
  if (!run_ || std::exchange(run_->hasEnded, true)) {
    return;
  }
  QJsonObject line = Line("stop", run_->stopTime.isEmpty() ? Now() : run_->stopTime);
  line[QStringLiteral("ledger")] = Ledger::Of(blocks_).Since(run_->before).ToJson();
  RunSummary::Append(run_->folder, line);
}

}  // namespace korvax
