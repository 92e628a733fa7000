#include "client/Endings.h"

#include "client/TextFit.h"

namespace korvax::client {

namespace {

constexpr int shownLength = 60;

/// The beginning of a foreign text, harmless to a terminal.
QString Excerpt(const QString& text) {
  const QString shown = Harmless(text.left(shownLength));
  return text.size() > shownLength ? shown + QStringLiteral("…") : shown;
}

}  // namespace

Ending UnreachableEnding(const QString& address, const QString& reason) {
  const QString text = QStringLiteral(
      "no server reached at %1 (%2).\n"
      "Start korvax-boards-server there, or give its address with --host and --port.");
  return {ExitCode::Unreachable, text.arg(address, reason)};
}

Ending ClosedEnding(const QString& address) {
  const QString text = QStringLiteral(
      "the server at %1 closed the connection before it answered.\n"
      "Check that korvax-boards-server still runs there.");
  return {ExitCode::Unreachable, text.arg(address)};
}

Ending NoAnswerEnding(const QString& address, double seconds) {
  const QString text = QStringLiteral(
      "no answer from %1 within %2 s.\n"
      "The server may be busy: a longer --timeout waits longer.");
  return {ExitCode::NoAnswer, text.arg(address).arg(seconds)};
}

Ending EmptyAnswerEnding(const QString& target, bool byPath) {
  const QString path = QStringLiteral(
      "empty answer: nothing with the full path \"%1\" answers to this query. Check\n"
      "- the path, letter for letter, as the server's configuration gives it:\n"
      "  processing/GROUP/filter_chain/CHAIN/chain/BLOCK, and that the chain is enabled there;\n"
      "- the kind of block: dumpers, oscilloscopes and \"commands\" answer to their bare name only;\n"
      "- the query: unknown commands get no answer, and high-voltage switches none even when they worked.");
  const QString name = QStringLiteral(
      "empty answer: nothing named \"%1\" answers to this query. Check\n"
      "- the name, letter for letter, as the server's configuration gives it;\n"
      "- the kind of block: spectra, time distributions, positions, images and rate counters answer to\n"
      "  their full path only, processing/GROUP/filter_chain/CHAIN/chain/%1;\n"
      "- the query: unknown commands get no answer, and high-voltage switches none even when they worked.");
  return {ExitCode::EmptyAnswer, (byPath ? path : name).arg(target)};
}

Ending UnknownQueryEnding(const QString& path) {
  const QString text = QStringLiteral(
      "the block \"%1\" is there, but has no answer to this query.\n"
      "Check \"cmd\", letter for letter; docs/queries.md lists what each kind of block knows.");
  return {ExitCode::UnknownQuery, text.arg(path)};
}

Ending OtherKindEnding(const QString& path) {
  const QString text = QStringLiteral(
      "the block \"%1\" is there, but is of another kind than this command draws.\n"
      "korvaxctl spectrum draws spectra, times time distributions, position position maps, image images.");
  return {ExitCode::UnknownQuery, text.arg(path)};
}

Ending BadAnswerEnding(const QString& target, const QString& what, const QString& answer) {
  const QString text = QStringLiteral(
      "\"%1\" gave an answer that does not fit: %2.\n"
      "It begins: %3\n"
      "Check that the target is a block of the right kind; korvaxctl query shows the whole answer.");
  return {ExitCode::BadAnswer, text.arg(target, what, Excerpt(answer))};
}

Ending NoChannelEnding(const QString& target, int channel) {
  const QString text = QStringLiteral(
      "\"%1\" has no channel %2.\n"
      "Its channels count from 0; \"ch_number\" in the server's configuration says how many there are.");
  return {ExitCode::BadAnswer, text.arg(target).arg(channel)};
}

}  // namespace korvax::client
