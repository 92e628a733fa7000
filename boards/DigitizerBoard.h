#pragma once

#include "boards/BoardCommand.h"
#include "boards/BoardEndpoint.h"
#include "boards/BoardParameter.h"
#include "boards/VendorLibrary.h"

#include <vector>

/// The connection to one digitizer through its board library, and the board's description from one "Hardware"
/// entry. Results are 0, the library's code unchanged, or one of the two codes below. Without a lock: the
/// library accepts concurrent calls on one handle; the parameters belong to the main thread, and endpoints and
/// commands change only before the acquisition threads read them.
class DigitizerBoard {
public:
  static constexpr qint32 AlreadyOpen = -4;
  static constexpr qint32 FunctionMissing = -15;
  static constexpr qint32 ReadTimeoutMs = 1000;

  explicit DigitizerBoard(vendor::FunctionLookup library);

  // Set by start-up.
  qint32 id = 0;
  QString name;
  QString type;
  QString family;
  QString pluginName;

  quint64 Handle() const { return handle_; }
  bool IsConnected() const { return connected_; }
  const std::vector<BoardParameter>& Parameters() const { return parameters_; }
  const std::vector<BoardEndpoint>& Endpoints() const { return endpoints_; }
  const std::vector<BoardCommand>& Commands() const { return commands_; }

  /// Once in a board's life; AlreadyOpen afterwards. The handle is kept even when the library reports an error.
  qint32 Open(const QString& connectionString);
  qint32 SendCommand(const QString& query) const;
  /// Logs what it sets, also when the function is missing.
  qint32 SetValue(const QString& path, const QString& value) const;
  /// `out` stays as it was when the function is missing.
  qint32 GetValue(const QString& query, QString& out) const;
  /// Any thread. `block` is the caller's 16-byte read block; what it points to belongs to the library until
  /// FreePointer.
  qint32 ReadData(const QString& query, void* block) const;
  qint32 FreePointer(const QString& query, void* block) const;

  /// Replaces the parameter tree by the entry's "configs" and writes the parameters marked for it. Always true:
  /// a failing write is only shown in the log.
  bool ApplyConfigs(const QJsonObject& entry);
  /// Replaces the endpoints by the entry's "endpoints". Always true. Before any source is bound only: sources and
  /// their threads refer to the endpoints.
  bool LoadEndpoints(const QJsonObject& entry);
  /// Reads the entry's "commands" and attaches them to the endpoints, which must be loaded before.
  void LoadCommands(const QJsonObject& entry);

  /// Sends every "config_all" command, or where there is none the unattached "config" ones; then stops,
  /// configures and (when enabled) starts each endpoint. Results of sent commands are ignored here and below.
  void ConfigureBoard() const;
  void StopEndpoints() const;
  /// Resets and starts the enabled endpoints.
  void ArmEndpoints() const;
  void SendCommands(const std::vector<BoardCommand>& commands) const;

private:
  template <typename Function>
  Function* Lookup(const char* functionName) const;
  void WriteParameter(const BoardParameter& parameter) const;
  void SendBoardWideConfig() const;

  const vendor::FunctionLookup library_;
  std::uint64_t handle_ = 0;
  bool connected_ = false;
  std::vector<BoardParameter> parameters_;
  std::vector<BoardEndpoint> endpoints_;
  std::vector<BoardCommand> commands_;
};
