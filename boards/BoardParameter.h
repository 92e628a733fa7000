#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>

/// Codes of a parameter's "value_type". 2 and 3 are not produced by any text; any other text is Unset, which is
/// handled as a scalar.
enum class ParameterValueType : int {
  List = 0,
  U32 = 1,
  Boolean = 4,
  BoolArray = 5,
  ListArray = 6,
  U32Array = 7,
  StringArray = 8,
  Unset = -1,
};

/// One element of a board's parameter tree as the configuration gives it.
struct BoardParameter {
  QString name;  ///< for log lines and answers
  QString path;  ///< query path of the board library
  bool writable = true;
  ParameterValueType type = ParameterValueType::Unset;
  QStringList values;        ///< array types: one text per channel, channel 0 first
  QString value;             ///< scalar types: the text; bool_array: the decimal bit mask
  bool directApply = false;  ///< written to the board whenever the configuration is applied

  /// Reads one "elements" entry. Never fails: missing or mistyped keys read as empty. A read-only parameter
  /// has no values and no direct apply, whatever the entry says.
  static BoardParameter FromJson(const QJsonObject& element);
};
