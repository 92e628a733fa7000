#pragma once

#include <QString>

#include <vector>

namespace test {

/// A fenced block of a page: the words after the opening fence, and the text between the fences.
struct FencedBlock {
  QString kind;
  QString text;  ///< without the last line end
};

/// A page of the project, by its path from the project's root. Fails the test when it can't be read.
class MarkdownPage {
public:
  explicit MarkdownPage(const QString& path);

  const QString& Text() const { return text_; }
  std::vector<FencedBlock> Blocks() const;
  std::vector<QString> BlocksOf(const QString& kind) const;

private:
  QString text_;
};

}  // namespace test
