#include "tests/support/Installation.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <unistd.h>

namespace test {

namespace {

void LinkOrCopy(const QString& from, const QString& to) {
  if (link(from.toLocal8Bit().constData(), to.toLocal8Bit().constData()) != 0) {
    EXPECT_TRUE(QFile::copy(from, to)) << from.toStdString() << " to " << to.toStdString();
  }
}

}  // namespace

Installation::Installation(const QString& executable) {
  // Open to a server that runs as another user.
  QFile::setPermissions(folder_.path(), QFile::permissions(folder_.path()) | QFile::ReadOther | QFile::ExeOther);
  for (const char* name : {"bin/boards", "storage", "work"}) {
    EXPECT_TRUE(QDir(folder_.path()).mkpath(QLatin1String(name)));
  }
  LinkOrCopy(executable, Executable());
}

QString Installation::Executable() const {
  return Path(QStringLiteral("bin/korvax-boards-server"));
}

void Installation::AddBoardLibrary(const QString& file, const QString& name) const {
  LinkOrCopy(file, BoardsFolder() + QLatin1Char('/') + name);
}

void Installation::Write(const QString& path, const QByteArray& content) {
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
  EXPECT_EQ(file.write(content), content.size()) << path.toStdString();
}

}  // namespace test
