#include "sinks/Image_Thread.h"

using korvax::Fate;

Image_Thread::Image_Thread(const KorvaxBlock::InputPins& inputs, qint32 rows, qint32 columns)
    : SinkThread(inputs, When::Running, {Fate::Counted, Fate::OutOfRange}),
      immediate_(rows, columns),
      cumulative_(rows, columns),
      taken_(rows, columns) {}

QString Image_Thread::Fault() const {
  for (const korvax::CountGrid* image : {&immediate_, &cumulative_, &taken_}) {
    const QString fault =
        image->Fault(QStringLiteral("entries of \"y_positions\" times those of \"x_positions\""));
    if (!fault.isEmpty()) {
      return fault;
    }
  }
  return {};
}

const korvax::CountGrid& Image_Thread::TakeImmediate() {
  taken_.Reset();
  const korvax::Lock lock(Mutex());
  std::swap(taken_, immediate_);
  return taken_;
}

korvax::Fates Image_Thread::Count(const PayloadBatch& batch) {
  return korvax::CountEvents(batch, Fate::OutOfRange, [this](const auto& event) { return CountEvent(event); });
}

bool Image_Thread::CountEvent(const KorvaxPayload_Energy& event) {
  const auto channel = static_cast<qint32>(event.channel);
  const qint32 row = channel / cumulative_.Columns();
  if (channel < 0 || row >= cumulative_.Rows()) {
    return false;
  }
  const qint32 column = channel % cumulative_.Columns();
  immediate_.Count(row, column);
  cumulative_.Count(row, column);
  return true;
}
