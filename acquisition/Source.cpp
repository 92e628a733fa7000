#include "acquisition/Source.h"

#include "boards/DigitizerBoard.h"
#include "framework/BlockParameters.h"
#include "framework/WorkerThread.h"

#include <QtDebug>

Source::Source(QObject* parent, const ChainContext& context, const QJsonValue& block)
    : KorvaxBlock(QStringLiteral("source"), false, context, parent) {
  ReadCommonKeys(block);
  ParseParameters(block);
  binding_ = SourceBinding::FromJson(block, context.boards);
  AddOutput();
  if (!binding_) {
    return;
  }
  if (binding_->board != nullptr) {
    distructor_ = std::make_unique<DataDistructorSource>(*binding_->board, binding_->endpointQuery);
  }
  watch_ = std::make_unique<ReadWatch>(Name(), binding_->EndpointPath());
  worker_ = std::make_unique<Source_Thread>(DataType(), *binding_, Outputs(), distructor_.get(),
                                            downloadIntervalMs_, *watch_);
  worker_->SetExpression(expression_);
  worker_->SetUseBoardKev(useBoardKev_);
}

Source::~Source() {
  StopWorker();
}

bool Source::ParseParameters(const QJsonValue& block) {
  korvax::ApplyParameters(block, {{QLatin1String("download_interval"),
                                   [this](const QJsonValue& value) {
                                     downloadIntervalMs_.store(value.toDouble(), std::memory_order_relaxed);
                                   }},
                                  {QLatin1String("energy_calibration_expression"),
                                   [this](const QJsonValue& value) {
                                     expression_ = value.toString();
                                     if (worker_) {
                                       worker_->SetExpression(expression_);
                                     }
                                   }},
                                  {QLatin1String("use_board_kev"), [this](const QJsonValue& value) {
                                     useBoardKev_ = value.toBool();
                                     if (worker_) {
                                       worker_->SetUseBoardKev(useBoardKev_);
                                     }
                                   }}});
  return true;
}

void Source::RequestStop() {
  if (worker_) {
    worker_->RequestStop();
  }
}

void Source::StopWorker() {
  if (worker_) {
    worker_->Stop();
  }
}

QJsonObject Source::Shape() const {
  const BoardEndpoint* const endpoint = binding_ ? binding_->Endpoint() : nullptr;
  return {{QStringLiteral("board"), endpoint != nullptr ? binding_->board->name : QString()},
          {QStringLiteral("endpoint"), endpoint != nullptr ? endpoint->name : QString()},
          {QStringLiteral("data_type"), DataType()}};
}

void Source::Run() {
  if (worker_) {
    watch_->Start();
    worker_->start(korvax::StreamPriority);
    if (!worker_->isRunning() && !worker_->isFinished()) {
      qInfo() << "Source" << Name()
              << "can't start its thread: no data will come from it. Give the server more memory or threads";
    }
  }
}

void Source::Stop() {
  Send(&BoardEndpoint::stopCommands);
}

void Source::Flush() {
  RestartClock();
  Send(&BoardEndpoint::resetCommands);
}

void Source::Start() {
  RestartClock();
  const BoardEndpoint* endpoint = binding_ ? binding_->Endpoint() : nullptr;
  if (endpoint != nullptr && endpoint->enabled) {
    Send(&BoardEndpoint::startCommands);
  }
}

void Source::RestartClock() {
  if (worker_) {
    worker_->RestartClock();
  }
}

void Source::Send(std::vector<BoardCommand> BoardEndpoint::*commands) const {
  const BoardEndpoint* endpoint = binding_ ? binding_->Endpoint() : nullptr;
  if (endpoint != nullptr) {
    binding_->board->SendCommands(endpoint->*commands);
  }
}
