#include "tests/unit/configuration/FindingsCase.h"

#include <QJsonArray>
#include <QJsonObject>

namespace {

using Case = test::FindingsCase;

const QJsonValue Nothing(QJsonValue::Undefined);

QJsonObject Parameter(const char* name, const QJsonValue& value) {
  return {{"param_name", name}, {"param_value", value}};
}

const std::vector<Case> LinkCases{
    {"unknownBlockType",
     {{"EVENTS/5/block_type", "dumpr"}},
     {"warning: processing[0] \"events\" block \"tee0\": expected a block that reads output pin 3; found none",
      "error: processing[0] \"events\" block \"dumper0\" key \"block_type\": expected one of \"source\", "
      "\"time_sorting\", "
      "\"tee\", \"position\", \"image\", \"spectrum\", \"tof_histogram\", \"dumper\", \"oscilloscope\", "
      "\"rate_counters_sink\", \"hv\"; found \"dumpr\" (did you mean \"dumper\"?)"}},
    {"noBlockType",
     {{"OTHERS/5", QJsonObject{{"name", "x"}}}},
     {"error: processing[1] \"others\" block \"x\" key \"block_type\": expected one of \"source\", "
      "\"time_sorting\", "
      "\"tee\", \"position\", \"image\", \"spectrum\", \"tof_histogram\", \"dumper\", \"oscilloscope\", "
      "\"rate_counters_sink\", \"hv\"; found nothing"}},
    {"noName",
     {{"OTHERS/1/name", Nothing}},
     {"warning: processing[1] \"others\" block [1] key \"name\": expected a text; found nothing"}},
    {"twoBlocksOfOneName",
     {{"EVENTS/5/name", "spectrum0"}},
     {"warning: processing[0] \"events\" block \"spectrum0\" key \"name\": expected a name that no other block "
      "has, as "
      "sources of later blocks find the first one only; found \"spectrum0\", which is also the name of an "
      "earlier block"}},
    {"sourcesThatNameNoBlock",
     {{"EVENTS/2/sources/0/source", "te0"}},
     {"warning: processing[0] \"events\" block \"tee0\": expected a block that reads output pin 0; found none",
      "error: processing[0] \"events\" block \"spectrum0\" sources[0] key \"source\": expected the name of a "
      "block that "
      "stands earlier in the file; found \"te0\" (did you mean \"tee0\"?)"}},
    {"sourcesThatNameALaterBlock",
     {{"EVENTS/2/sources/0/source", "sorter0"}},
     {"warning: processing[0] \"events\" block \"tee0\": expected a block that reads output pin 0; found none",
      "error: processing[0] \"events\" block \"spectrum0\" sources[0] key \"source\": expected the name of a "
      "block that "
      "stands earlier in the file; found \"sorter0\", which doesn't stand earlier"}},
    {"sourcesThatNameTheBlockItself",
     {{"OTHERS/1/sources/0/source", "scope0"}},
     {"warning: processing[1] \"others\" block \"waves0\": expected a block that reads output pin 0; found none",
      "error: processing[1] \"others\" block \"scope0\" sources[0] key \"source\": expected the name of a block "
      "that "
      "stands earlier in the file; found \"scope0\", which doesn't stand earlier"}},
    {"pinBeyondTheOutputs",
     {{"EVENTS/2/sources/0/pin", "6"}},
     {"warning: processing[0] \"events\" block \"tee0\": expected a block that reads output pin 0; found none",
      "error: processing[0] \"events\" block \"spectrum0\" sources[0] key \"pin\": expected one of the 6 output "
      "pins of "
      "\"tee0\", counted from 0; found \"6\""}},
    {"pinOfABlockWithoutOutputs",
     {{"EVENTS/5/sources/0/source", "spectrum0"}, {"EVENTS/5/sources/0/pin", "0"}},
     {"warning: processing[0] \"events\" block \"tee0\": expected a block that reads output pin 3; found none",
      "error: processing[0] \"events\" block \"dumper0\" sources[0] key \"pin\": expected one of the 0 output "
      "pins of "
      "\"spectrum0\", counted from 0; found \"0\""}},
    {"numericPin",
     {{"OTHERS/1/sources/0/pin", 0}},
     {"warning: processing[1] \"others\" block \"scope0\" sources[0] key \"pin\": expected the index of an "
      "output pin as a "
      "text, such as \"0\"; found 0"}},
    {"numericPinThatReadsAsAnother",
     {{"EVENTS/3/sources/0/pin", 1}},
     {"warning: processing[0] \"events\" block \"tee0\": expected a block that reads output pin 1; found none",
      "warning: processing[0] \"events\" block \"times0\" sources[0]: expected an output pin that no other "
      "block reads, as "
      "each message reaches only one; found pin 0 of \"tee0\", which also feeds \"spectrum0\"",
      "warning: processing[0] \"events\" block \"times0\" sources[0] key \"pin\": expected the index of an "
      "output pin as a "
      "text, such as \"0\"; found 1"}},
    {"outputThatFeedsTwo",
     {{"EVENTS/11", QJsonObject{{"block_type", "dumper"},
                                {"name", "dumper2"},
                                {"input_count", 1},
                                {"sources", QJsonArray{QJsonObject{{"source", "tee1"}, {"pin", "0"}}}}}}},
     {"warning: processing[0] \"events\" block \"dumper2\" sources[0]: expected an output pin that no other "
      "block reads, "
      "as each message reaches only one; found pin 0 of \"tee1\", which also feeds \"dumper1\""}},
    {"outputsThatFeedNone",
     {{"EVENTS/1/output_count", 20}},
     {"warning: processing[0] \"events\" block \"tee0\": expected a block that reads output pins 6, 7, 8, 9, "
      "10, "
      "\xE2\x80\xA6; found none"}},
    {"inputCountBeyondTheSources",
     {{"OTHERS/3/sources", QJsonArray()}},
     {"warning: processing[1] \"others\" block \"rates_source0\": expected a block that reads output pin 0; "
      "found none",
      "error: processing[1] \"others\" block \"rates0\" key \"input_count\": expected at most 0, as the block "
      "has 1 input "
      "pins and \"sources\" 0 entries; found 1"}},
    {"inputCountBeyondThePins",
     {{"OTHERS/3/input_count", 2}},
     {"warning: processing[1] \"others\" block \"rates_source0\": expected a block that reads output pin 0; "
      "found none",
      "error: processing[1] \"others\" block \"rates0\" key \"input_count\": expected at most 1, as the block "
      "has 1 input "
      "pins and \"sources\" 1 entries; found 2"}},
    {"noInputs",
     {{"OTHERS/3/input_count", Nothing}},
     {"warning: processing[1] \"others\" block \"rates_source0\": expected a block that reads output pin 0; "
      "found none",
      "warning: processing[1] \"others\" block \"rates0\" key \"input_count\": expected 1, as with 0 the block "
      "gets no "
      "data; found nothing"}},
    {"teeWithoutOutputs",
     {{"EVENTS/9/output_count", Nothing}},
     {"warning: processing[0] \"events\" block \"tee1\" key \"output_count\": expected an integer from 1 to "
      "1024; found "
      "nothing",
      "error: processing[0] \"events\" block \"dumper1\" sources[0] key \"pin\": expected one of the 0 output "
      "pins of "
      "\"tee1\", counted from 0; found \"0\""}},
};

const std::vector<Case> DataCases{
    {"eventsIntoAnOscilloscope",
     {{"OTHERS/0/data_type", "energy_pair"}},
     {"warning: processing[1] \"others\" block \"scope0\" sources[0]: expected data of the type \"waveform\"; "
      "found "
      "\"energy_pair\", from \"waves0\""}},
    {"ratesIntoSinksOfEvents",
     {{"EVENTS/0/data_type", "rate_counters"}},
     {"warning: processing[0] \"events\" block \"spectrum0\" sources[0]: expected data of the type \"energy\" "
      "or "
      "\"energy_pair\"; found \"rate_counters\", from \"source0\"",
      "warning: processing[0] \"events\" block \"times0\" sources[0]: expected data of the type \"energy\" or "
      "\"energy_pair\"; found \"rate_counters\", from \"source0\"",
      "warning: processing[0] \"events\" block \"image0\" sources[0]: expected data of the type \"energy\" or "
      "\"energy_pair\"; found \"rate_counters\", from \"source0\"",
      "warning: processing[0] \"events\" block \"dumper0\" sources[0]: expected data of the type \"energy\" or "
      "\"energy_pair\"; found \"rate_counters\", from \"source0\"",
      "warning: processing[0] \"events\" block \"sorter0\" sources[0]: expected data of the type \"energy\" or "
      "\"energy_pair\"; found \"rate_counters\", from \"source0\"",
      "warning: processing[0] \"events\" block \"position0\" sources[0]: expected data of the type \"energy\" "
      "or "
      "\"energy_pair\"; found \"rate_counters\", from \"source0\"",
      "warning: processing[0] \"events\" block \"sorter1\" sources[0]: expected data of the type \"energy\" or "
      "\"energy_pair\"; found \"rate_counters\", from \"source0\"",
      "warning: processing[0] \"events\" block \"dumper1\" sources[0]: expected data of the type \"energy\" or "
      "\"energy_pair\"; found \"rate_counters\", from \"source0\""}},
    {"wavesIntoARateSink",
     {{"OTHERS/2/data_type", "waveform"}},
     {"warning: processing[1] \"others\" block \"rates0\" sources[0]: expected data of the type "
      "\"rate_counters\"; found "
      "\"waveform\", from \"rates_source0\""}},
    {"wavesThroughATimeSorting",
     {{"OTHERS/1", QJsonObject{{"block_type", "time_sorting"},
                               {"name", "sorted"},
                               {"input_count", 1},
                               {"sources", QJsonArray{QJsonObject{{"source", "waves0"}, {"pin", "0"}}}}}},
      {"OTHERS/5",
       QJsonObject{{"block_type", "spectrum"},
                   {"name", "spectrum1"},
                   {"input_count", 1},
                   {"sources", QJsonArray{QJsonObject{{"source", "sorted"}, {"pin", "0"}}}},
                   {"parameters", QJsonArray{Parameter("ch_number", 1), Parameter("bin_number", 1)}}}}},
     {"warning: processing[1] \"others\" block \"sorted\" sources[0]: expected data of the type \"energy\" or "
      "\"energy_pair\"; found \"waveform\", from \"waves0\"",
      "warning: processing[1] \"others\" block \"spectrum1\" sources[0]: expected data of the type \"energy\" or "
      "\"energy_pair\"; found \"waveform\", from \"waves0\""}},
    {"wavesThroughATee",
     {{"OTHERS/1", QJsonObject{{"block_type", "tee"},
                               {"name", "copies"},
                               {"input_count", 1},
                               {"output_count", 1},
                               {"sources", QJsonArray{QJsonObject{{"source", "waves0"}, {"pin", "0"}}}}}},
      {"OTHERS/5", QJsonObject{{"block_type", "oscilloscope"},
                               {"name", "scope1"},
                               {"input_count", 1},
                               {"sources", QJsonArray{QJsonObject{{"source", "copies"}, {"pin", "0"}}}},
                               {"parameters", QJsonArray{Parameter("sample_number", 1), Parameter("ch_number", 1),
                                                         Parameter("ch_analog", 1)}}}}},
     {"warning: processing[1] \"others\" block \"scope1\" sources[0]: expected waveforms that no tee has "
      "copied, as copies "
      "show nothing; found those of the tee \"copies\""}},
};

const std::vector<Case> NameCases{
    {"theNameOfRunControl",
     {{"EVENTS/5/name", "commands"}},
     {"error: processing[0] \"events\" block \"commands\" key \"name\": expected another name, as this is the one "
      "of run control, and no run could be started; found \"commands\""}},
    {"theNameOfRunControlOfTwo",
     {{"EVENTS/5/name", "commands"}, {"EVENTS/10/name", "commands"}},
     {"error: processing[0] \"events\" block \"commands\" key \"name\": expected another name, as this is the one "
      "of run control, and no run could be started; found \"commands\"",
      "error: processing[0] \"events\" block \"commands\" key \"name\": expected another name, as this is the one "
      "of run control, and no run could be started; found \"commands\"",
      "warning: processing[0] \"events\" block \"commands\" key \"name\": expected a name that no other block "
      "has, as sources of later blocks find the first one only; found \"commands\", which is also the name of an "
      "earlier block"}},
    {"otherNamesThatHaveTheWord", {{"EVENTS/5/name", "commands0"}, {"EVENTS/10/name", "Commands"}}, {}},
    {"theNameOfTheRouteByPath",
     {{"OTHERS/1/name", "query_by_json"}},
     {"warning: processing[1] \"others\" block \"query_by_json\" key \"name\": expected another name, as clients "
      "can't reach a block by this one; found \"query_by_json\""}},
    {"namesWithASlash",
     {{"EVENTS/5/name", "lists/a"}},
     {"warning: processing[0] \"events\" block \"lists/a\" key \"name\": expected a name without \"/\", as "
      "clients can't reach the block by it, and in the paths of recorded files it means a folder; found "
      "\"lists/a\""}},
};

class LinkFindings : public testing::TestWithParam<Case> {};

TEST_P(LinkFindings, areThese) {
  test::ExpectFindings(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Links, LinkFindings, testing::ValuesIn(LinkCases), test::NameOf);
INSTANTIATE_TEST_SUITE_P(Names, LinkFindings, testing::ValuesIn(NameCases), test::NameOf);
INSTANTIATE_TEST_SUITE_P(Data, LinkFindings, testing::ValuesIn(DataCases), test::NameOf);

}  // namespace
