#pragma once

#include "server/BoardPlugins.h"
#include "tests/support/LogCapture.h"
#include "tests/support/Printing.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <filesystem>

/// A temporary folder of board libraries, and the plugin list that loads it.
class LibraryFolder : public testing::Test {
protected:
  /// The folder as start-up names it: with a slash at its end.
  QString Folder() const { return folder_.path() + "/"; }

  /// Puts a real library into the folder under another name. `lacking` is a function without its prefix.
  void AddLibrary(const QString& fileName, const QString& lacking = "None") {
    ASSERT_TRUE(QFile::copy(QString(KORVAX_TEST_LIBRARIES "/Without") + lacking + ".so", Folder() + fileName));
  }

  void AddText(const QString& fileName) {
    QFile file(Folder() + fileName);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("this is no library\n");
  }

  /// What the file system lists, in its own order.
  std::vector<std::string> Listing() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder_.path().toStdString())) {
      names.push_back(entry.path().filename().string());
    }
    return names;
  }

  /// The calls that a loaded library has seen.
  static QString CallsOf(const QLibrary& library) {
    const auto calls =
        reinterpret_cast<const char* (*)()>(BoardPlugins::LookupIn(library)("TestBoardLibrary_Calls"));
    return calls == nullptr ? QString("(no board library of the tests)") : QString::fromLatin1(calls());
  }

  test::LogCapture log_;
  QTemporaryDir folder_;
  BoardPlugins plugins_;
};
