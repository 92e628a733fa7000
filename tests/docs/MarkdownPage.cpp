#include "tests/docs/MarkdownPage.h"

#include <QFile>

#include <gtest/gtest.h>

namespace test {

MarkdownPage::MarkdownPage(const QString& path) {
  QFile file(QStringLiteral(KORVAX_PROJECT_DIR "/") + path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(file.fileName());
  text_ = QString::fromUtf8(file.readAll());
}

std::vector<FencedBlock> MarkdownPage::Blocks() const {
  std::vector<FencedBlock> blocks;
  bool inside = false;
  for (const QString& line : text_.split(QLatin1Char('\n'))) {
    if (line.startsWith(QLatin1String("```"))) {
      if (!inside) {
        blocks.push_back({line.mid(3).trimmed(), {}});
      }
      inside = !inside;
    } else if (inside) {
      QString& text = blocks.back().text;
      text += text.isEmpty() ? line : QLatin1Char('\n') + line;
    }
  }
  EXPECT_FALSE(inside) << "a fence is not closed";
  return blocks;
}

std::vector<QString> MarkdownPage::BlocksOf(const QString& kind) const {
  std::vector<QString> texts;
  for (const FencedBlock& block : Blocks()) {
    if (block.kind == kind) {
      texts.push_back(block.text);
    }
  }
  return texts;
}

}  // namespace test
