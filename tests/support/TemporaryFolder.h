#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

namespace test {

/// An empty folder, gone with its files at the end.
class TemporaryFolder {
public:
  TemporaryFolder() {
    std::string path = (std::filesystem::temp_directory_path() / "korvax-XXXXXX").string();
    if (mkdtemp(path.data()) == nullptr) {
      throw std::runtime_error("no temporary folder");
    }
    path_ = path;
  }
  ~TemporaryFolder() { std::filesystem::remove_all(path_); }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  /// Creates a file, or writes over one of this name, and gives its path.
  std::string Write(const std::string& name, const std::string& bytes) const {
    const std::filesystem::path path = path_ / name;
    // Not emptied first: some file systems flush a file that was emptied, and tables of damaged files write
    // thousands.
    std::ofstream(path, std::ios::binary | std::ios::app).close();
    std::fstream(path, std::ios::binary | std::ios::in | std::ios::out) << bytes;
    std::filesystem::resize_file(path, bytes.size());
    return path.string();
  }
  /// Without a "/" at the end.
  std::string Path() const { return path_.string(); }

private:
  std::filesystem::path path_;
};

}  // namespace test
