#pragma once

#include "control/NetworkSettings.h"
#include "framework/ChainContext.h"
#include "server/BoardPlugins.h"

#include <QString>

#include <functional>
#include <optional>

class FileWatcher;
class MainWebSocket;
class Source;
struct Configuration;

/// Brings the server up in its fixed order and owns everything that lives as long as the process. Main thread.
class Startup {
public:
  /// The port that clients connect to.
  static constexpr quint16 Port = 51234;

  explicit Startup(const QString& configurationPath);
  ~Startup();

  /// Everything up to the event loop. On a failure, which it has logged, the exit status.
  std::optional<int> Prepare();

  /// Reports that the server is ready and runs the event loop; its result is the exit status. After a termination
  /// signal the workers are joined, sources first, once they have consumed what has reached them.
  int Run();

private:
  std::optional<int> ReadNetwork(const Configuration& configuration);
  std::optional<int> BuildChain(const Configuration& configuration);
  void ArmBoards() const;
  void WatchConfiguration();
  void AddRunControl();
  void ForEachSource(const std::function<void(Source&)>& action) const;

  const QString configurationPath_;
  BoardPlugins plugins_;
  BoardList boards_;
  BlockList blocks_;
  NetworkSettings network_;
  std::unique_ptr<FileWatcher> fileWatcher_;
  std::unique_ptr<MainWebSocket> webSocket_;
};
