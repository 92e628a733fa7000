#include "client/HvCommand.h"

#include "client/HvQueries.h"
#include "client/QueryClient.h"
#include "client/Table.h"

#include <algorithm>

namespace korvax::client {

namespace {

using BoardValues = std::vector<BoardValue>;

Ending NotConnectedEnding(const QString& block) {
  const QString text = QStringLiteral(
      "the block \"%1\" has no board: \"sources\" in the server's configuration names none that is open.\n"
      "Check the name there, and the server's log for the board's connection.");
  return {ExitCode::Refused, text.arg(block)};
}

QStringList ScalarLines(const BoardValues& values) {
  Table table({QStringLiteral("parameter"), QStringLiteral("value")}, 2);
  for (const BoardValue& value : values) {
    table.Add({value.name, value.values.first()});
  }
  return values.empty() ? QStringList() : table.Lines();
}

/// A row a channel, a column a parameter.
QStringList ArrayLines(const BoardValues& values) {
  QStringList headings(QStringLiteral("channel"));
  int channels = 0;
  for (const BoardValue& value : values) {
    headings.append(value.name);
    channels = std::max(channels, static_cast<int>(value.values.size()));
  }
  Table table(headings, 0);
  for (int channel = 0; channel < channels; ++channel) {
    QStringList row(QString::number(channel));
    for (const BoardValue& value : values) {
      row.append(value.values.value(channel));
    }
    table.Add(row);
  }
  return values.empty() ? QStringList() : table.Lines();
}

void PrintValues(BoardValues values, Console& console) {
  const auto arrays =
      std::stable_partition(values.begin(), values.end(), [](const BoardValue& value) { return !value.isArray; });
  const QStringList scalarLines = ScalarLines({values.begin(), arrays});
  const QStringList arrayLines = ArrayLines({arrays, values.end()});
  QStringList lines = scalarLines;
  if (!scalarLines.empty() && !arrayLines.empty()) {
    lines.append(QString());
  }
  lines += arrayLines;
  if (lines.empty()) {
    lines.append(QStringLiteral("The board has no parameters: see \"configs\" in the server's configuration."));
  }
  console.Print(lines.join(QLatin1Char('\n')));
}

Ending Show(QueryClient& client, const QString& block, Console& console) {
  const Reply reply = client.AskAndWait(AllValuesQuery());
  if (reply.Failed()) {
    return reply.ending;
  }
  if (SaysNotConnected(reply.answer)) {
    return NotConnectedEnding(block);
  }
  const Read<BoardValues> values = ReadAllValues(reply.answer);
  if (!values.value) {
    return BadAnswerEnding(block, values.fault, reply.answer);
  }
  PrintValues(*values.value, console);
  return {};
}

Ending Switch(QueryClient& client, const HvRequest& request, Console& console) {
  const bool on = request.action == HvAction::On;
  const Reply reply = client.AskAndWait(SwitchQuery(on));
  if (!reply.Failed()) {
    return BadAnswerEnding(request.block, QStringLiteral("it is not empty"), reply.answer);
  }
  if (reply.ending.code != ExitCode::EmptyAnswer) {
    return reply.ending;
  }
  const Reply values = client.AskAndWait(ReadOnlyValuesQuery());
  if (values.Failed()) {
    return values.ending;
  }
  if (SaysNotConnected(values.answer)) {
    return NotConnectedEnding(request.block);
  }
  const QString text = QStringLiteral("%1 was sent the command to switch high voltage %2; show tells its values.");
  console.Print(text.arg(request.block, on ? QStringLiteral("on") : QStringLiteral("off")));
  return {};
}

}  // namespace

Ending RunHv(const ServerAddress& server, const HvRequest& request, Console& console) {
  QueryClient client(server, QueryTarget(request.block));
  return request.action == HvAction::Show ? Show(client, request.block, console)
                                          : Switch(client, request, console);
}

}  // namespace korvax::client
