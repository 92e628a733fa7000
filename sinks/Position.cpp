#include "sinks/Position.h"

#include "framework/BlockParameters.h"
#include "framework/ByteWriter.h"
#include "sinks/SinkData.h"

Position::Position(QObject* parent, const ChainContext& context, const QJsonValue& block)
    : AnalysisSink(QStringLiteral("position"), context, block, parent) {
  ParseParameters(block);
  connect(Inputs().front().get(), &PinInput::DataReady, this, &Position::NewDataInTheInputPin);
  worker_ = Start(std::make_unique<Position_Thread>(Inputs(), wiring_, rows_));
  SetFault(worker_->Map().Fault(QStringLiteral("\"y_positions\" times half the entries of \"positions\"")));
  worker_->SetEnergyWindow(window_);
}

bool Position::ParseParameters(const QJsonValue& block) {
  korvax::ApplyParameters(
      block, {{QLatin1String("positions"),
               [this](const QJsonValue& value) { wiring_.positions = korvax::Integers(value); }},
              {QLatin1String("correlated_channels"),
               [this](const QJsonValue& value) { wiring_.partners = korvax::Integers(value); }},
              {QLatin1String("y_positions"), [this](const QJsonValue& value) { rows_ = value.toInt(); }},
              {QLatin1String("energy_cut_min"),
               [this](const QJsonValue& value) { SetCut(window_.min, value.toDouble()); }},
              {QLatin1String("energy_cut_max"),
               [this](const QJsonValue& value) { SetCut(window_.max, value.toDouble()); }}});
  return true;
}

void Position::SetCut(double& cut, double value) {
  cut = value;
  if (worker_) {
    worker_->SetEnergyWindow(window_);
  }
}

QJsonObject Position::Shape() const {
  return korvax::RowsAndColumns(worker_->Map());
}

void Position::AppendData(const korvax::SinkQuery& query, korvax::ByteWriter& out) {
  if (query.source == QLatin1String("scatter")) {
    AppendScatter(out);
  } else if (query.source == QLatin1String("heatmap")) {
    AppendHeatmap(out);
  }
}

void Position::AppendScatter(korvax::ByteWriter& out) {
  std::vector<double> xs;
  std::vector<double> ys;
  for (const std::vector<korvax::StripPoint>& frame : worker_->TakeFrames()) {
    for (const korvax::StripPoint& point : frame) {
      xs.push_back(point.x);
      ys.push_back(point.y);
    }
  }
  out.Text("{\"data\":[{\"x\":[").Joined(xs).Text("]},{\"y\":[").Joined(ys).Text("]}]}");
}

void Position::AppendHeatmap(korvax::ByteWriter& out) const {
  const korvax::CountGrid& map = worker_->Map();
  out.Text("{\"data\":[");
  for (qint32 row = 0; row < map.Rows(); ++row) {
    out.Text("[");
    map.AppendRow(row, out);
    // Kept: the brackets close with the last counter and the last row, so a map without columns or rows stays
    // open.
    out.Text(map.Columns() > 0 ? "]" : "").Text(row + 1 < map.Rows() ? "," : "]");
  }
  out.Text("}");
}
