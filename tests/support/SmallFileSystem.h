#pragma once

#include <QByteArray>
#include <QString>

namespace test {

/// A file system of so many bytes, in memory, on an existing folder, while it lives. Only this process and those that
/// it starts afterwards see it.
class SmallFileSystem {
public:
  SmallFileSystem(const QString& folder, qint64 bytes);
  ~SmallFileSystem();
  SmallFileSystem(const SmallFileSystem&) = delete;
  SmallFileSystem& operator=(const SmallFileSystem&) = delete;

  /// False where the kernel refused.
  bool IsMounted() const { return mounted_; }

private:
  const QByteArray folder_;
  bool mounted_;
};

}  // namespace test
