#pragma once

#include "client/CommandLine.h"
#include "client/Console.h"
#include "client/QueryClient.h"
#include "client/SpectrumPicture.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <optional>

namespace korvax::client {

/// Reads a spectrum and draws it, once or live. Each query goes out only after the answer to the last one.
/// A failure before the first picture ends it; a later one of a live view leaves the last picture, marked
/// as stale, and reading goes on as soon as the server is back. The console must outlive it.
class SpectrumView : public QObject {
  Q_OBJECT

public:
  SpectrumView(const ServerAddress& server, SpectrumRequest request, Console& console);

  void Start();

  /// Ends a live view as the user wished.
  void Stop();

  /// Draws the last picture again, for a terminal that has another size.
  void Redraw();

signals:
  void finished(const korvax::client::Ending& ending);

private:
  void AskForData();
  void TakeAnswer(const QString& answer);
  void TakeData(const QString& answer);
  void TakeStatus(const QString& answer);
  void TakeFailure(const Ending& reason);
  void Accept(bool counting);
  std::optional<double> RateOf(std::size_t index, const Counts& now) const;
  QStringList Lines() const;
  void AddNotes(Picture& picture) const;
  QString StartCommand() const;

  const ServerAddress server_;
  const SpectrumRequest request_;
  Console& console_;
  QueryClient client_;
  QTimer timer_;
  QElapsedTimer clock_;

  bool awaitingStatus_ = false;
  std::vector<Counts> arrived_;
  qint64 arrivedAt_ = 0;  // ms of clock_

  Picture picture_;
  qint64 pictureAt_ = 0;  // ms of clock_
  QString pictureTime_;   // of day
  bool counting_ = false;
  QString staleReason_;
  std::optional<AlternateScreen> screen_;
};

}  // namespace korvax::client
