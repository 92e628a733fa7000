#include "server/ChainAssembly.h"

#include "boards/DigitizerBoard.h"
#include "framework/KorvaxBlock.h"
#include "tests/support/Json.h"
#include "tests/support/LogCapture.h"
#include "tests/support/Printing.h"

#include <gtest/gtest.h>

namespace {

class ChainAssemblyTest : public testing::Test {
protected:
  ~ChainAssemblyTest() override {
    while (!blocks_.empty()) {
      blocks_.pop_back();  // consumers before the pins that they read
    }
  }

  QString Build(const QByteArray& processing) {
    return ChainAssembly(boards_, blocks_, "config.json").Build(test::Array(processing));
  }
  // One enabled chain "c" of these blocks.
  QString BuildChain(const QByteArray& blocks) {
    return Build(R"([{"filter_chain": [{"enable": true, "name": "c", "chain": [)" + blocks + "]}]}]");
  }

  QStringList FullPaths() const {
    QStringList paths;
    for (const auto& block : blocks_) {
      paths << block->FullPath();
    }
    return paths;
  }

  // Whether what the producer pushes on its output reaches the consumer's first input.
  static bool IsLinked(KorvaxBlock& consumer, KorvaxBlock& producer, std::size_t output = 0) {
    int signalled = 0;
    const auto connection = QObject::connect(consumer.Inputs().at(0).get(), &PinInput::DataReady, &consumer,
                                             [&](int) { ++signalled; });
    DataMessage message;
    message.batch = std::make_unique<PayloadBatch>();
    producer.Outputs().at(output)->Push(std::move(message));
    DataMessage taken;
    producer.Outputs().at(output)->Take(taken);
    QObject::disconnect(connection);
    return signalled == 1;
  }

  test::LogCapture log_;
  BoardList boards_;
  BlockList blocks_;
};

constexpr const char* SourceA = R"({"block_type": "source", "name": "a", "data_type": "energy"})";
constexpr const char* SourceB = R"({"block_type": "source", "name": "b", "data_type": "energy"})";

QByteArray Spectrum(const char* name, const char* sources, const char* inputCount = "1") {
  return QByteArray(R"({"block_type": "spectrum", "name": ")") + name + R"(", "input_count": )" + inputCount +
         R"(, "sources": )" + sources + "}";
}

TEST_F(ChainAssemblyTest, BlocksAreBuiltDepthFirstInFileOrderUnderTheirFullPaths) {
  EXPECT_EQ(Build(R"([
      {"filter_chain": [{"enable": true, "name": "x", "chain": [{"block_type": "source", "name": "1"},
                                                                {"block_type": "spectrum", "name": "2"}]},
                        {"enable": true, "name": "y", "chain": [{"block_type": "spectrum", "name": "3"}]}]},
      {"filter_chain": [{"enable": true, "name": "z", "chain": [{"block_type": "source", "name": "4"}]}]}])"),
            QString());
  EXPECT_EQ(FullPaths(),
            (QStringList{"processing/0/filter_chain/x/chain/1", "processing/0/filter_chain/x/chain/2",
                         "processing/0/filter_chain/y/chain/3", "processing/1/filter_chain/z/chain/4"}));
  EXPECT_EQ(blocks_[0]->Name(), QString("1"));
  EXPECT_EQ(blocks_[0]->BlockType(), QString("source"));
  EXPECT_EQ(blocks_[1]->BlockType(), QString("spectrum"));
  EXPECT_EQ(blocks_[1]->property("FullPath").toString(), QString("processing/0/filter_chain/x/chain/2"));
  EXPECT_TRUE(log_.Lines().isEmpty());
}

TEST_F(ChainAssemblyTest, ADisabledChainBuildsNothingYetItsGroupCounts) {
  EXPECT_EQ(Build(R"([
      {"filter_chain": [{"enable": false, "name": "x", "chain": [{"block_type": "nonsense"}]},
                        {"name": "x", "chain": [{"block_type": "nonsense"}]},
                        {"enable": "true", "chain": [{"block_type": "nonsense"}]},
                        {"enable": 1, "chain": [{"block_type": "nonsense"}]}]},
      {"filter_chain": []}, {}, 5, null,
      {"filter_chain": [{"enable": true, "name": "z", "chain": [{"block_type": "spectrum", "name": "s"}]}]}])"),
            QString());
  EXPECT_EQ(FullPaths(), QStringList{"processing/5/filter_chain/z/chain/s"});
}

