#include "tests/unit/client/RunClient.h"

#include <memory>

namespace test {

namespace {

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

QString Content(std::FILE* file) {
  std::rewind(file);
  QByteArray content;
  for (int byte = 0; (byte = std::fgetc(file)) != EOF;) {
    content.append(static_cast<char>(byte));
  }
  return QString::fromUtf8(content);
}

}  // namespace

Outcome RunClient(const std::vector<std::string>& words) {
  const File out(std::tmpfile());
  const File error(std::tmpfile());
  korvax::client::Console console(out.get(), error.get());
  const korvax::client::ExitCode code = korvax::client::RunKorvaxctl(words, console);
  return {code, Content(out.get()), Content(error.get())};
}

Outcome RunClient(quint16 port, std::vector<std::string> words) {
  words.insert(words.end(), {"--port", std::to_string(port)});
  return RunClient(words);
}

}  // namespace test
