// The input is the text of a configuration file: read, turned into settings, boards and blocks, applied again as
// after a change of the file, and torn down as the server does.

#include "control/FileWatcher.h"
#include "control/NetworkSettings.h"
#include "framework/KorvaxBlock.h"
#include "server/Configuration.h"
#include "tests/fuzz/FakeChain.h"
#include "tests/fuzz/FuzzProcess.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Prepare();
  const QByteArray text(reinterpret_cast<const char*>(data), static_cast<int>(size));
  const QString path = fuzz::WriteScratchFile(QStringLiteral("configuration.json"), text);
  const std::optional<Configuration> configuration = Configuration::Load(path);
  if (!configuration) {
    return 0;
  }
  NetworkSettings().Read(configuration->network);
  fuzz::FakeChain chain;
  chain.AddBoards(configuration->hardware);
  chain.AddBlocks(configuration->processing, path);
  FileWatcher(chain.boards).fileChanged(path);
  return 0;
}
