#include "tests/unit/configuration/FindingsCase.h"

#include <QJsonArray>
#include <QJsonObject>

namespace {

using Case = test::FindingsCase;

const QJsonValue Nothing(QJsonValue::Undefined);

const std::vector<Case> BoardCases{
    {"aDisabledBoardOfTheNameOfAnEnabledOne",
     {{"Hardware/1/board_name", "BOARD0"}},
     {"warning: Hardware[1] \"BOARD0\" key \"board_name\": expected another name than that of an enabled board, "
      "as "
      "each save of the file applies these \"configs\" to it, too; found \"BOARD0\""}},
    {"twoBoardsOfOneName",
     {{"Hardware/1/enable", true},
      {"Hardware/1/board_name", "BOARD0"},
      {"Hardware/1/board_plugin", "libCAENDig2Sim"},
      {"Hardware/1/board_connection_string", ""}},
     {"warning: Hardware[1] \"BOARD0\" key \"board_name\": expected a name that no other board has, as sources "
      "find the "
      "first one only; found \"BOARD0\", which is also Hardware[0]"}},
    {"enabledBoardWithoutTheKeysThatItNeeds",
     {{"Hardware/1", QJsonObject{{"enable", true}}}},
     {"error: Hardware[1] key \"board_plugin\": expected the base name of a library, without suffix; found "
      "nothing",
      "warning: Hardware[1] key \"board_name\": expected a text; found nothing",
      "warning: Hardware[1] key \"board_connection_string\": expected a text; found nothing"}},
    {"boardWithoutEnable",
     {{"Hardware/1/enable", Nothing}},
     {"warning: Hardware[1] \"BOARD1\" key \"enable\": expected true or false; found nothing"}},
    {"twoEndpointsOfOneName",
     {{"Hardware/0/endpoints/3", QJsonObject{{"name", "rates"}}}},
     {"warning: Hardware[0] \"BOARD0\" endpoints[3] \"rates\" key \"name\": expected a name that no other "
      "endpoint of the "
      "board has; found \"rates\", which is also endpoints[2]"}},
    {"commandOfNoEndpoint",
     {{"Hardware/0/commands/0/endpoint_type", "enrgy"}},
     {"warning: Hardware[0] \"BOARD0\" commands[0] \"Start\" key \"endpoint_type\": expected the name of an "
      "endpoint of "
      "this board, as the command is never sent without; found \"enrgy\" (did you mean \"energy\"?)"}},
    {"commandWithoutEndpoint",
     {{"Hardware/0/commands/0/endpoint_type", Nothing}},
     {"warning: Hardware[0] \"BOARD0\" commands[0] \"Start\" key \"endpoint_type\": expected the name of an "
      "endpoint of "
      "this board, as the command is never sent without; found nothing"}},
    {"scalarValueThatIsNoText",
     {{"Hardware/0/configs/0/elements/0/value", 100}},
     {"warning: Hardware[0] \"BOARD0\" configs[0] \"Channels\" elements[0] \"Mode\" key \"value\": expected a "
      "text, such "
      "as \"100\"; found 100"}},
    {"parameterThatIsWrittenWithoutAValue",
     {{"Hardware/0/configs/0/elements/0/value", Nothing}, {"Hardware/0/configs/0/elements/2/values", Nothing}},
     {"warning: Hardware[0] \"BOARD0\" configs[0] \"Channels\" elements[0] \"Mode\" key \"value\": expected a "
      "text, such "
      "as \"100\"; found nothing",
      "warning: Hardware[0] \"BOARD0\" configs[0] \"Channels\" elements[2] \"Threshold\" key \"values\": "
      "expected an array "
      "with at least one value; found nothing"}},
    {"parameterThatIsWrittenWithoutAType",
     {{"Hardware/0/configs/0/elements/0/value_type", Nothing}},
     {"warning: Hardware[0] \"BOARD0\" configs[0] \"Channels\" elements[0] \"Mode\" key \"value_type\": expected "
      "one "
      "of \"list\", \"u32\", \"boolean\", \"bool_array\", \"list_array\", \"u32_array\", \"string_array\"; found "
      "nothing"}},
    {"parameterThatIsNeverWrittenNeedsNeitherTypeNorValues",
     {{"Hardware/0/configs/0/elements/0/value_type", Nothing},
      {"Hardware/0/configs/0/elements/0/direct_apply", false},
      {"Hardware/0/configs/0/elements/2/values", QJsonArray()},
      {"Hardware/0/configs/0/elements/2/access", "read_only"}},
     {}},
    {"eventsThatAreRecordedInNoFormatAndOneToAFile",
     {{"storage/format", Nothing}, {"storage/events_per_file", Nothing}},
     {"warning: storage key \"format\": expected one of \"BIN\", \"CSV\", \"JSON\"; found nothing",
      "warning: storage key \"events_per_file\": expected an integer from 1 to 2147483647, as events are "
      "recorded; "
      "found nothing"}},
    {"storageWhenNoEventsAreRecorded",
     {{"storage/format", Nothing}, {"storage/events_per_file", 0}, {"storage/enable_list", false}},
     {}},
    {"unknownKeys",
     {{"storge", 1}, {"storage/enable_lst", true}, {"Hardware/0/commands/1/pth", ""}},
     {"warning: Hardware[0] \"BOARD0\" commands[1] key \"pth\": expected a key that the server knows; found an "
      "unknown "
      "one (did you mean \"path\"?)",
      "warning: storage key \"enable_lst\": expected a key that the server knows; found an unknown one (did you "
      "mean "
      "\"enable_list\"?)",
      "warning: top level key \"storge\": expected a key that the server knows; found an unknown one (did you "
      "mean "
      "\"storage\"?)"}},
    {"nothingOfWhatMustBeThere",
     {{"storage", Nothing}, {"processing", Nothing}, {"Hardware", Nothing}},
     {"error: top level key \"storage\": expected an object; found nothing",
      "error: top level key \"Hardware\": expected an array of objects with at least 1 entry; found nothing"}},
};

const std::vector<Case> BindingCases{
    {"sourceOfNoBoard",
     {{"EVENTS/0/sources/0/source", "BORD0"}},
     {"warning: processing[0] \"events\" block \"source0\" sources[0] key \"source\": expected the name of an "
      "enabled "
      "board; found \"BORD0\" (did you mean \"BOARD0\"?)"}},
    {"sourceOfNoEndpoint",
     {{"EVENTS/0/sources/0/pin", "endpoints\\enrgy"}},
     {"warning: processing[0] \"events\" block \"source0\" sources[0] key \"pin\": expected \"endpoints\\\\\" "
      "and the name "
      "of an endpoint of \"BOARD0\"; found \"endpoints\\\\enrgy\" (did you mean \"endpoints\\\\energy\"?)"}},
    {"sourceOfADisabledEndpoint",
     {{"Hardware/0/endpoints/0/enable", false}},
     {"warning: processing[0] \"events\" block \"source0\" sources[0] key \"pin\": expected an enabled "
      "endpoint, as others "
      "are never started; found \"endpoints\\\\energy\", which isn't"}},
    {"sourceOfNothing",
     {{"EVENTS/0/sources", QJsonArray()}},
     {"warning: processing[0] \"events\" block \"source0\" key \"sources\": expected a board and its endpoint; "
      "found an "
      "empty array"}},
    {"sourceWithInputs",
     {{"EVENTS/0/input_count", 1}},
     {"warning: processing[0] \"events\" block \"source0\" key \"input_count\": expected 0, as a source has no "
      "input pins; "
      "found 1"}},
    {"sourceWithoutDataType",
     {{"EVENTS/0/data_type", Nothing}},
     {"warning: processing[0] \"events\" block \"source0\" key \"data_type\": expected one of \"energy\", "
      "\"energy_pair\", "
      "\"waveform\", \"rate_counters\"; found nothing"}},
    {"hvOfNoBoard",
     {{"OTHERS/4/sources/0/source", "BOARD1"}},
     {"warning: processing[1] \"others\" block \"hv0\" sources[0] key \"source\": expected the name of an "
      "enabled board; "
      "found \"BOARD1\" (did you mean \"BOARD0\"?)"}},
    {"hvOfNothing",
     {{"OTHERS/4/sources", Nothing}},
     {"warning: processing[1] \"others\" block \"hv0\" key \"sources\": expected a board; found nothing"}},
    {"hvWithInputs",
     {{"OTHERS/4/input_count", 1}},
     {"error: processing[1] \"others\" block \"hv0\" key \"input_count\": expected at most 0, as the block has "
      "0 input "
      "pins and \"sources\" 1 entries; found 1"}},
};

class BoardFindings : public testing::TestWithParam<Case> {};

TEST_P(BoardFindings, areThese) {
  test::ExpectFindings(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Boards, BoardFindings, testing::ValuesIn(BoardCases), test::NameOf);
INSTANTIATE_TEST_SUITE_P(Bindings, BoardFindings, testing::ValuesIn(BindingCases), test::NameOf);

}  // namespace
