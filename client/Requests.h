#pragma once

#include <QString>

#include <chrono>
#include <optional>
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

/// Whether a view is drawn once, or again and again with this long between two readings.
struct Refresh {
  bool live = false;
  std::chrono::milliseconds interval{1000};
};

/// In characters; what is absent is as the terminal has it.
struct PictureSize {
  std::optional<int> width;
  std::optional<int> height;
};

/// The bins to show, both ends included; an absent `last` is the channel's last bin.
struct BinRange {
  int first = 0;
  std::optional<int> last;

  bool operator==(const BinRange&) const = default;
};

/// korvaxctl spectrum PATH or times PATH; the channels ascend, none stands there twice.
struct SpectrumRequest {
  QString path;
  bool countsWhenIdle = false;  ///< as a time distribution does
  std::vector<int> channels{0};
  BinRange range;
  bool logarithmic = false;
  Refresh refresh;
  PictureSize size;
};

/// What a map is read from: a position map, or either image of an image block.
enum class MapSource { Position, CumulativeImage, ImmediateImage };

/// korvaxctl position PATH or image PATH
struct HeatMapRequest {
  QString path;
  MapSource source = MapSource::Position;
  bool logarithmic = false;
  bool colours = true;  ///< where the terminal has them
  Refresh refresh;
  PictureSize size;
};

/// korvaxctl scope NAME; the channels ascend, none stands there twice.
struct ScopeRequest {
  QString name;
  std::vector<int> channels{0};
  Refresh refresh;
  PictureSize size;
};

/// korvaxctl rates PATH
struct RatesRequest {
  QString path;
  bool logarithmic = false;
  Refresh refresh;
};

enum class RunAction { Start, Stop, Pause, Restart, Info };

/// korvaxctl run start ID, run stop, run pause, run restart or run info
struct RunRequest {
  RunAction action = RunAction::Info;
  QString id;          ///< Start: neither empty nor with a "/"
  bool force = false;  ///< do it whatever the dumpers are at
};

enum class HvAction { Show, On, Off };

/// korvaxctl hv BLOCK show, on or off
struct HvRequest {
  QString block;
  HvAction action = HvAction::Show;
};

/// korvaxctl blocks
struct BlocksRequest {
  bool json = false;
};

/// korvaxctl ledger
struct LedgerRequest {
  bool json = false;
};

enum class FilesAction { Summary, Check, Csv };

/// korvaxctl files summary, check or csv PATH...
struct FilesRequest {
  FilesAction action = FilesAction::Summary;
  std::vector<QString> paths;  ///< of run files, or of folders that hold some
  QString output;              ///< Csv: the file to create; empty means standard output
};

/// korvaxctl files verify FOLDER...
struct VerifyRequest {
  std::vector<QString> folders;
};

/// korvaxctl files recover FILE OUT
struct RecoverRequest {
  QString file;
  QString output;
};

/// korvaxctl check FILE, or --schema without one
struct CheckRequest {
  QString file;
  bool schema = false;
};

using Request = std::variant<QueryRequest, BlocksRequest, SinkRequest, SpectrumRequest, HeatMapRequest,
                             ScopeRequest, RatesRequest, RunRequest, HvRequest, LedgerRequest, FilesRequest,
                             VerifyRequest, RecoverRequest, CheckRequest>;

}  // namespace korvax::client
