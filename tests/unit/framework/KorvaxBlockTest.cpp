#include "framework/KorvaxBlock.h"
#include "tests/support/Json.h"
#include "tests/support/Printing.h"

#include <gtest/gtest.h>

#include <QMetaProperty>

namespace {

ChainContext ProbeContext() {
  ChainContext context;
  context.fullPath = "processing/0/filter_chain/main/chain/probe";
  context.configurationPath = "/etc/korvax.json";
  return context;
}

// The steps that every concrete block takes, with one input and two outputs.
class ProbeBlock : public KorvaxBlock {
public:
  explicit ProbeBlock(const char* block, bool dumpCapable = false)
      : KorvaxBlock("probe", dumpCapable, ProbeContext(), nullptr) {
    ReadCommonKeys(test::Object(block));
    AddInput();
    AddOutput();
    AddOutput();
  }
  using KorvaxBlock::Context;
};

TEST(KorvaxBlock, hasExactlyThePropertiesNameAndFullPathOfItsOwn) {
  const QMetaObject& meta = KorvaxBlock::staticMetaObject;
  ASSERT_EQ(meta.propertyCount() - meta.propertyOffset(), 2);
  EXPECT_STREQ(meta.property(meta.propertyOffset()).name(), "Name");
  EXPECT_STREQ(meta.property(meta.propertyOffset()).typeName(), "QString");
  EXPECT_STREQ(meta.property(meta.propertyOffset() + 1).name(), "FullPath");
  EXPECT_STREQ(meta.property(meta.propertyOffset() + 1).typeName(), "QString");
}

TEST(KorvaxBlock, showsItsNameAndPathAsProperties) {
  const ProbeBlock block(R"({"name":"probe 1","data_type":"energy"})");
  EXPECT_EQ(block.property("Name").toString(), "probe 1");
  EXPECT_EQ(block.property("FullPath").toString(), "processing/0/filter_chain/main/chain/probe");
}

TEST(KorvaxBlock, propertiesCanBeSet) {
  ProbeBlock block("{}");
  EXPECT_TRUE(block.setProperty("Name", "renamed"));
  EXPECT_TRUE(block.setProperty("FullPath", "elsewhere"));
  EXPECT_EQ(block.Name(), "renamed");
  EXPECT_EQ(block.FullPath(), "elsewhere");
}

TEST(KorvaxBlock, tellsItsTypeAndWhetherItTakesPartInRuns) {
  EXPECT_EQ(ProbeBlock("{}").BlockType(), "probe");
  EXPECT_FALSE(ProbeBlock("{}", false).IsDumpCapable());
  EXPECT_TRUE(ProbeBlock("{}", true).IsDumpCapable());
}

TEST(KorvaxBlock, keepsTheChainContext) {
  const ProbeBlock block("{}");
  EXPECT_EQ(block.Context().configurationPath, "/etc/korvax.json");
  EXPECT_EQ(block.Context().boards, nullptr);
  EXPECT_EQ(block.Context().blocks, nullptr);
}

TEST(KorvaxBlock, namesEveryPinAfterItsDataType) {
  const ProbeBlock block(R"({"name":"probe","data_type":"waveform"})");
  ASSERT_EQ(block.Inputs().size(), 1U);
  ASSERT_EQ(block.Outputs().size(), 2U);
  EXPECT_EQ(block.Inputs()[0]->Name(), "waveform");
  EXPECT_EQ(block.Outputs()[0]->Name(), "waveform");
  EXPECT_EQ(block.Outputs()[1]->Name(), "waveform");
}

TEST(KorvaxBlock, missingOrWronglyTypedCommonKeysReadAsEmptyTexts) {
  for (const char* text : {"{}", R"({"name":5,"data_type":["energy"]})", R"({"name":null,"data_type":{}})"}) {
    const ProbeBlock block(text);
    EXPECT_EQ(block.Name(), "") << text;
    EXPECT_EQ(block.Inputs()[0]->Name(), "") << text;
  }
}

TEST(KorvaxBlock, baseTakesNoParametersAndReportsSuccess) {
  ProbeBlock block(R"({"name":"probe"})");
  KorvaxBlock& base = block;
  EXPECT_TRUE(base.ParseParameters(QJsonValue()));
  EXPECT_TRUE(base.ParseParameters(5));
  EXPECT_TRUE(base.ParseParameters(test::Object(R"({"name":"other","parameters":[{"param_name":"x"}]})")));
  EXPECT_EQ(block.Name(), "probe");
}

TEST(KorvaxBlock, hasNoFaultAndNothingToStop) {
  ProbeBlock block("{}");
  EXPECT_EQ(block.Fault(), "");
  block.StopWorker();
  EXPECT_EQ(block.parent(), nullptr);
}

TEST(KorvaxBlock, isDestroyedThroughItsBase) {
  bool destroyed = false;
  std::unique_ptr<KorvaxBlock> block = std::make_unique<ProbeBlock>("{}");
  QObject::connect(block.get(), &QObject::destroyed, [&destroyed] { destroyed = true; });
  block.reset();
  EXPECT_TRUE(destroyed);
}

}  // namespace
