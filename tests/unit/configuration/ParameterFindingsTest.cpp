#include "tests/unit/configuration/FindingsCase.h"

#include <QJsonArray>
#include <QJsonObject>

namespace {

using Case = test::FindingsCase;

const QJsonValue Nothing(QJsonValue::Undefined);

QJsonObject Parameter(const char* name, const QJsonValue& value) {
  return {{"param_name", name}, {"param_value", value}};
}

const std::vector<Case> ParameterCases{
    {"unknownParameter",
     {{"EVENTS/2/parameters/4", Parameter("bin_nmber", 5)}},
     {"warning: processing[0] \"events\" block \"spectrum0\" parameters[4] key \"param_name\": expected one of "
      "\"ch_number\", \"bin_number\", \"gain\", \"energy_cut_min\", \"energy_cut_max\"; found \"bin_nmber\" "
      "(did you mean "
      "\"bin_number\"?)"}},
    {"unknownParameterThatIsLikeNone",
     {{"OTHERS/4/parameters/1", Parameter("voltage", 5)}},
     {"warning: processing[1] \"others\" block \"hv0\" parameters[1] key \"param_name\": expected "
      "\"n_channels\"; found "
      "\"voltage\""}},
    {"parameterWithoutNameOrValue",
     {{"OTHERS/4/parameters/1", QJsonObject()}},
     {"warning: processing[1] \"others\" block \"hv0\" parameters[1] key \"param_name\": expected "
      "\"n_channels\"; found "
      "nothing",
      "warning: processing[1] \"others\" block \"hv0\" parameters[1] key \"param_value\": expected a value; "
      "found "
      "nothing"}},
    {"repeatedParameter",
     {{"OTHERS/4/parameters/1", Parameter("n_channels", 5)}},
     {"warning: processing[1] \"others\" block \"hv0\" parameters[1] key \"param_name\": expected each "
      "parameter once, as "
      "the last value of several counts; found one that stands in an earlier entry, too"}},
    {"missingParameters",
     {{"EVENTS/3/parameters", QJsonArray()}, {"OTHERS/1/parameters", Nothing}},
     {"warning: processing[0] \"events\" block \"times0\" key \"parameters\": expected a parameter "
      "\"ch_number\" with an "
      "integer from 1 to 67108864; found none",
      "warning: processing[0] \"events\" block \"times0\" key \"parameters\": expected a parameter "
      "\"bin_number\" with an "
      "integer from 1 to 67108864; found none",
      "warning: processing[0] \"events\" block \"times0\" key \"parameters\": expected a parameter \"binning\" "
      "with a "
      "number greater than 0; found none",
      "warning: processing[1] \"others\" block \"scope0\" key \"parameters\": expected a parameter "
      "\"sample_number\" with "
      "an integer from 1 to 16777216; found none",
      "warning: processing[1] \"others\" block \"scope0\" key \"parameters\": expected a parameter "
      "\"ch_number\" with an "
      "integer from 1 to 1048576; found none",
      "warning: processing[1] \"others\" block \"scope0\" key \"parameters\": expected a parameter "
      "\"ch_analog\" with 1; "
      "found none"}},
    {"parametersWithoutEffect",
     {{"EVENTS/6/parameters", QJsonArray{Parameter("n_windows", 3), Parameter("timestamp_delta", 0.5)}}},
     {"warning: processing[0] \"events\" block \"sorter0\" key \"n_windows\": expected no such parameter, as "
      "hold time and "
      "group width are fixed; found 3",
      "warning: processing[0] \"events\" block \"sorter0\" key \"timestamp_delta\": expected no such parameter, "
      "as hold "
      "time and group width are fixed; found 0.5"}},
    {"positionsOutsideTheMap",
     {{"EVENTS/7/parameters/0/param_value", QJsonArray{0, -1, 2, 1}}},
     {"warning: processing[0] \"events\" block \"position0\" key \"positions\"[1]: expected a column of the "
      "map, from 0 to "
      "1, as others count nothing; found -1",
      "warning: processing[0] \"events\" block \"position0\" key \"positions\"[2]: expected a column of the "
      "map, from 0 to "
      "1, as others count nothing; found 2"}},
    {"partnersThatAreMissing",
     {{"EVENTS/7/parameters/1/param_value", QJsonArray{4, 0, -1, 2, 0}}},
     {"warning: processing[0] \"events\" block \"position0\" key \"correlated_channels\": expected at most 4 "
      "entries, as "
      "\"positions\" has no more; found 5",
      "warning: processing[0] \"events\" block \"position0\" key \"correlated_channels\"[0]: expected a channel "
      "that has an "
      "entry in \"positions\", from 0 to 3, as others count nothing; found 4",
      "warning: processing[0] \"events\" block \"position0\" key \"correlated_channels\"[2]: expected a channel "
      "that has an "
      "entry in \"positions\", from 0 to 3, as others count nothing; found -1"}},
    {"channelsWithoutPartners",
     {{"EVENTS/7/parameters/1/param_value", QJsonArray{1, 0}}},
     {"warning: processing[0] \"events\" block \"position0\" key \"correlated_channels\": expected a partner for "
      "each "
      "of the 4 channels of \"positions\"; found 2"}},
    {"noPartnersAtAll",
     {{"EVENTS/7/parameters/1/param_value", QJsonArray()}},
     {"warning: processing[0] \"events\" block \"position0\" key \"correlated_channels\": expected an array of "
      "integers "
      "with at least 1 entry; found an empty array"}},
    {"spectrumThatIsTooLarge",
     {{"EVENTS/2/parameters/1/param_value", 8388609}},
     {"error: processing[0] \"events\" block \"spectrum0\" key \"bin_number\": expected \"ch_number\" times "
      "\"bin_number\" of at most 67108864; found 67108872"}},
    {"mapThatIsTooLarge",
     {{"EVENTS/7/parameters/4/param_value", 33554433}},
     {"error: processing[0] \"events\" block \"position0\" key \"y_positions\": expected \"y_positions\" times "
      "half the "
      "entries of \"positions\" of at most 67108864; found 67108866"}},
    {"tracesThatAreTooLarge",
     {{"OTHERS/1/parameters/0/param_value", 524289}},
     {"error: processing[1] \"others\" block \"scope0\" key \"sample_number\": expected \"sample_number\" times "
      "\"ch_number\" times (\"ch_analog\" + \"ch_digital\") of at most 16777216; found 16777248"}},
    {"moreAnalogTracesThanAreTaken",
     {{"OTHERS/1/parameters/0/param_value", 1},
      {"OTHERS/1/parameters/1/param_value", 1},
      {"OTHERS/1/parameters/2/param_value", 1048577}},
     {"warning: processing[1] \"others\" block \"scope0\" key \"ch_analog\": expected 1; found 1048577",
      "error: processing[1] \"others\" block \"scope0\" key \"ch_analog\": expected at most 1048576; found "
      "1048577"}},
    {"asManyAnalogTracesAsAreTaken",
     {{"OTHERS/1/parameters/0/param_value", 1},
      {"OTHERS/1/parameters/1/param_value", 1},
      {"OTHERS/1/parameters/2/param_value", 1048576}},
     {"warning: processing[1] \"others\" block \"scope0\" key \"ch_analog\": expected 1; found 1048576"}},
};

class ParameterFindings : public testing::TestWithParam<Case> {};

TEST_P(ParameterFindings, areThese) {
  test::ExpectFindings(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Parameters, ParameterFindings, testing::ValuesIn(ParameterCases), test::NameOf);

}  // namespace
