#pragma once

#include "client/Endings.h"
#include "client/QueryTarget.h"
#include "client/SpectrumPicture.h"

#include <chrono>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace korvax::client {

/// korvaxctl query TARGET JSON
struct QueryRequest {
  QString target;
  QString json;
};

enum class SinkAction { Start, Stop, Reset, Status };

/// korvaxctl start, stop, reset or status PATH
struct SinkRequest {
  SinkAction action = SinkAction::Status;
  QString path;
};

/// korvaxctl spectrum PATH; the channels ascend, none stands there twice.
struct SpectrumRequest {
  QString path;
  std::vector<int> channels{0};
  BinRange range;
  bool logarithmic = false;
  bool live = false;
  std::chrono::milliseconds interval{1000};
  std::optional<int> width;
  std::optional<int> height;
};

struct Invocation {
  ServerAddress server;
  std::variant<QueryRequest, SinkRequest, SpectrumRequest> request;
};

/// Reads the words after the program's name, in UTF-8. Gives an ending instead where nothing is to be done:
/// Ok with the text that --help or --version asked for, Usage with what is wrong and where help is found.
std::variant<Invocation, Ending> ParseCommandLine(const std::vector<std::string>& words);

}  // namespace korvax::client
