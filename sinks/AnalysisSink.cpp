#include "sinks/AnalysisSink.h"

#include "framework/Answers.h"
#include "sinks/SinkQuery.h"

namespace korvax {

namespace {

// One huge answer must not keep its memory for good.
constexpr std::size_t LargestKeptText = std::size_t{16} << 20;

}  // namespace

AnalysisSink::AnalysisSink(const QString& blockType, const ChainContext& context, const QJsonValue& block,
                           QObject* parent)
    : KorvaxBlock(blockType, false, context, parent) {
  ReadCommonKeys(block);
  AddInput();
}

AnalysisSink::~AnalysisSink() {
  StopWorker();
}

void AnalysisSink::StopWorker() {
  worker_->Stop();
}

void AnalysisSink::Answer(const QString& message, QString& answer) {
  const SinkQuery query = SinkQuery::Parse(message);
  if (query.command == QLatin1String("get_data")) {
    text_.Clear();
    AppendData(query, text_);
    answer.append(QLatin1String(text_.View().data(), static_cast<int>(text_.Size())));
    if (text_.Size() > LargestKeptText) {
      text_ = ByteWriter();
    }
  } else if (query.command == QLatin1String("reset")) {
    worker_->Reset();
    answer.append(answers::Success());
  } else if (query.command == QLatin1String("data_get_status")) {
    answer.append(worker_->IsRunning() ? QStringLiteral("[{\"response\": true, \"status\":\"freerun\"}]")
                                       : QStringLiteral("[{\"response\": true, \"status\":\"idle\"}]"));
  } else if (query.command == QLatin1String("run_control")) {
    worker_->SetRunning(query.status == QLatin1String("freerun"));
    answer.append(answers::Success());
  }
}

}  // namespace korvax