TEST_F(ChainAssemblyTest, MissingAndMistypedPiecesBuildNothing) {
  for (const char* processing : {"[]", "[[]]", R"([{"filter_chain": {}}])", R"([{"filter_chain": "x"}])",
                                 R"([{"filter_chain": [1, null]}])", R"([{"filter_chain": [{"enable": true}]}])",
                                 R"([{"filter_chain": [{"enable": true, "chain": {}}]}])",
                                 R"([{"filter_chain": [{"enable": true, "chain": 7}]}])"}) {
    SCOPED_TRACE(processing);
    EXPECT_EQ(Build(processing), QString());
    EXPECT_TRUE(blocks_.empty());
  }
}

TEST_F(ChainAssemblyTest, NamesGoIntoTheFullPathAsTheyStand) {
  EXPECT_EQ(Build(R"([{"filter_chain": [{"enable": true, "name": "50% %1 /x", "chain": [
                      {"block_type": "spectrum", "name": "%2 \u0416"}]}, {"enable": true, "name": 5, "chain": [
                      {"block_type": "spectrum", "name": 6}]}]}])"),
            QString());
  EXPECT_EQ(FullPaths(), (QStringList{QString("processing/0/filter_chain/50% %1 /x/chain/%2 ") + QChar(0x0416),
                                      "processing/0/filter_chain//chain/"}));
}

TEST_F(ChainAssemblyTest, AnInputIsLinkedToItsSourcesPin) {
  EXPECT_EQ(
      BuildChain(QByteArray(SourceA) + "," + SourceB + "," + Spectrum("s", R"([{"source": "b", "pin": "0"}])")),
      QString());
  ASSERT_EQ(blocks_.size(), 3U);
  EXPECT_TRUE(IsLinked(*blocks_[2], *blocks_[1]));
  EXPECT_FALSE(IsLinked(*blocks_[2], *blocks_[0]));
}

TEST_F(ChainAssemblyTest, ThePinsTextIsTheIndexOfTheOutputAndANumberIsOutputZero_isKept) {
  const QByteArray tee = R"({"block_type": "tee", "name": "a", "output_count": 3})";
  const std::pair<const char*, std::size_t> rows[] = {
      {"\"1\"", 1}, {"\"2\"", 2}, {"\"0\"", 0}, {"1", 0}, {"2", 0}};
  for (const auto& [pin, output] : rows) {
    SCOPED_TRACE(pin);
    blocks_.clear();
    const QByteArray sources = QByteArray(R"([{"source": "a", "pin": )") + pin + "}]";
    EXPECT_EQ(BuildChain(tee + "," + Spectrum("s", sources.constData())), QString());
    ASSERT_EQ(blocks_.size(), 2U);
    for (std::size_t i = 0; i < 3; ++i) {
      EXPECT_EQ(IsLinked(*blocks_[1], *blocks_[0], i), i == output) << i;
    }
    blocks_.pop_back();
  }
}

TEST_F(ChainAssemblyTest, APinThatIsNoTextReadsAsPinZero_isKept) {
  for (const char* pin : {"1", "7", "-1", "true", "null", "[]", "\"\"", "\"x\"", "\"1x\"", "\"0.9\""}) {
    SCOPED_TRACE(pin);
    blocks_.clear();
    const QByteArray sources = QByteArray(R"([{"source": "a", "pin": )") + pin + "}]";
    EXPECT_EQ(BuildChain(QByteArray(SourceA) + "," + Spectrum("s", sources.constData())), QString());
    ASSERT_EQ(blocks_.size(), 2U);
    EXPECT_TRUE(IsLinked(*blocks_[1], *blocks_[0]));
    blocks_.pop_back();
  }
}

TEST_F(ChainAssemblyTest, OfTwoBlocksOfOneNameTheFirstIsReferredTo) {
  EXPECT_EQ(
      BuildChain(QByteArray(SourceA) + "," + SourceA + "," + Spectrum("s", R"([{"source": "a", "pin": "0"}])")),
      QString());
  EXPECT_TRUE(IsLinked(*blocks_[2], *blocks_[0]));
  EXPECT_FALSE(IsLinked(*blocks_[2], *blocks_[1]));
}

