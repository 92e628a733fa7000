#include "runfiles/Checksum.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace korvax::runfiles {
namespace {

// Long enough for every way in which the algorithm takes its input; begins with a zero byte.
std::string Bytes(int count) {
  std::string bytes;
  for (int i = 0; i < count; ++i) {
    bytes += static_cast<char>(static_cast<unsigned char>(i * 7 + (i >> 8)));
  }
  return bytes;
}

std::string ChecksumOf(std::string_view bytes) {
  Checksum checksum;
  checksum.Add(bytes);
  return checksum.Hex();
}

// The texts are what the program xxh128sum printed for these bytes.
TEST(AChecksum, isThatOfTheCommandLineProgram) {
  EXPECT_EQ(Checksum().Hex(), "99aa06d3014798d86001c324468d497f");
  EXPECT_EQ(ChecksumOf("a"), "a96faf705af16834e6c632b61e964e1f");
  EXPECT_EQ(ChecksumOf("KVXS1700000000"), "99510e5954a0d608d793c32fcae9e06b");
  EXPECT_EQ(ChecksumOf(Bytes(1000)), "bae798f9321bda6cd1db6a0afea2cc82");
}

TEST(AChecksum, isTheSameHoweverTheBytesAreCut) {
  const std::string bytes = Bytes(1000);
  for (std::size_t cut = 0; cut <= bytes.size(); ++cut) {
    Checksum checksum;
    checksum.Add(std::string_view(bytes).substr(0, cut));
    checksum.Add({});
    checksum.Add(std::string_view(bytes).substr(cut));
    ASSERT_EQ(checksum.Hex(), "bae798f9321bda6cd1db6a0afea2cc82") << cut;
  }
}

TEST(AChecksum, mayGoOnAfterItWasAsked) {
  Checksum checksum;
  checksum.Add("KVXS");
  EXPECT_NE(checksum.Hex(), "99510e5954a0d608d793c32fcae9e06b");
  checksum.Add("1700000000");
  EXPECT_EQ(checksum.Hex(), "99510e5954a0d608d793c32fcae9e06b");
}

TEST(AChecksum, isCopiedWithAllThatWasAdded) {
  Checksum original;
  original.Add("KVXS");
  Checksum copy(original);
  Checksum assigned;
  assigned.Add("other");
  assigned = original;
  original.Add("x");
  copy.Add("1700000000");
  assigned.Add("1700000000");
  EXPECT_EQ(copy.Hex(), "99510e5954a0d608d793c32fcae9e06b");
  EXPECT_EQ(assigned.Hex(), "99510e5954a0d608d793c32fcae9e06b");
  EXPECT_EQ(original.Hex(), ChecksumOf("KVXSx"));
}

TEST(AChecksum, isAsGoodAsBeforeWhenItWasMovedFromOrAssignedToItself) {
  Checksum original;
  original.Add("a");
  const Checksum moved(std::move(original));
  const Checksum& same = original;
  original = same;
  EXPECT_EQ(moved.Hex(), "a96faf705af16834e6c632b61e964e1f");
  EXPECT_EQ(original.Hex(), "a96faf705af16834e6c632b61e964e1f");
}

TEST(AChecksum, differsByASingleBit) {
  std::string bytes = Bytes(1000);
  for (char& byte : bytes) {
    byte = static_cast<char>(byte ^ 1);
    ASSERT_NE(ChecksumOf(bytes), "bae798f9321bda6cd1db6a0afea2cc82");
    byte = static_cast<char>(byte ^ 1);
  }
}

}  // namespace
}  // namespace korvax::runfiles
