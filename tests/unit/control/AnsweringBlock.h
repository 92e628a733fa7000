#pragma once

#include "framework/KorvaxBlock.h"
#include "framework/QueryHandler.h"

#include <QStringList>

/// A block, reached as the type that it plays, that answers "<its name>:<the query>" and keeps the queries it got.
class AnsweringBlock : public KorvaxBlock, public QueryHandler {
public:
  AnsweringBlock(const QString& type, const QString& name, const QString& fullPath)
      : KorvaxBlock(type, false, {nullptr, nullptr, fullPath, {}}, nullptr) {
    SetName(name);
  }

  void InterpretMessage(QString* data_in, QString* data_out) override {
    queries << *data_in;
    data_out->append(answer.isNull() ? Name() + ":" + *data_in : answer);
    data_in->clear();  // it is the block's own copy
  }

  QueryReach Reach() const override {
    if (BlockType() == "hv") {
      return QueryReach::Both;
    }
    return QStringList{"dumper", "oscilloscope", "commands"}.contains(BlockType()) ? QueryReach::ByName
                                                                                  : QueryReach::ByPath;
  }

  QStringList queries;
  QString answer;  ///< answered instead, when set
};

/// A block that answers no queries, whatever its type word says.
class SilentBlock : public KorvaxBlock {
public:
  SilentBlock(const QString& type, const QString& name, const QString& fullPath)
      : KorvaxBlock(type, false, {nullptr, nullptr, fullPath, {}}, nullptr) {
    SetName(name);
  }
};
