#include "tests/unit/simulator/BoardHarness.h"

#include <gmock/gmock.h>

#include <dlfcn.h>
#include <array>
#include <cstdio>
#include <set>
#include <sstream>
#include <thread>

using korvax::sim::At;

namespace {

struct Descriptor {
  void* entries = nullptr;
  std::uint32_t unused = 0;
  std::int32_t count = 0;
};

// The library as a server has it: loaded by name, its functions known by their signatures alone.
class BoardLibrary : public testing::Test {
protected:
  void SetUp() override { ASSERT_NE(library_, nullptr) << dlerror(); }
  ~BoardLibrary() override {
    if (library_ != nullptr) {
      dlclose(library_);
    }
  }

  template <typename Function>
  Function* Resolve(const char* name) {
    return reinterpret_cast<Function*>(dlsym(library_, name));
  }
  std::uint64_t OpenBoard(const char* connection) {
    std::uint64_t handle = 0;
    EXPECT_EQ(open_(connection, &handle), 0) << connection;
    EXPECT_NE(handle, 0U);
    return handle;
  }

  void* library_ = dlopen(KORVAX_BOARD_LIBRARY, RTLD_NOW | RTLD_LOCAL);
  std::int32_t (*open_)(const char*,
                        std::uint64_t*) = Resolve<std::int32_t(const char*, std::uint64_t*)>("CAENDig2_Open");
  std::int32_t (*set_)(std::uint64_t, const char*, const char*) =
      Resolve<std::int32_t(std::uint64_t, const char*, const char*)>("CAENDig2_SetValueByQuery");
  std::int32_t (*get_)(std::uint64_t, const char*, char*) =
      Resolve<std::int32_t(std::uint64_t, const char*, char*)>("CAENDig2_GetValueByQuery");
  std::int32_t (*send_)(std::uint64_t, const char*) =
      Resolve<std::int32_t(std::uint64_t, const char*)>("CAENDig2_SendCommandByQuery");
  std::int32_t (*read_)(std::uint64_t, const char*, std::int32_t, void*) =
      Resolve<std::int32_t(std::uint64_t, const char*, std::int32_t, void*)>("CAENDig2_ReadDataByQuery");
  std::int32_t (*free_)(std::uint64_t, const char*, void*) =
      Resolve<std::int32_t(std::uint64_t, const char*, void*)>("CAENDig2_FreePointerByQuery");
};

std::string OutputOf(const std::string& command) {
  std::string output;
  FILE* pipe = popen(command.c_str(), "r");
  std::array<char, 4096> buffer;
  while (const std::size_t size = std::fread(buffer.data(), 1, buffer.size(), pipe)) {
    output.append(buffer.data(), size);
  }
  EXPECT_EQ(pclose(pipe), 0) << command;
  return output;
}

}  // namespace

TEST_F(BoardLibrary, ExportsExactlyTheSixFunctions) {
  std::istringstream lines(OutputOf(KORVAX_NM " -D --defined-only -P '" KORVAX_BOARD_LIBRARY "'"));
  std::set<std::string> names;
  for (std::string line; std::getline(lines, line);) {
    names.insert(line.substr(0, line.find(' ')));
  }
  EXPECT_THAT(names, testing::ElementsAre("CAENDig2_FreePointerByQuery", "CAENDig2_GetValueByQuery",
                                          "CAENDig2_Open", "CAENDig2_ReadDataByQuery",
                                          "CAENDig2_SendCommandByQuery", "CAENDig2_SetValueByQuery"));
}

TEST_F(BoardLibrary, GivesEachBoardAHandleOfItsOwn) {
  EXPECT_NE(OpenBoard("sim:array"), OpenBoard("sim:array"));
}

TEST_F(BoardLibrary, GivesNoHandleWhenOpeningFails) {
  std::uint64_t handle = 77;
  EXPECT_EQ(open_("nonsense", &handle), -2);
  EXPECT_EQ(handle, 0U);
  EXPECT_EQ(open_("sim:array?open=fail", &handle), -5);
  EXPECT_EQ(open_("sim:array?open=-9", &handle), -9);
}

TEST_F(BoardLibrary, RefusesABadHandleInEachFunction) {
  char value[64] = "untouched";
  Descriptor block;
  for (const std::uint64_t handle : {std::uint64_t{0}, ~std::uint64_t{0}}) {
    EXPECT_EQ(set_(handle, "\\Samples", "100"), -3);
    EXPECT_EQ(get_(handle, "\\Samples", value), -3);
    EXPECT_STREQ(value, "untouched");
    EXPECT_EQ(send_(handle, "commands\\start"), -3);
    EXPECT_EQ(read_(handle, "endpoints\\energy", 0, &block), -3);
    EXPECT_EQ(free_(handle, "endpoints\\energy", &block), -3);
  }
}

