#include "tests/fuzz/FuzzProcess.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <iostream>

namespace fuzz {

namespace {

char programName[] = "fuzz";
char* arguments[] = {programName, nullptr};

void LogNothing(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& /*text*/) {}

}  // namespace

void Prepare() {
  static int argumentCount = 1;
  static const QCoreApplication application(argumentCount, arguments);
  [[maybe_unused]] static const bool isSilent = [] {
    qInstallMessageHandler(LogNothing);
    std::cout.setstate(std::ios::failbit);
    return true;
  }();
}

QString ScratchFolder() {
  static const QTemporaryDir folder;
  return folder.path();
}

QString WriteScratchFile(const QString& name, const QByteArray& bytes) {
  const QString path = ScratchFolder() + QLatin1Char('/') + name;
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered) ||
      file.write(bytes) != bytes.size()) {
    qFatal("no room for scratch files");
  }
  return path;
}

}  // namespace fuzz
