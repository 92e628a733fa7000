#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <string>

namespace test {

/// A storage folder of its own with the folder of the run "run_1" in it, gone at the end.
class RunFolder {
public:
  RunFolder() { Make("run_1"); }

  /// Without a "/" at the end.
  QString Root() const { return root_.path(); }
  /// `name`: below the root, "run_1/rates_0.bin".
  QString Path(const QString& name) const { return root_.filePath(name); }

  void Make(const QString& name) { ASSERT_TRUE(QDir(Root()).mkpath(name)); }

  /// The names below the folder, sorted.
  QStringList Names(const QString& folder = "run_1") const {
    return QDir(Path(folder)).entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name);
  }
  /// Everything in the file. One that isn't there fails the test.
  std::string Bytes(const QString& name) const {
    QFile file(Path(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(name);
    return file.readAll().toStdString();
  }

private:
  QTemporaryDir root_;
};

/// The bytes of a table "4b 56 58 52"; blanks mean nothing.
inline std::string FromHex(const QByteArray& table) {
  return QByteArray::fromHex(table).toStdString();
}

}  // namespace test