TEST_F(BoardLibrary, RefusesNullPointers) {
  const std::uint64_t handle = OpenBoard("sim:array");
  std::uint64_t unused = 0;
  char value[64];
  Descriptor block;
  EXPECT_EQ(open_(nullptr, &unused), -1);
  EXPECT_EQ(open_("sim:array", nullptr), -1);
  EXPECT_EQ(set_(handle, nullptr, "1"), -1);
  EXPECT_EQ(set_(handle, "\\Samples", nullptr), -1);
  EXPECT_EQ(get_(handle, nullptr, value), -1);
  EXPECT_EQ(get_(handle, "\\Samples", nullptr), -1);
  EXPECT_EQ(send_(handle, nullptr), -1);
  EXPECT_EQ(read_(handle, nullptr, 0, &block), -1);
  EXPECT_EQ(read_(handle, "endpoints\\energy", 0, nullptr), -1);
  EXPECT_EQ(free_(handle, nullptr, &block), -1);
  EXPECT_EQ(free_(handle, "endpoints\\energy", nullptr), -1);
}

TEST_F(BoardLibrary, PassesValuesAndCodesThrough) {
  const std::uint64_t handle = OpenBoard("sim:array?channels=4");
  char value[64] = "untouched";
  EXPECT_EQ(get_(handle, "\\Nothing", value), -6);
  EXPECT_STREQ(value, "untouched");
  EXPECT_EQ(set_(handle, "\\Samples", "x"), -7);
  EXPECT_EQ(set_(handle, "\\Model", "x"), -8);
  EXPECT_EQ(send_(handle, "commands\\nothing"), -9);
  EXPECT_EQ(send_(handle, "endpoints\\nothing\\start"), -10);
  EXPECT_EQ(set_(handle, "\\Channel3\\ChThreshold", "123"), 0);
  EXPECT_EQ(get_(handle, "\\Channel3\\ChThreshold", value), 0);
  EXPECT_STREQ(value, "123");
}

TEST_F(BoardLibrary, ReadsAndFreesBlocks) {
  const std::uint64_t handle = OpenBoard("sim:full?events=25");
  Descriptor block;
  EXPECT_EQ(read_(handle, "endpoints\\energy", 0, &block), -11);
  EXPECT_EQ(block.count, 0);
  EXPECT_EQ(send_(handle, "endpoints\\energy\\start"), 0);
  ASSERT_EQ(read_(handle, "endpoints\\energy", 1000, &block), 0);
  EXPECT_EQ(block.count, 25);
  EXPECT_LT(At<std::uint32_t>(At<void*>(block.entries, 24 * 32 + 24), 8), 8U);
  EXPECT_EQ(free_(handle, "endpoints\\waveform", &block), -14);
  EXPECT_EQ(free_(handle, "endpoints\\energy", &block), 0);
  EXPECT_EQ(free_(handle, "endpoints\\energy", &block), -14);
}

TEST_F(BoardLibrary, ServesManyThreadsOnOneHandle) {
  constexpr int perBlock = 100;
  constexpr int blocks = 400;
  const std::string connection =
      "sim:full?events=" + std::to_string(perBlock) + "&blocks=" + std::to_string(blocks);
  const std::uint64_t handle = OpenBoard(connection.c_str());
  ASSERT_EQ(send_(handle, "endpoints\\energy\\start"), 0);
  std::atomic<int> events{0};
  std::atomic<int> readersLeft{3};
  const auto reader = [&] {
    for (Descriptor block; read_(handle, "endpoints\\energy", 0, &block) == 0;) {
      events += block.count;
      EXPECT_EQ(free_(handle, "endpoints\\energy", &block), 0);
    }
    --readersLeft;
  };
  const auto writer = [&] {
    char value[64];
    while (readersLeft > 0) {
      EXPECT_EQ(set_(handle, "\\Channel1\\ChThreshold", "9"), 0);
      EXPECT_EQ(get_(handle, "\\Channel1\\HVVoltage", value), 0);
      EXPECT_EQ(send_(handle, "commands\\global_on"), 0);
    }
  };
  std::vector<std::thread> threads;
  threads.emplace_back(reader);
  threads.emplace_back(reader);
  threads.emplace_back(reader);
  threads.emplace_back(writer);
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(events, perBlock * blocks);
}

TEST_F(BoardLibrary, KeepsCountWhileAnArrayIsReadSwitchedAndReset) {
  const std::uint64_t handle = OpenBoard("sim:array?rate=50000&counters_interval=0");
  ASSERT_EQ(send_(handle, "commands\\start"), 0);
  std::atomic<bool> done{false};
  std::vector<std::thread> readers;
  for (const char* endpoint :
       {"endpoints\\energy", "endpoints\\energy", "endpoints\\energy_pair", "endpoints\\rate_counters"}) {
    readers.emplace_back([&, endpoint] {
      while (!done) {
        Descriptor block;
        if (read_(handle, endpoint, 1, &block) == 0) {
          EXPECT_GT(block.count, 0);
          EXPECT_EQ(free_(handle, endpoint, &block), 0);
        }
      }
    });
  }
  for (int i = 0; i < 50; ++i) {
    EXPECT_EQ(set_(handle, "\\ChEnable", i % 2 == 0 ? "255" : "15"), 0);
    EXPECT_EQ(send_(handle, "endpoints\\energy\\stop"), 0);
    EXPECT_EQ(send_(handle, "endpoints\\energy\\reset"), 0);
    EXPECT_EQ(send_(handle, "endpoints\\energy\\start"), 0);
    Descriptor block;
    if (read_(handle, "endpoints\\waveform", 1, &block) == 0) {
      EXPECT_EQ(free_(handle, "endpoints\\waveform", &block), 0);
    }
  }
  done = true;
  for (std::thread& thread : readers) {
    thread.join();
  }
}
