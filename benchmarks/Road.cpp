#include "benchmarks/Road.h"

#include "acquisition/Source.h"
#include "benchmarks/PreparedBoard.h"
#include "boards/DigitizerBoard.h"
#include "control/Ledger.h"
#include "framework/QueryHandler.h"
#include "server/ChainAssembly.h"

#include <QEventLoop>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTimer>
#include <QtDebug>

#include <sys/resource.h>
#include <chrono>

namespace bench {

namespace {

double CpuSeconds() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  const auto seconds = [](const timeval& t) {
    return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_usec) * 1e-6;
  };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

double WallSeconds() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

constexpr const char* Chain = R"([{"filter_chain": [{"name": "c", "enable": true, "chain": [
  {"block_type": "source", "name": "source", "data_type": "%1",
   "sources": [{"source": "BOARD", "pin": "endpoints\\energy"}],
   "parameters": [{"param_name": "download_interval", "param_value": 0}%2]}%3]}]}])";

QJsonArray Processing(const QString& dataType, const QString& sourceParameters, const QString& blocks) {
  const QString text = QString::fromLatin1(Chain).arg(
      dataType, sourceParameters.isEmpty() ? QString() : QLatin1Char(',') + sourceParameters,
      blocks.isEmpty() ? QString() : QLatin1Char(',') + blocks);
  const QJsonArray processing = QJsonDocument::fromJson(text.toUtf8()).array();
  if (processing.isEmpty()) {
    qFatal("No JSON: %s", qPrintable(text));
  }
  return processing;
}

std::unique_ptr<DigitizerBoard> NewBoard() {
  auto board = std::make_unique<DigitizerBoard>(PreparedBoard::Lookup());
  board->name = QStringLiteral("BOARD");
  board->Open(QStringLiteral("prepared"));
  board->LoadEndpoints(QJsonDocument::fromJson(R"({"endpoints": [{"name": "energy", "enable": true}]})").object());
  return board;
}

}  // namespace

Cost Measure(const std::function<void()>& work) {
  const double cpu = CpuSeconds();
  const double wall = WallSeconds();
  work();
  return {CpuSeconds() - cpu, WallSeconds() - wall};
}

Road::Road(const QString& dataType, const QString& sourceParameters, const QString& blocks) {
  boards_.push_back(NewBoard());
  const QString fault =
      ChainAssembly(boards_, blocks_, QString()).Build(Processing(dataType, sourceParameters, blocks));
  if (!fault.isEmpty()) {
    qFatal("%s", qPrintable(fault));
  }
}

Road::~Road() {
  for (const auto& block : blocks_) {
    block->StopWorker();
  }
  while (!blocks_.empty()) {
    blocks_.pop_back();
  }
}

KorvaxBlock& Road::Block(const QString& name) const {
  for (const auto& block : blocks_) {
    if (block->Name() == name) {
      return *block;
    }
  }
  qFatal("No block %s", qPrintable(name));
}

QString Road::Ask(const QString& name, const QString& query) const {
  QString message = query;
  QString answer;
  dynamic_cast<QueryHandler&>(Block(name)).InterpretMessage(&message, &answer);
  return answer;
}

// Nothing waits in a pin and no block has anything in hand. What an order buffer holds back stays there.
bool Road::IsAtRest() const {
  for (const auto& block : blocks_) {
    for (const auto& input : block->Inputs()) {
      const bool isLinked = input->Upstream() != nullptr;
      if (isLinked && (input->Level() > 0 || block->Records()->Get().received != input->TakenRecords())) {
        return false;
      }
    }
  }
  return true;
}

// A wake-up that came while a worker was about to wait has left its message behind.
void Road::Nudge() const {
  for (const auto& block : blocks_) {
    for (const auto& input : block->Inputs()) {
      if (input->Level() > 0) {
        input->NewDataInTheOutputPin(input->Level());
      }
    }
  }
}

quint64 Road::Lost() const {
  using korvax::Fate;
  quint64 lost = 0;
  const korvax::Ledger ledger = korvax::Ledger::Of(blocks_);
  for (const korvax::Ledger::Entry& entry : ledger.Entries()) {
    for (const PinCounts& output : entry.outputs) {
      lost += output.dropped;
    }
    for (const Fate fate : {Fate::DroppedFull, Fate::NotWritten, Fate::WhilePaused, Fate::Refused, Fate::Other}) {
      lost += entry.account.fates[fate];
    }
    if (entry.type != QLatin1String("oscilloscope")) {  // that books what it shows but doesn't record
      lost += entry.account.fates[Fate::WhileStopped];
    }
  }
  return lost;
}

void Road::StartCounting(const QString& name) const {
  Ask(name, QStringLiteral(R"({"args": [{"cmd": "run_control", "status": "freerun"}]})"));
}

Passage Road::Run(const std::function<void()>& meanwhile) {
  auto& source = dynamic_cast<Source&>(Block(QStringLiteral("source")));
  const quint64 madeBefore = source.Records()->Get().made;
  const quint64 lostBefore = Lost();
  Passage passage;
  passage.cost = Measure([&] {
    QEventLoop loop;
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer, &QTimer::timeout, &loop, [&] {
      if (meanwhile) {
        meanwhile();
      }
      if (PreparedBoard::IsDone()) {
        Nudge();
        if (IsAtRest()) {
          loop.quit();
        }
      }
    });
    timer.start(1);
    source.Run();
    loop.exec();
  });
  source.StopWorker();
  if (!korvax::Ledger::Of(blocks_).IsBalanced()) {
    qFatal("The account of the records doesn't balance.");
  }
  passage.made = source.Records()->Get().made - madeBefore;
  passage.lost = Lost() - lostBefore;
  return passage;
}

}  // namespace bench
