#pragma once

#include <QString>

#include <memory>
#include <vector>

class DigitizerBoard;
class KorvaxBlock;

/// Boards in file order, blocks in the order of their creation. Owned by start-up for the life of the process. A
/// block reads the pins of blocks before it: stop all workers, then destroy from the back.
using BoardList = std::vector<std::unique_ptr<DigitizerBoard>>;
using BlockList = std::vector<std::unique_ptr<KorvaxBlock>>;

/// What chain assembly hands to the constructor of every block. The lists outlive the blocks; either may be
/// null in tests.
struct ChainContext {
  const BoardList* boards = nullptr;
  const BlockList* blocks = nullptr;
  QString fullPath;           ///< "processing/<group>/filter_chain/<chain>/chain/<block>"
  QString configurationPath;  ///< the file that start-up loaded
};
