#pragma once

#include "framework/KorvaxBlock.h"
#include "framework/QueryHandler.h"

struct BoardParameter;

/// The high voltage of one board, and the values of its parameters as the board gives them at the moment. No pins
/// and no worker. Clients find it at "Hardware/" and the board's name.
class HV : public KorvaxBlock, public QueryHandler {
  Q_OBJECT

public:
  static constexpr qint32 MostChannels = 1024;

  /// Binds the board that "sources" names; without it only errors are answered. Without a board list the block
  /// stays without a name, too.
  HV(QObject* parent, const ChainContext& context, const QJsonValue& block);

  /// "n_channels", the channels that array parameters are read for. More than MostChannels are a fault: false,
  /// and the number stays as it was.
  bool ParseParameters(const QJsonValue& block) override;
  QJsonObject Shape() const override;
  QueryReach Reach() const override { return QueryReach::Both; }

public slots:
  /// Switches the high voltage without an answer, or answers parameter values at one library call for each value.
  void InterpretMessage(QString* data_in, QString* data_out) override;

private:
  void BindBoards(const QJsonValue& block);
  void SendAndConfigure(const QString& command) const;
  QString Values(const QString& selection) const;
  QString AllValues() const;
  QString ReadOnlyValues() const;
  QString Field(const BoardParameter& parameter) const;
  QString ChannelValues(const QString& path) const;

  const DigitizerBoard* board_ = nullptr;
  qint32 channelCount_ = 0;
};
