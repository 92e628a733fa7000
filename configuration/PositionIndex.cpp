#include "configuration/PositionIndex.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace korvax {

namespace {

// Texts with this many keys twice are no configurations.
constexpr std::size_t MostDuplicates = 1000;

bool EndsScalar(char character) {
  return character == ',' || character == '}' || character == ']' || static_cast<unsigned char>(character) <= ' ';
}

}  // namespace

/// One pass over the text, with a stack of its own instead of recursion.
class PositionScanner {
public:
  PositionScanner(const QByteArray& text, PositionIndex& index) : text_(text), index_(index) {}

  void Run() {
    while (at_ < text_.size()) {
      Step(text_[at_]);
    }
  }

private:
  struct Frame {
    int value;  // index in lines_
    bool isObject;
    int element = 0;
    bool hasKey = false;
    QString key;
    int keyLine = 0;
  };

  void Step(char character) {
    if (character == '"') {
      TakeText();
    } else if (character == '{' || character == '[') {
      const int value = AddValue();
      frames_.push_back({value, character == '{', 0, false, {}, 0});
      ++at_;
    } else if (character == '}' || character == ']' || character == ',') {
      EndValue(character != ',');
      ++at_;
    } else if (character == ':' || static_cast<unsigned char>(character) <= ' ') {
      line_ += character == '\n' ? 1 : 0;
      ++at_;
    } else {
      AddValue();
      while (at_ < text_.size() && !EndsScalar(text_[at_])) {
        ++at_;
      }
    }
  }

  void EndValue(bool closes) {
    if (closes && !frames_.empty()) {
      frames_.pop_back();
    } else if (!closes && !frames_.empty()) {
      ++frames_.back().element;
      frames_.back().hasKey = false;
    }
  }

  void TakeText() {
    const int begin = at_++;
    const int beginLine = line_;
    while (at_ < text_.size() && text_[at_] != '"') {
      line_ += text_[at_] == '\n' ? 1 : 0;
      at_ += text_[at_] == '\\' ? 2 : 1;
    }
    at_ = qMin(at_ + 1, text_.size());
    if (frames_.empty() || !frames_.back().isObject || frames_.back().hasKey) {
      AddValue();
      return;
    }
    frames_.back().hasKey = true;
    frames_.back().key = Decoded(text_.mid(begin, at_ - begin));
    frames_.back().keyLine = beginLine;
  }

  static QString Decoded(const QByteArray& quoted) {
    return quoted.contains('\\') ? QJsonDocument::fromJson('[' + quoted + ']').array()[0].toString()
                                 : QString::fromUtf8(quoted.mid(1, quoted.size() - 2));
  }

  static QString LastStep(const Frame& frame) {
    return frame.isObject ? frame.key : QString::number(frame.element);
  }

  int AddValue() {
    if (frames_.empty()) {
      index_.lines_[0] = line_;
      return 0;
    }
    const Frame& frame = frames_.back();
    const auto value = static_cast<int>(index_.lines_.size());
    index_.lines_.push_back(frame.isObject ? frame.keyLine : line_);
    const QPair<int, QString> place(frame.value, LastStep(frame));
    if (frame.isObject && index_.children_.contains(place) && index_.duplicates_.size() < MostDuplicates) {
      AddDuplicate();
    }
    index_.children_.insert(place, value);
    return value;
  }

  void AddDuplicate() {
    QStringList path;
    for (const Frame& frame : frames_) {
      path << LastStep(frame);
    }
    index_.duplicates_.push_back({path, frames_.back().keyLine});
  }

  const QByteArray& text_;
  PositionIndex& index_;
  std::vector<Frame> frames_;
  int at_ = 0;
  int line_ = 1;
};

PositionIndex::PositionIndex(const QByteArray& text) {
  PositionScanner(text, *this).Run();
}

int PositionIndex::Line(const QStringList& path) const {
  int value = 0;
  for (const QString& step : path) {
    const auto child = children_.constFind({value, step});
    if (child == children_.constEnd()) {
      break;
    }
    value = *child;
  }
  return lines_[static_cast<std::size_t>(value)];
}

}  // namespace korvax
