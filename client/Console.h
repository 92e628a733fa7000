#pragma once

#include <QString>
#include <QStringList>

#include <cstdio>

namespace korvax::client {

struct TerminalSize {
  int columns = 80;
  int rows = 24;
};

/// Standard output and standard error, as UTF-8 whatever the locale says. Owns neither file.
class Console {
public:
  Console(std::FILE* out, std::FILE* error) : out_(out), error_(error) {}

  /// Whether output goes to a terminal.
  bool IsTerminal() const;

  /// Whether pictures may be coloured: output goes to a terminal that knows 256 colours, as nearly all do, and
  /// the environment holds no NO_COLOR, by which users ask programs for none.
  bool HasColours() const;

  /// The terminal's size at this moment; 80 x 24 when there is none.
  TerminalSize Size() const;

  /// Writes one line, or several, to standard output, at once.
  void Print(const QString& lines);

  /// As Print, but without an end of line.
  void Write(const QString& text);

  /// Writes "korvaxctl: " and a line, or several, to standard error.
  void Complain(const QString& lines);

  /// Why something could not be written to standard output, in the system's words; empty if all was.
  const QString& Fault() const { return fault_; }

private:
  std::FILE* out_;
  std::FILE* error_;
  QString fault_;
};

/// While it lives, pictures are drawn over each other on the terminal's alternate screen; afterwards the
/// terminal shows again what it showed before.
class AlternateScreen {
public:
  explicit AlternateScreen(Console& console);
  ~AlternateScreen();
  AlternateScreen(const AlternateScreen&) = delete;
  AlternateScreen& operator=(const AlternateScreen&) = delete;

  void Show(const QStringList& lines);

private:
  Console& console_;
};

}  // namespace korvax::client
