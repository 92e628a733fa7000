#include "tests/unit/sinks/SpectrumFixture.h"

namespace {

using test::Energy;
using test::Spectrum;

TEST(SpectrumParameters, withoutGainAndCutsEverythingCountsInTheBinOfItsRawEnergy) {
  Spectrum spectrum(Spectrum::Size(8));
  spectrum.Run();
  ASSERT_TRUE(spectrum.Consume(Energy(1, 0), Energy(1, 5), Energy(1, 7)));
  EXPECT_EQ(spectrum.Channel(1), R"([{"data":[1,0,0,0,0,1,0,1]}])");
}

TEST(SpectrumParameters, binsAndChannelsAreNoneWhenTheConfigurationOmitsThem) {
  for (const char* parameters : {"", R"({"param_name":"bin_number","param_value":5})"}) {
    Spectrum spectrum(parameters);
    EXPECT_EQ(spectrum.Channel(0), "[]") << parameters;
  }
  Spectrum withoutBins(R"({"param_name":"ch_number","param_value":1})");
  EXPECT_EQ(withoutBins.Channel(0), R"([{"data":[]}])");
}

TEST(SpectrumParameters, aBlockWithoutAParametersListStillConstructs) {
  for (const QJsonValue& block : {QJsonValue(), QJsonValue(test::Object(R"({"name":"s"})")), QJsonValue("text"),
                                  QJsonValue(test::Object(R"({"parameters":5,"name":[],"data_type":7})"))}) {
    Histogram histogram(nullptr, test::SpectrumContext(), block);
    EXPECT_EQ(histogram.Inputs().size(), 1U);
    QString query = R"({"args":[{"cmd":"data_get_status"}]})";
    QString answer;
    histogram.InterpretMessage(&query, &answer);
    EXPECT_EQ(answer, R"([{"response": true, "status":"idle"}])");
  }
}

TEST(SpectrumParameters, aNameGivenTwiceTakesItsLastValueAndUnknownNamesAreIgnored) {
  Spectrum spectrum(R"({"param_name":"bin_number","param_value":9},{"param_name":"bins","param_value":7},
                       {"param_name":"Bin_number","param_value":8},{"param_name":"ch_number","param_value":1},
                       {"param_name":"bin_number","param_value":2})");
  EXPECT_EQ(spectrum.Channel(0), R"([{"data":[0,0]}])");
}

TEST(SpectrumParameters, integersThatAreNoNumbersReadAsZero) {
  for (const char* value : {R"("5")", "null", "true", "[5]", "{}", R"("")"}) {
    Spectrum bins(
        QByteArray(R"({"param_name":"ch_number","param_value":1},{"param_name":"bin_number","param_value":)") +
        value + "}");
    EXPECT_EQ(bins.Channel(0), R"([{"data":[]}])") << value;
    Spectrum channels(
        QByteArray(R"({"param_name":"bin_number","param_value":1},{"param_name":"ch_number","param_value":)") +
        value + "}");
    EXPECT_EQ(channels.Channel(0), "[]") << value;
  }
}

TEST(SpectrumParameters, aGainThatIsNoNumberReadsAsZeroAndPutsEverythingIntoBin0) {
  for (const char* value : {R"("2")", "null", "true", "[2]"}) {
    Spectrum spectrum(Spectrum::Size(4) + R"(,{"param_name":"gain","param_value":)" + value + "}");
    spectrum.Run();
    ASSERT_TRUE(spectrum.Consume(Energy(0, 3)));
    EXPECT_EQ(spectrum.Channel(0), R"([{"data":[1,0,0,0]}])") << value;
  }
}

TEST(SpectrumParameters, aCutThatIsNoNumberReadsAsZero) {
  testing::internal::CaptureStdout();
  Spectrum spectrum(Spectrum::Size(4) + R"(,{"param_name":"energy_cut_max","param_value":"3"})");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "Spectrum energy_cut_max: 0\n");
  spectrum.Run();
  ASSERT_TRUE(spectrum.Consume(Energy(0, 0), Energy(0, 1)));
  EXPECT_EQ(spectrum.Channel(0), R"([{"data":[1,0,0,0]}])");
}

