#include "server/Startup.h"

#include "acquisition/Source.h"
#include "boards/DigitizerBoard.h"
#include "control/FileWatcher.h"
#include "control/MainWebSocket.h"
#include "control/korvax_commands.h"
#include "server/ChainAssembly.h"
#include "server/Configuration.h"
#include "server/HardwareSetup.h"
#include "server/TerminationSignals.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QtDebug>

namespace {

std::optional<int> PrepareStorage(const QString& folder) {
  const QFileInfo info(folder);
  if (!info.exists()) {
    qInfo() << "Storage folder does not exist on this server. Create: " << folder << " and check write permission";
    return 1;
  }
  if (!info.isWritable()) {
    qInfo() << "Storage folder is not writable. Create: " << folder
            << " and check write permission for current user";
    return 1;
  }
  qInfo() << "Storage folder is: " << folder;
  return std::nullopt;
}

}  // namespace

Startup::Startup(const QString& configurationPath) : configurationPath_(configurationPath) {}

Startup::~Startup() {
  webSocket_.reset();
  fileWatcher_.reset();
  // All sources at once, as each may still wait for its board; then the workers in chain order.
  ForEachSource([](Source& source) { source.RequestStop(); });
  ForEachSource([](Source& source) { source.StopWorker(); });
  for (const auto& block : blocks_) {
    block->StopWorker();
  }
  while (!blocks_.empty()) {
    blocks_.pop_back();  // consumers before the pins that they read
  }
}

std::optional<int> Startup::Prepare() {
  if (!QFileInfo::exists(configurationPath_)) {
    qInfo() << "Unable to locate configuration file " << configurationPath_;
    qInfo() << "BOARD SERVER IS CLOSING...";
    qInfo() << "BOARD SERVER IS KILLED";
    return 1;
  }
  qInfo() << "Velmor - Korvax is starting";
  qInfo() << "Board server configuration is: " << configurationPath_;
  plugins_.LoadAll(QCoreApplication::applicationDirPath() + QStringLiteral("/boards/"));

  const std::optional<Configuration> configuration = Configuration::Load(configurationPath_);
  if (!configuration) {
    qInfo() << "Configuration file " << configurationPath_ << "is invalid";
    return 1;
  }
  if (const std::optional<int> failure = PrepareStorage(configuration->storagePath)) {
    return failure;
  }
  if (configuration->hardware.isEmpty()) {
    qInfo() << "No HARDWARE devices is configuration file " << configurationPath_;
    return 1;
  }
  if (const std::optional<int> failure = ReadNetwork(*configuration)) {
    return failure;
  }
  if (const auto failure = HardwareSetup::ConnectBoards(configuration->hardware, plugins_, boards_)) {
    return failure;
  }
  if (const std::optional<int> failure = BuildChain(*configuration)) {
    return failure;
  }
  ArmBoards();
  WatchConfiguration();
  webSocket_ = std::make_unique<MainWebSocket>(Port, false, &blocks_, nullptr, network_);
  ForEachSource([](Source& source) { source.Run(); });
  AddRunControl();
  return std::nullopt;
}

std::optional<int> Startup::ReadNetwork(const Configuration& configuration) {
  const QString fault = network_.Read(configuration.network);
  if (fault.isEmpty()) {
    return std::nullopt;
  }
  qInfo().noquote() << fault;
  return 1;
}

std::optional<int> Startup::BuildChain(const Configuration& configuration) {
  const QString fault = ChainAssembly(boards_, blocks_, configurationPath_).Build(configuration.processing);
  if (fault.isEmpty()) {
    return std::nullopt;
  }
  qInfo().noquote() << fault;
  return 1;
}

void Startup::WatchConfiguration() {
  fileWatcher_ = std::make_unique<FileWatcher>(boards_);
  if (!fileWatcher_->addPath(configurationPath_)) {
    qInfo() << "Configuration file" << configurationPath_
            << "can't be watched: boards aren't configured again when it changes. Free inotify watches"
               " (fs.inotify.max_user_watches) and start again";
  }
}

void Startup::AddRunControl() {
  auto commands =
      std::make_unique<korvax_commands>(nullptr, ChainContext{&boards_, &blocks_, {}, configurationPath_});
  commands->SetName(QStringLiteral("commands"));
  blocks_.push_back(std::move(commands));
}

void Startup::ArmBoards() const {
  for (const auto& board : boards_) {
    board->ConfigureBoard();
    board->StopEndpoints();
    board->ArmEndpoints();
  }
}

void Startup::ForEachSource(const std::function<void(Source&)>& action) const {
  for (const auto& block : blocks_) {
    if (auto* const source = qobject_cast<Source*>(block.get())) {
      action(*source);
    }
  }
}

int Startup::Run() {
  const TerminationSignals quitOnSignal;  // before the line below: who waits for it may signal at once
  qInfo() << "KORVAX IS STARTED AND READY";
  return QCoreApplication::exec();
}
