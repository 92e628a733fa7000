#include "boards/HV.h"

#include "boards/ChannelPath.h"
#include "boards/DigitizerBoard.h"
#include "framework/BlockParameters.h"
#include "framework/QueryArgs.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QtDebug>

#include <algorithm>

namespace {

enum class Layout { Scalar, PerChannel, LeftOut };

Layout LayoutOf(ParameterValueType type) {
  switch (type) {
    case ParameterValueType::List:
    case ParameterValueType::U32:
    case ParameterValueType::Boolean:
      return Layout::Scalar;
    case ParameterValueType::BoolArray:
    case ParameterValueType::ListArray:
    case ParameterValueType::U32Array:
      return Layout::PerChannel;
    case ParameterValueType::StringArray:
    case ParameterValueType::Unset:
      break;
  }
  return Layout::LeftOut;
}

// Whatever the library leaves in the text, whether it fails or not.
QString ValueOf(const DigitizerBoard& board, const QString& path) {
  QString value;
  board.GetValue(path, value);
  return value;
}

const DigitizerBoard* FindBoard(const BoardList& boards, const QString& name) {
  const auto found =
      std::find_if(boards.begin(), boards.end(), [&](const auto& board) { return board->name == name; });
  return found == boards.end() ? nullptr : found->get();
}

}  // namespace

HV::HV(QObject* parent, const ChainContext& context, const QJsonValue& block)
    : KorvaxBlock(QStringLiteral("hv"), false, context, parent) {
  if (context.boards == nullptr) {
    return;
  }
  ReadCommonKeys(block);
  BindBoards(block);
  ParseParameters(block);
}

void HV::BindBoards(const QJsonValue& block) {
  const QJsonArray sources = block.toObject()["sources"].toArray();
  for (const QJsonValue& entry : sources) {
    const QString source = entry.toObject()["source"].toString();
    if (const DigitizerBoard* const found = FindBoard(*Context().boards, source)) {
      board_ = found;
    } else {
      qInfo() << "Warning: a hv source block " << Name()
              << " has been detected but the related board has not been found";
    }
    SetFullPath(QStringLiteral("Hardware/") + source);
  }
}

bool HV::ParseParameters(const QJsonValue& block) {
  qint32 count = channelCount_;
  korvax::ApplyParameters(
      block, {{QLatin1String("n_channels"), [&count](const QJsonValue& value) { count = value.toInt(); }}});
  if (count > MostChannels) {
    SetFault(QStringLiteral("\"n_channels\": expected at most %1; found %2").arg(MostChannels).arg(count));
    return false;
  }
  channelCount_ = count;
  return true;
}

QJsonObject HV::Shape() const {
  return {{QStringLiteral("board"), board_ != nullptr ? board_->name : QString()}};
}

void HV::InterpretMessage(QString* data_in, QString* data_out) {
  const korvax::QueryArgs args(*data_in);
  const QString command = args.Text("cmd");
  if (command == QLatin1String("hv_global_on")) {
    SendAndConfigure(QStringLiteral("commands\\global_on"));
  } else if (command == QLatin1String("hv_global_off")) {
    SendAndConfigure(QStringLiteral("commands\\global_off"));
  } else if (command == QLatin1String("get_all_ch_values")) {
    data_out->append(Values(args.Text("param")));
  }
}

void HV::SendAndConfigure(const QString& command) const {
  if (board_ != nullptr) {
    board_->SendCommand(command);
    board_->ConfigureBoard();
  }
}

QString HV::Values(const QString& selection) const {
  if (board_ == nullptr) {
    return QStringLiteral("{\"response\":\"error\", \"reason\":\"Board not connected\"}");
  }
  if (selection == QLatin1String("all")) {
    return AllValues();
  }
  return selection == QLatin1String("read_only") ? ReadOnlyValues() : QString();
}

QString HV::AllValues() const {
  QString answer = QStringLiteral("{\"response\":\"ok\",");
  const std::vector<BoardParameter>& parameters = board_->Parameters();
  for (const BoardParameter& parameter : parameters) {
    const QString field = Field(parameter);
    answer += field;
    // Kept: the comma goes by the place in the whole list, so a last parameter that is left out leaves one behind.
    if (!field.isEmpty() && &parameter != &parameters.back()) {
      answer += QLatin1Char(',');
    }
  }
  return answer + QLatin1Char('}');
}

QString HV::ReadOnlyValues() const {
  QString answer = QStringLiteral("{\"data\":[");
  int met = 0;
  for (const BoardParameter& parameter : board_->Parameters()) {
    if (parameter.writable) {
      continue;
    }
    // Kept: a parameter that is left out counts, so that the comma of the next one follows nothing.
    if (met++ > 0) {
      answer += QLatin1Char(',');
    }
    const Layout layout = LayoutOf(parameter.type);
    if (layout != Layout::LeftOut) {
      answer += QLatin1Char('{') + Field(parameter);
    }
    // Kept: the entry of a per-channel parameter stays unclosed.
    if (layout == Layout::Scalar) {
      answer += QLatin1Char('}');
    }
  }
  return answer + QLatin1String("]}");
}

// Name and value as they stand, with no quotes or escapes of ours inside; empty for a type that is left out.
QString HV::Field(const BoardParameter& parameter) const {
  const Layout layout = LayoutOf(parameter.type);
  if (layout == Layout::LeftOut) {
    return {};
  }
  return QLatin1Char('"') + parameter.name + QLatin1String("\":") +
         (layout == Layout::Scalar ? ValueOf(*board_, parameter.path) : ChannelValues(parameter.path));
}

QString HV::ChannelValues(const QString& path) const {
  QStringList values;
  for (qint32 channel = 0; channel < channelCount_; ++channel) {
    values << ValueOf(*board_, korvax::ChannelPath(path, channel));
  }
  return QLatin1Char('[') + values.join(QLatin1Char(',')) + QLatin1Char(']');
}
