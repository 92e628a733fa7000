#pragma once

class QString;

/// How clients reach a block: by its full path on the generic route, by its name on a route of that name, or both.
enum class QueryReach { ByPath, ByName, Both };

/// Implemented by the blocks that answer clients. Kept apart from KorvaxBlock because not every block does.
class QueryHandler {
public:
  /// Appends the answer to `data_in`, a client's whole message, to `data_out`; appends nothing to a query that
  /// it does not know. Main thread.
  virtual void InterpretMessage(QString* data_in, QString* data_out) = 0;

  virtual QueryReach Reach() const { return QueryReach::ByPath; }

protected:
  ~QueryHandler() = default;
};
