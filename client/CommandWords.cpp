#include "client/CommandWords.h"

#include <algorithm>
#include <cmath>

namespace korvax::client {

namespace {

constexpr double longestSeconds = 86400;

}  // namespace

CLI::Validator Seconds(double least) {
  const auto fault = [least](const std::string& word) {
    const double seconds = Text(word).toDouble();
    // Not a number compares as out of range.
    if (seconds >= least && seconds <= longestSeconds) {
      return std::string();
    }
    const QString text = QStringLiteral("Value %1 not in range %2 to %3");
    return text.arg(Text(word)).arg(least).arg(longestSeconds).toStdString();
  };
  return {fault, ""};
}

CLI::Option* AddWord(CLI::App& command, const char* name, const char* description, std::string& value) {
  const auto fault = [](const std::string& word) { return std::string(word.empty() ? "it is empty" : ""); };
  return command.add_option(name, value, description)
      ->required()
      ->check(CLI::Validator(fault, ""))
      ->option_text(" ");
}

void AddJson(CLI::App& command, bool& json) {
  command.add_flag("--json", json, "Print the server's answer as it came");
}

std::chrono::milliseconds Milliseconds(double seconds) {
  return std::chrono::milliseconds(std::max(1LL, std::llround(seconds * 1000)));
}

QString Text(const std::string& utf8) {
  return QString::fromUtf8(utf8.data(), static_cast<int>(utf8.size()));
}

}  // namespace korvax::client
