// The whole road: the simulated board at full speed, a source, a spectrum, the event loop between them. Prints
// events a second, what was dropped at the full pin, and the CPU time of all threads an event.
//
// korvax-bench-road BOARD-LIBRARY-FOLDER [BLOCKS [EVENTS-A-BLOCK]]

#include "acquisition/Source.h"
#include "boards/DigitizerBoard.h"
#include "server/BoardPlugins.h"
#include "sinks/Histogram.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTimer>
#include <QtDebug>

#include <sys/resource.h>
#include <cstdio>

namespace {

constexpr int Channels = 64;

double CpuSeconds() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  const auto seconds = [](const timeval& t) {
    return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_usec) * 1e-6;
  };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

QJsonObject Parse(const char* json) {
  return QJsonDocument::fromJson(json).object();
}

std::unique_ptr<DigitizerBoard> OpenBoard(const QLibrary& library, qint64 blocks, qint64 events) {
  auto board = std::make_unique<DigitizerBoard>(BoardPlugins::LookupIn(library));
  board->name = QStringLiteral("BOARD");
  const qint32 status = board->Open(
      QStringLiteral("sim:full?channels=%1&events=%2&blocks=%3").arg(Channels).arg(events).arg(blocks));
  if (status != 0) {
    qFatal("The simulated board doesn't open: status %d", status);
  }
  board->LoadEndpoints(Parse(R"({"endpoints": [{"name": "energy", "enable": true}]})"));
  board->SendCommand(QStringLiteral("endpoints\\energy\\start"));
  return board;
}

qint64 CountedEvents(Histogram& spectrum) {
  QString query = QStringLiteral(R"({"args": [{"cmd": "get_data", "channels": [)");
  for (int channel = 0; channel < Channels; ++channel) {
    query += (channel == 0 ? QString() : QStringLiteral(",")) + QString::number(channel);
  }
  query += QStringLiteral("]}]}");
  QString answer;
  spectrum.InterpretMessage(&query, &answer);
  qint64 total = 0;
  const QJsonArray channels = QJsonDocument::fromJson(answer.toUtf8()).array();
  for (const QJsonValue& channel : channels) {
    const QJsonArray counts = channel.toObject()["data"].toArray();
    for (const QJsonValue& count : counts) {
      total += count.toInt();
    }
  }
  return total;
}

class Road {
public:
  explicit Road(std::unique_ptr<DigitizerBoard> board) {
    boards_.push_back(std::move(board));
    source_ = std::make_unique<Source>(nullptr, ChainContext{&boards_, nullptr, {}, {}},
                                       Parse(R"({"name": "source", "data_type": "energy",
        "sources": [{"source": "BOARD", "pin": "endpoints\\energy"}],
        "parameters": [{"param_name": "download_interval", "param_value": 0}]})"));
    spectrum_ = std::make_unique<Histogram>(nullptr, ChainContext{}, Parse(R"({"name": "spectrum", "parameters": [
        {"param_name": "bin_number", "param_value": 4096}, {"param_name": "ch_number", "param_value": 64}]})"));
    spectrum_->Inputs().front()->Connect(source_->Outputs().front().get());
    QString freerun = QStringLiteral(R"({"args": [{"cmd": "run_control", "status": "freerun"}]})");
    QString answer;
    spectrum_->InterpretMessage(&freerun, &answer);
  }
  ~Road() {
    Finish();
    spectrum_.reset();  // before the pin that it reads
  }
  Road(const Road&) = delete;
  Road& operator=(const Road&) = delete;

  void Start() { source_->Run(); }
  void Finish() {
    source_->StopWorker();
    spectrum_->StopWorker();
  }
  qint64 Counted() { return CountedEvents(*spectrum_); }

private:
  BoardList boards_;
  std::unique_ptr<Source> source_;
  std::unique_ptr<Histogram> spectrum_;
};

void RunEventLoop(int milliseconds) {
  QEventLoop loop;
  QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
  loop.exec();
}

// Seconds until the count stood still: the board has handed out everything and the spectrum drained its pin.
double RunUntilStill(Road& road) {
  QElapsedTimer timer;
  timer.start();
  double lastChange = 0.0;
  int unchanged = 0;
  for (qint64 before = 0; unchanged < 10;) {
    RunEventLoop(100);
    const qint64 now = road.Counted();
    unchanged = now == before ? unchanged + 1 : 0;
    lastChange = now == before ? lastChange : static_cast<double>(timer.elapsed()) / 1000.0;
    before = now;
  }
  return lastChange;
}

}  // namespace

int main(int argc, char* argv[]) {
  QCoreApplication application(argc, argv);
  if (argc < 2) {
    std::fprintf(stderr, "usage: korvax-bench-road BOARD-LIBRARY-FOLDER [BLOCKS [EVENTS-A-BLOCK]]\n");
    return 2;
  }
  const qint64 blocks = argc > 2 ? QString::fromLocal8Bit(argv[2]).toLongLong() : 20000;
  const qint64 events = argc > 3 ? QString::fromLocal8Bit(argv[3]).toLongLong() : 1000;
  BoardPlugins plugins;
  plugins.LoadAll(QString::fromLocal8Bit(argv[1]));
  const QLibrary* const library = plugins.Find(QStringLiteral("libCAENDig2Sim"));
  if (library == nullptr) {
    qFatal("No libCAENDig2Sim in %s", argv[1]);
  }
  Road road(OpenBoard(*library, blocks, events));
  const double cpuBefore = CpuSeconds();
  road.Start();
  const double seconds = RunUntilStill(road);
  road.Finish();
  const double cpu = CpuSeconds() - cpuBefore;
  const qint64 handedOut = blocks * events;
  const qint64 counted = road.Counted();
  std::printf(
      "events handed out  %lld\nevents counted     %lld\nmessages dropped   %lld\n"
      "seconds            %.1f (to within 0.1)\nevents a second    %.2f million\nCPU an event       %.1f ns\n",
      handedOut, counted, (handedOut - counted) / events, seconds, static_cast<double>(counted) / seconds * 1e-6,
      cpu / static_cast<double>(counted) * 1e9);
  return 0;
}
