#include "boards/BoardCommand.h"
#include "boards/BoardEndpoint.h"
#include "tests/support/Json.h"
#include "tests/support/Printing.h"

#include <gtest/gtest.h>

namespace {

BoardCommand Command(const char* json) {
  return BoardCommand::FromJson(test::Object(json));
}

TEST(BoardEndpoint, ReadsItsTextsItsSwitchAndItsType) {
  const BoardEndpoint endpoint = BoardEndpoint::FromJson(test::Object(
      R"({"name": "energy", "text": "Energies", "path": "\\endpoint\\e", "enable": true,
          "type": "energy_sci_u32"})"));
  EXPECT_EQ(endpoint.name, QString("energy"));
  EXPECT_EQ(endpoint.text, QString("Energies"));
  EXPECT_EQ(endpoint.path, QString("\\endpoint\\e"));
  EXPECT_TRUE(endpoint.enabled);
  EXPECT_EQ(static_cast<int>(endpoint.type), 0);
}

TEST(BoardEndpoint, AnyOtherTypeTextGivesCodeOne) {
  for (const char* json : {"{}", R"({"type": "wave"})", R"({"type": "ENERGY_SCI_U32"})", R"({"type": 0})"}) {
    SCOPED_TRACE(json);
    EXPECT_EQ(static_cast<int>(BoardEndpoint::FromJson(test::Object(json)).type), 1);
  }
}

TEST(BoardEndpoint, MissingAndMistypedKeysReadAsEmptyAndDisabled) {
  for (const char* json : {"{}", R"({"name": 1, "text": [], "path": {}, "enable": "true"})",
                           R"({"name": null, "text": true, "path": 2.5, "enable": 1})"}) {
    SCOPED_TRACE(json);
    const BoardEndpoint endpoint = BoardEndpoint::FromJson(test::Object(json));
    EXPECT_EQ(endpoint.name, QString());
    EXPECT_EQ(endpoint.text, QString());
    EXPECT_EQ(endpoint.path, QString());
    EXPECT_FALSE(endpoint.enabled);
  }
}

TEST(BoardEndpoint, AttachesEachCommandTypeToItsOwnList) {
  BoardEndpoint endpoint;
  for (const char* type : {"config", "config_all", "start", "stop", "reset", "nonsense"}) {
    endpoint.Attach(BoardCommand::FromJson({{"command_type", type}, {"path", type}}));
  }
  ASSERT_EQ(endpoint.configCommands.size(), 1U);
  ASSERT_EQ(endpoint.startCommands.size(), 1U);
  ASSERT_EQ(endpoint.stopCommands.size(), 1U);
  ASSERT_EQ(endpoint.resetCommands.size(), 1U);
  EXPECT_EQ(endpoint.configCommands[0].path, QString("config"));
  EXPECT_EQ(endpoint.startCommands[0].path, QString("start"));
  EXPECT_EQ(endpoint.stopCommands[0].path, QString("stop"));
  EXPECT_EQ(endpoint.resetCommands[0].path, QString("reset"));
}

TEST(BoardCommand, ReadsItsTexts) {
  const BoardCommand command = Command(R"({"name": "n", "text": "t", "path": "\\cmd\\p"})");
  EXPECT_EQ(command.name, QString("n"));
  EXPECT_EQ(command.text, QString("t"));
  EXPECT_EQ(command.path, QString("\\cmd\\p"));
  EXPECT_FALSE(command.attached);
}

TEST(BoardCommand, MissingAndMistypedKeysReadAsEmpty) {
  for (const char* json : {"{}", R"({"name": 1, "text": [], "path": {}, "command_type": 2})"}) {
    SCOPED_TRACE(json);
    const BoardCommand command = Command(json);
    EXPECT_EQ(command.name, QString());
    EXPECT_EQ(command.text, QString());
    EXPECT_EQ(command.path, QString());
    EXPECT_EQ(static_cast<int>(command.type), 5);
  }
}

TEST(BoardCommand, EveryTypeTextHasItsCode) {
  const std::pair<const char*, int> rows[] = {{"config", 0}, {"config_all", 1}, {"start", 2}, {"stop", 3},
                                              {"reset", 4},  {"", 5},           {"Start", 5}, {"stop ", 5}};
  for (const auto& [text, code] : rows) {
    SCOPED_TRACE(text);
    EXPECT_EQ(static_cast<int>(BoardCommand::FromJson({{"command_type", text}}).type), code);
  }
}

TEST(BoardCommand, FlagsAreTrueOnlyForTheTextTrue) {
  const std::pair<const char*, bool> rows[] = {{R"("true")", true}, {"true", false},      {R"("True")", false},
                                               {R"("1")", false},   {"1", false},         {"null", false},
                                               {R"("")", false},    {R"("false")", false}};
  for (const auto& [value, expected] : rows) {
    SCOPED_TRACE(value);
    const QByteArray json = QByteArray(R"({"display_ui": V, "loop": V})").replace("V", value);
    const BoardCommand command = Command(json.constData());
    EXPECT_EQ(command.displayUi, expected);
    EXPECT_EQ(command.loop, expected);
  }
}

TEST(BoardCommand, EachFlagHasItsOwnKey) {
  EXPECT_TRUE(Command(R"({"display_ui": "true"})").displayUi);
  EXPECT_FALSE(Command(R"({"display_ui": "true"})").loop);
  EXPECT_TRUE(Command(R"({"loop": "true"})").loop);
  EXPECT_FALSE(Command(R"({"loop": "true"})").displayUi);
}

}  // namespace
