#include "client/RunFilePaths.h"

#include "runfiles/FileType.h"

#include <QDir>
#include <QFile>

#include <algorithm>

namespace korvax::client {

namespace {

/// The digits of `text` from `start` on, without zeros before them.
QStringRef DigitsAt(const QString& text, int start, int& end) {
  end = start;
  while (end < text.size() && text[end].isDigit()) {
    ++end;
  }
  while (start < end - 1 && text[start] == QLatin1Char('0')) {
    ++start;
  }
  return text.midRef(start, end - start);
}

}  // namespace

bool NaturallyBefore(const QString& left, const QString& right) {
  int l = 0;
  int r = 0;
  while (l < left.size() && r < right.size()) {
    if (left[l].isDigit() && right[r].isDigit()) {
      const QStringRef leftNumber = DigitsAt(left, l, l);
      const QStringRef rightNumber = DigitsAt(right, r, r);
      if (leftNumber.size() != rightNumber.size()) {
        return leftNumber.size() < rightNumber.size();
      }
      if (leftNumber != rightNumber) {
        return leftNumber < rightNumber;
      }
    } else if (left[l] != right[r]) {
      return left[l] < right[r];
    } else {
      ++l;
      ++r;
    }
  }
  const bool leftEnds = l == left.size();
  const bool rightEnds = r == right.size();
  return leftEnds == rightEnds ? left < right : leftEnds;
}

std::vector<QString> RunFilePaths(const QString& path) {
  const QDir folder(path);
  if (path.isEmpty() || !folder.exists()) {
    return {path};
  }
  std::vector<QString> names;
  for (const QString& name : folder.entryList(QDir::Files | QDir::Hidden)) {
    if (runfiles::FormOfName(QFile::encodeName(name).toStdString())) {
      names.push_back(name);
    }
  }
  std::ranges::sort(names, NaturallyBefore);
  std::ranges::transform(names, names.begin(), [&folder](const QString& name) { return folder.filePath(name); });
  return names;
}

}  // namespace korvax::client