TEST_F(ChainAssemblyTest, TwoBlocksOnOnePinShareItsMessages_isKept) {
  const QByteArray sources = R"([{"source": "a", "pin": "0"}])";
  ASSERT_EQ(BuildChain(QByteArray(SourceA) + "," + Spectrum("s", sources) + "," + Spectrum("t", sources)),
            QString());
  for (const auto& block : blocks_) {
    block->StopWorker();  // the messages below are taken here
  }
  for (int i = 0; i < 2; ++i) {
    DataMessage message;
    message.batch = std::make_unique<PayloadBatch>();
    blocks_[0]->Outputs().at(0)->Push(std::move(message));
  }
  DataMessage taken;
  EXPECT_EQ(blocks_[1]->Inputs().at(0)->Pop(taken), 0);
  EXPECT_EQ(blocks_[2]->Inputs().at(0)->Pop(taken), 0);
  EXPECT_EQ(blocks_[1]->Inputs().at(0)->Pop(taken), 1);
  EXPECT_EQ(blocks_[2]->Inputs().at(0)->Pop(taken), 1);
}

TEST_F(ChainAssemblyTest, AnEarlierGroupAndChainCanBeReferredTo) {
  EXPECT_EQ(Build(QByteArray(R"([{"filter_chain": [{"enable": true, "name": "x", "chain": [)") + SourceA +
                  R"(]}]}, {"filter_chain": [{"enable": true, "name": "y", "chain": [)" +
                  Spectrum("s", R"([{"source": "a", "pin": "0"}])") + "]}]}]"),
            QString());
  EXPECT_TRUE(IsLinked(*blocks_[1], *blocks_[0]));
}

TEST_F(ChainAssemblyTest, AnInputCountThatIsNotPositiveMakesNoLink) {
  for (const char* count : {"0", "-1", "-2147483648", "\"1\"", "true", "null", "0.5", "1.5", "1e300"}) {
    SCOPED_TRACE(count);
    while (!blocks_.empty()) {
      blocks_.pop_back();
    }
    EXPECT_EQ(BuildChain(QByteArray(SourceA) + "," +
                         Spectrum("s", R"([{"source": "a", "pin": "0"}, {"source": "nobody"}])", count)),
              QString());
    ASSERT_EQ(blocks_.size(), 2U);
    EXPECT_FALSE(IsLinked(*blocks_[1], *blocks_[0]));
  }
}

TEST_F(ChainAssemblyTest, SourcesBeyondTheInputCountAreIgnored) {
  EXPECT_EQ(BuildChain(QByteArray(SourceA) + "," +
                       Spectrum("s", R"([{"source": "a", "pin": "0"}, {"source": "nobody"}])")),
            QString());
  EXPECT_TRUE(IsLinked(*blocks_[1], *blocks_[0]));
}

TEST_F(ChainAssemblyTest, ASourceNeverGetsInputsWhateverItsInputCount) {
  EXPECT_EQ(BuildChain(R"({"block_type": "source", "name": "a", "input_count": 3})"), QString());
  ASSERT_EQ(blocks_.size(), 1U);
  EXPECT_TRUE(blocks_[0]->Inputs().empty());
}

TEST_F(ChainAssemblyTest, OutputCountIsLeftToTheBlocks) {
  EXPECT_EQ(BuildChain(R"({"block_type": "source", "name": "a", "output_count": 5})"), QString());
  EXPECT_EQ(blocks_.at(0)->Outputs().size(), 1U);
}

TEST_F(ChainAssemblyTest, ASourceWhoseBindingFailsIsBuiltAllTheSame) {
  EXPECT_EQ(BuildChain(QByteArray(R"({"block_type": "source", "name": "a", "sources": [{"pin": "x"}]})") + "," +
                       Spectrum("s", R"([{"source": "a", "pin": "0"}])")),
            QString());
  EXPECT_EQ(blocks_.size(), 2U);
  EXPECT_EQ(log_.Lines(), QStringList{"Warning: source block  \"a\"  Invalid endpoint config parameter"});
}

}  // namespace
