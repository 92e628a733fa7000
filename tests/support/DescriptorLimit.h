#pragma once

#include <QDebug>
#include <QString>

#include <sys/resource.h>

namespace test {

/// While it lives, this process opens no file beyond so many, those that are open already included.
class DescriptorLimit {
public:
  explicit DescriptorLimit(rlim_t files) {
    // The undefined-behaviour sanitizer needs a descriptor for its first look at a type, and log lines may come
    // only when there is none.
    QString line;
    QDebug(&line) << "text" << QString() << 1;
    getrlimit(RLIMIT_NOFILE, &before_);
    const rlimit limit{files, before_.rlim_max};
    setrlimit(RLIMIT_NOFILE, &limit);
  }
  ~DescriptorLimit() { setrlimit(RLIMIT_NOFILE, &before_); }
  DescriptorLimit(const DescriptorLimit&) = delete;
  DescriptorLimit& operator=(const DescriptorLimit&) = delete;

private:
  rlimit before_ = {};
};

}  // namespace test
