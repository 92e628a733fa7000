#pragma once

#include "framework/ChainContext.h"

#include <QJsonObject>

namespace BlockFactory {

/// A new block of the type that the keyword names, letter case included; null for an unknown keyword.
std::unique_ptr<KorvaxBlock> Create(const QString& blockType, const ChainContext& context,
                                    const QJsonObject& block);

/// The known keywords, separated by ", ".
QString KnownTypes();

}  // namespace BlockFactory
