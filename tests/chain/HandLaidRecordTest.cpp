#include "tests/chain/ChainFixture.h"

#include <array>

namespace {

using AHandLaidBlock = ChainFixture;

TEST_F(AHandLaidBlock, isCountedByteForByte) {
  alignas(8) static const std::array<unsigned char, 32> firstRecord = {
      0x88, 0x77, 0x66, 0x55, 0x44, 0x33, 0x22, 0x11,  //  0 timestamp
      0x02, 0x00, 0x00, 0x00,                          //  8 channel: 2
      0x2C, 0x01, 0x00, 0x00,                          // 12 raw energy: 300
      0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x24, 0x40,  // 16 the board's own energy: 10.0
      0x01,                                            // 24 first flag
      0x00,                                            // 25 second flag
      0xEE, 0xEE,                                      // 26 reserved
      0x0D, 0xF0, 0xFE, 0xCA,                          // 28 extra word
  };
  alignas(8) static const std::array<unsigned char, 32> secondRecord = {
      0x89, 0x77, 0x66, 0x55, 0x44, 0x33, 0x22, 0x11,  //  0 timestamp
      0x00, 0x00, 0x00, 0x00,                          //  8 channel: 0
      0xFF, 0x03, 0x00, 0x00,                          // 12 raw energy: 1023
      0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  // 16 the board's own energy: 0.0
      0x00,                                            // 24 first flag
      0x01,                                            // 25 second flag
      0xEE, 0xEE,                                      // 26 reserved
      0x00, 0x00, 0x00, 0x00,                          // 28 extra word
  };
  alignas(8) static std::array<unsigned char, 64> entries = {
      0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE,  //  0 unused
      0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE,  //  8 unused by energy records
      0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE,  // 16 unused
      0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  // 24 pointer to the first record, below
      0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE,  // 32 unused
      0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE,  // 40 unused by energy records
      0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE,  // 48 unused
      0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  // 56 pointer to the second record, below
  };
  const void* const first = firstRecord.data();
  const void* const second = secondRecord.data();
  std::memcpy(entries.data() + 24, &first, 8);
  std::memcpy(entries.data() + 56, &second, 8);

  std::atomic<int> reads = 0;
  std::atomic<int> frees = 0;
  digitizer.vendor.onRead = [&reads](void* holder) {
    if (reads++ != 0) {
      QThread::msleep(1);  // the board library waits for data
      return -1;
    }
    const void* const pointer = entries.data();
    const unsigned char count[4] = {0x02, 0x00, 0x00, 0x00};
    std::memcpy(holder, &pointer, 8);                                 // 0 pointer to the entries
    std::memcpy(static_cast<unsigned char*>(holder) + 12, count, 4);  // 12 their count
    return 0;
  };
  digitizer.vendor.onFree = [&frees](void* holder) {
    const void* pointer = nullptr;
    std::memcpy(&pointer, holder, 8);
    frees += pointer == entries.data() ? 1 : 1'000;
  };

  const auto source = MakeSource();
  const auto spectrum = MakeSpectrum(1024, 3);
  Link(*source, *spectrum);
  Run(*spectrum);
  source->Run();
  ASSERT_TRUE(WaitForTotal(*spectrum, 3, 2));
  source->StopWorker();
  spectrum->StopWorker();
  EXPECT_EQ(Counts(*spectrum, 2)[300], 1);
  EXPECT_EQ(Counts(*spectrum, 0)[1023], 1);
  EXPECT_EQ(Total(*spectrum, 3), 2);
  EXPECT_EQ(frees, 1);
}

}  // namespace
