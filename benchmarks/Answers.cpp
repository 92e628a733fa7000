#include "benchmarks/Answers.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QSocketNotifier>
#include <QTimer>
#include <QUrl>
#include <QWebSocket>
#include <QtDebug>

#include <unistd.h>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <memory>
#include <vector>

namespace bench {

namespace {

// One connection that asks again and again.
class Client : public QObject {
public:
  Client(const QUrl& url, const QString& query, int intervalMs) : query_(query) {
    QObject::connect(&socket_, &QWebSocket::textMessageReceived, this, &Client::TakeAnswer);
    QObject::connect(&timer_, &QTimer::timeout, this, &Client::Ask);
    timer_.setInterval(intervalMs);
    socket_.open(url);
  }

  bool IsConnected() const { return socket_.state() == QAbstractSocket::ConnectedState; }
  void Begin(int delayMs) {
    QTimer::singleShot(delayMs, this, [this] {
      Ask();
      if (timer_.interval() > 0) {
        timer_.start();
      }
    });
  }

  std::function<void(double milliseconds, qint64 bytes)> onAnswer;

private:
  void Ask() {
    if (!waits_) {
      waits_ = true;
      asked_.start();
      socket_.sendTextMessage(query_);
    }
  }
  void TakeAnswer(const QString& answer) {
    waits_ = false;
    onAnswer(static_cast<double>(asked_.nsecsElapsed()) * 1e-6, answer.size());
    if (timer_.interval() == 0) {
      Ask();
    }
  }

  QWebSocket socket_;
  QTimer timer_;
  QElapsedTimer asked_;
  const QString query_;
  bool waits_ = false;
};

AnswerTimes TimesOf(std::vector<double> milliseconds, qint64 characters) {
  if (milliseconds.empty()) {
    return {};
  }
  std::sort(milliseconds.begin(), milliseconds.end());
  const auto at = [&](double share) {
    return milliseconds[static_cast<std::size_t>(share * static_cast<double>(milliseconds.size() - 1))];
  };
  return {at(0.5), at(0.99), at(1.0), milliseconds.size(), characters};
}

void RunLoopUntil(const std::function<bool()>& isDone) {
  QEventLoop loop;
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, &loop, [&] {
    if (isDone()) {
      loop.quit();
    }
  });
  timer.start(2);
  loop.exec();
}

void RunLoopUntilInputEnds() {
  QEventLoop loop;
  QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
  QObject::connect(&input, &QSocketNotifier::activated, &loop, &QEventLoop::quit);
  loop.exec();
}

}  // namespace

int RunClients(int argc, char* argv[]) {
  const QCoreApplication application(argc, argv);
  const QStringList arguments = QCoreApplication::arguments();
  const int count = arguments.at(4).toInt();
  const int intervalMs = arguments.at(5).toInt();
  std::vector<std::unique_ptr<Client>> clients;
  std::vector<double> times;
  qint64 characters = 0;
  for (int i = 0; i < count; ++i) {
    clients.push_back(std::make_unique<Client>(QUrl(arguments.at(2)), arguments.at(3), intervalMs));
    clients.back()->onAnswer = [&](double milliseconds, qint64 size) {
      times.push_back(milliseconds);
      characters = size;
    };
  }
  RunLoopUntil([&] {
    return std::all_of(clients.begin(), clients.end(), [](const auto& client) { return client->IsConnected(); });
  });
  std::puts("connected");
  std::fflush(stdout);
  for (int i = 0; i < count; ++i) {
    clients[static_cast<std::size_t>(i)]->Begin(intervalMs * i / count);  // spread over the interval
  }
  RunLoopUntilInputEnds();
  const AnswerTimes result = TimesOf(times, characters);
  std::printf("%.4f %.4f %.4f %zu %lld\n", result.medianMs, result.percentile99Ms, result.worstMs, result.answers,
              static_cast<long long>(result.characters));
  return 0;
}

OutsideClients::OutsideClients(const BlockList& blocks, const QString& route, const QString& query, int clients,
                               int intervalMs)
    : server_(0, false, &blocks) {
  process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  process_.start(
      QCoreApplication::applicationFilePath(),
      {QStringLiteral("--clients"), QStringLiteral("ws://127.0.0.1:%1/%2").arg(server_.Port()).arg(route), query,
       QString::number(clients), QString::number(intervalMs)});
  WaitForLine();
}

// By the event loop, which the clients need.
void OutsideClients::WaitForLine() {
  RunLoopUntil([this] { return process_.canReadLine() || process_.state() == QProcess::NotRunning; });
  if (process_.state() == QProcess::NotRunning && !process_.canReadLine()) {
    qFatal("The clients ended: %s", qPrintable(process_.errorString()));
  }
}

AnswerTimes OutsideClients::Finish() {
  process_.readLine();  // "connected"
  process_.closeWriteChannel();
  WaitForLine();
  const QList<QByteArray> words = process_.readLine().simplified().split(' ');
  process_.waitForFinished();
  return {words.value(0).toDouble(), words.value(1).toDouble(), words.value(2).toDouble(),
          words.value(3).toULongLong(), words.value(4).toLongLong()};
}

}  // namespace bench
