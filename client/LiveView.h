#pragma once

#include "client/Console.h"
#include "client/QueryClient.h"
#include "client/Requests.h"

#include <QEventLoop>
#include <QTimer>

#include <optional>
#include <variant>

namespace korvax::client {

/// Reads something from a block and draws it, once or live; what, and how, is up to the derived class. Each
/// query goes out only after the answer to the last one. A failure before the first picture ends it; a later
/// one of a live view leaves the last picture, marked as stale, and reading goes on as soon as the server is
/// back. Only a live view on a terminal draws in place. The console must outlive it.
class LiveView : public QObject {
  Q_OBJECT

public:
  /// Runs an event loop until all is drawn; in a live view, until Ctrl-C.
  Ending Run();

protected:
  LiveView(const ServerAddress& server, const QueryTarget& target, const Refresh& refresh, Console& console);

  /// What an answer leads to: another query of the same reading, its completion, or the reason why it is void.
  struct Complete {};
  using Step = std::variant<QString, Complete, Ending>;

  /// The first query of a reading. What is left of a reading that failed is void.
  virtual QString Begin() = 0;
  virtual Step Take(const QString& answer) = 0;

  /// The last completed reading; called only when there is one.
  virtual QStringList Lines() const = 0;

  /// The right end of a title: `usual`, or that the picture is stale, and how a live view is ended.
  QString State(const QString& usual) const;

  /// What a stale picture has to say about itself; empty when it is not stale.
  QStringList StaleNotes() const;

  /// The columns and lines that a picture may take.
  TerminalSize Room(const PictureSize& asked) const;

  bool IsInPlace() const { return screen_.has_value(); }

private:
  void Ask();
  void TakeAnswer(const QString& answer);
  void TakeFailure(const Ending& reason);
  void TakeReading();
  void Show();
  void Redraw();
  void Stop();
  void Finish(const Ending& ending);

  const Refresh refresh_;
  Console& console_;
  QueryClient client_;
  QTimer timer_;
  QEventLoop loop_;
  Ending ending_;
  QString pictureTime_;  ///< of day; empty before the first picture
  QString staleReason_;
  std::optional<AlternateScreen> screen_;
};

}  // namespace korvax::client
