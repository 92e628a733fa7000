#include "tests/support/SmallFileSystem.h"

#include <sched.h>
#include <sys/mount.h>

namespace test {

namespace {

bool Mount(const QByteArray& folder, qint64 bytes) {
  const QByteArray options = "mode=0777,size=" + QByteArray::number(bytes);
  return unshare(CLONE_NEWNS) == 0 && mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
         mount("tmpfs", folder.constData(), "tmpfs", 0, options.constData()) == 0;
}

}  // namespace

SmallFileSystem::SmallFileSystem(const QString& folder, qint64 bytes)
    : folder_(folder.toLocal8Bit()), mounted_(Mount(folder_, bytes)) {}

SmallFileSystem::~SmallFileSystem() {
  if (mounted_) {
    umount2(folder_.constData(), MNT_DETACH);
  }
}

}  // namespace test
