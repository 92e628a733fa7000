#include "client/Console.h"

#include <sys/ioctl.h>
#include <unistd.h>
#include <cerrno>
#include <cstring>

namespace korvax::client {

namespace {

const QString enterScreen = QStringLiteral("\x1b[?1049h\x1b[?25l");
const QString leaveScreen = QStringLiteral("\x1b[?25h\x1b[?1049l");
const QString toTopLeft = QStringLiteral("\x1b[H");
const QString clearLineEnd = QStringLiteral("\x1b[K");
const QString clearBelow = QStringLiteral("\x1b[J");

/// False with errno set when not everything could be written.
bool WriteUtf8(std::FILE* file, const QString& text) {
  const QByteArray bytes = text.toUtf8();
  const auto size = static_cast<size_t>(bytes.size());
  return std::fwrite(bytes.constData(), 1, size, file) == size && std::fflush(file) == 0;
}

}  // namespace

bool Console::IsTerminal() const {
  return isatty(fileno(out_)) != 0;
}

bool Console::HasColours() const {
  const QByteArray terminal = qgetenv("TERM");
  return IsTerminal() && qEnvironmentVariableIsEmpty("NO_COLOR") && !terminal.isEmpty() && terminal != "dumb";
}

TerminalSize Console::Size() const {
  winsize size{};
  if (ioctl(fileno(out_), TIOCGWINSZ, &size) != 0 || size.ws_col == 0 || size.ws_row == 0) {
    return {};
  }
  return {size.ws_col, size.ws_row};
}

void Console::Print(const QString& lines) {
  Write(lines + QLatin1Char('\n'));
}

void Console::Write(const QString& text) {
  if (!WriteUtf8(out_, text) && fault_.isEmpty()) {
    fault_ = QString::fromLocal8Bit(std::strerror(errno));
  }
}

void Console::Complain(const QString& lines) {
  WriteUtf8(error_, QStringLiteral("korvaxctl: %1\n").arg(lines));
}

AlternateScreen::AlternateScreen(Console& console) : console_(console) {
  console_.Write(enterScreen);
}

AlternateScreen::~AlternateScreen() {
  console_.Write(leaveScreen);
}

void AlternateScreen::Show(const QStringList& lines) {
  const QString lineEnd = clearLineEnd + QStringLiteral("\r\n");
  console_.Write(toTopLeft + lines.join(lineEnd) + clearLineEnd + clearBelow);
}

}  // namespace korvax::client