TEST(SpectrumParameters, eachCutIsPrintedAsALineWhenItIsRead) {
  testing::internal::CaptureStdout();
  const Spectrum spectrum(Spectrum::Size(4) + R"(,{"param_name":"energy_cut_max","param_value":4294967295},
                                                  {"param_name":"gain","param_value":2},
                                                  {"param_name":"energy_cut_min","param_value":0.5},
                                                  {"param_name":"energy_cut_min","param_value":100},
                                                  {"param_name":"energy_cut_max","param_value":-1234567})");
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "Spectrum energy_cut_max: 4.29497e+09\n"
            "Spectrum energy_cut_min: 0.5\n"
            "Spectrum energy_cut_min: 100\n"
            "Spectrum energy_cut_max: -1.23457e+06\n");
}

TEST(SpectrumParameters, withoutCutsNothingIsPrinted) {
  testing::internal::CaptureStdout();
  const Spectrum spectrum(Spectrum::Size(4) + R"(,{"param_name":"gain","param_value":2})");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST(SpectrumParameters, aNewGainReachesTheLiveBlock) {
  Spectrum spectrum(Spectrum::Size(8));
  spectrum.Run();
  ASSERT_TRUE(spectrum.Consume(Energy(0, 1)));
  EXPECT_TRUE(spectrum.Apply(R"({"param_name":"gain","param_value":3.5})"));
  ASSERT_TRUE(spectrum.Consume(Energy(0, 2)));
  EXPECT_EQ(spectrum.Channel(0), R"([{"data":[0,1,0,0,0,0,0,1]}])");
}

TEST(SpectrumParameters, aNewCutReachesTheLiveBlockTogetherWithTheOtherOne) {
  testing::internal::CaptureStdout();
  Spectrum spectrum(Spectrum::Size(8) + R"(,{"param_name":"energy_cut_min","param_value":2})");
  spectrum.Run();
  EXPECT_TRUE(spectrum.Apply(R"({"param_name":"energy_cut_max","param_value":4})"));
  ASSERT_TRUE(spectrum.Consume(Energy(0, 1), Energy(0, 2), Energy(0, 4), Energy(0, 5)));
  EXPECT_EQ(spectrum.Channel(0), R"([{"data":[0,0,1,0,1,0,0,0]}])");
  EXPECT_TRUE(spectrum.Apply(R"({"param_name":"energy_cut_min","param_value":0})"));
  ASSERT_TRUE(spectrum.Consume(Energy(0, 1), Energy(0, 5)));
  EXPECT_EQ(spectrum.Channel(0), R"([{"data":[0,1,1,0,1,0,0,0]}])");
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "Spectrum energy_cut_min: 2\nSpectrum energy_cut_max: 4\nSpectrum energy_cut_min: 0\n");
}

TEST(SpectrumParameters, binsAndChannelsAreFixedAtConstruction) {
  Spectrum spectrum(Spectrum::Size(2, 1));
  EXPECT_TRUE(spectrum.Apply(Spectrum::Size(9, 9)));
  EXPECT_EQ(spectrum.Ask(R"({"args":[{"cmd":"get_data","channels":[0,1,2]}]})"), R"([{"data":[0,0]}])");
}

TEST(SpectrumParameters, theStepReportsSuccessWhateverItReads) {
  Spectrum spectrum(Spectrum::Size(2));
  EXPECT_TRUE(spectrum.block.ParseParameters(QJsonValue()));
  EXPECT_TRUE(spectrum.block.ParseParameters(5));
  EXPECT_TRUE(spectrum.Apply(R"(null,{"param_name":5},{"param_name":"unknown","param_value":[]})"));
}

}  // namespace
