#pragma once

#include "configuration/FindingList.h"
#include "configuration/Layout.h"

#include <QHash>
#include <QSet>

#include <optional>

namespace korvax {

/// Adds what is wrong with the links between blocks: inputs that can't be linked, output pins that feed several
/// inputs or none, data that the block doesn't take. Goes through the blocks as the server builds them.
class LinkCheck {
public:
  LinkCheck(const Layout& layout, FindingList& findings) : layout_(layout), findings_(findings) {}

  void Check();

private:
  /// What an output pin gives, as far as it is known.
  struct Stream {
    QString dataType;  // of the source at its head
    QString source;    // that source's name
    QString tee;       // the name of a tee on the way; empty without one
  };

  void CheckName(std::size_t block);
  void CheckReach(const BlockEntry& block) const;
  void CheckInputs(std::size_t block, int pins);
  bool CheckInputCount(const BlockEntry& block, int pins) const;
  void CheckLink(std::size_t block, const QStringList& path, const QJsonObject& source);
  std::optional<std::size_t> FindUpstream(const QStringList& path, const QString& name) const;
  void TakeFeed(std::size_t block, std::size_t upstream, int pin, const QStringList& path);
  void CheckData(const BlockEntry& block, const Stream& stream, const QStringList& path) const;
  void CheckUnread(std::size_t block) const;

  const Layout& layout_;
  FindingList& findings_;
  QSet<QString> allNames_;
  QStringList earlierNames_;                            // the keys of the next
  QHash<QString, std::size_t> firsts_;                  // the first block of each name, of those so far
  std::vector<Stream> streams_;                         // by block
  std::vector<QHash<int, const BlockEntry*>> readers_;  // by block and output pin
};

}  // namespace korvax
