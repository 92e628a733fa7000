#pragma once

#include <QString>
#include <QStringList>

#include <algorithm>

namespace korvax::client {

inline QString Blanks(int count) {
  return QString(std::max(0, count), QLatin1Char(' '));
}

/// A foreign text in one line, harmless to a terminal.
inline QString Harmless(QString text) {
  for (QChar& character : text) {
    if (!character.isPrint()) {
      character = QLatin1Char(' ');
    }
  }
  return text;
}

/// "1 row", "2 rows".
inline QString Counted(quint64 number, const QString& noun) {
  return QString::number(number) + QLatin1Char(' ') + (number == 1 ? noun : noun + QLatin1Char('s'));
}

/// Events per second.
inline QString RateText(double rate) {
  return QString::number(rate, 'f', rate < 100 ? 1 : 0) + QStringLiteral("/s");
}

/// Keeps the end of a text that is too long: of a path, that is the block's name.
inline QString KeepEnd(const QString& text, int width) {
  if (width <= 0) {
    return {};
  }
  return text.size() <= width ? text : QStringLiteral("…") + text.right(width - 1);
}

inline QString KeepBeginning(const QString& text, int width) {
  if (width <= 0) {
    return {};
  }
  return text.size() <= width ? text : text.left(width - 1) + QStringLiteral("…");
}

/// Lines of at most `width` (1 or more) characters, broken at blanks where there are any.
inline QStringList Break(QString text, int width) {
  QStringList lines;
  while (text.size() > width) {
    const int blank = text.lastIndexOf(QLatin1Char(' '), width);
    const bool atBlank = blank > 0 && !text.left(blank).trimmed().isEmpty();
    lines.append(text.left(atBlank ? blank : width));
    text.remove(0, atBlank ? blank + 1 : width);
  }
  return lines << text;
}

/// Fields side by side, as many from the first as fit.
inline QString JoinFitting(const QStringList& fields, int width) {
  QString line = KeepBeginning(fields.value(0), width);
  for (const QString& field : fields.mid(1)) {
    const QString longer = line + QStringLiteral(" · ") + field;
    if (longer.size() > width) {
      break;
    }
    line = longer;
  }
  return line;
}

}  // namespace korvax::client
