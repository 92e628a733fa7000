#include "tests/system/SystemTest.h"

namespace test {

namespace {

class CommandLineTest : public SystemTest {
protected:
  std::string Output() const { return server.OutputLines().join(QLatin1Char('\n')).toStdString(); }
  QString DefaultPath() const { return installation.Path(QStringLiteral("korvax_config_qdcpos.json")); }
};

TEST_F(CommandLineTest, HelpIsPrintedBeforeAnyConfigurationIsRead) {
  server.Start({QStringLiteral("-c"), QStringLiteral("missing.json"), QStringLiteral("--help")});
  EXPECT_EQ(server.WaitForExit(), 0);
  EXPECT_NE(Output().find("Velmor - Korvax board server"), std::string::npos) << Output();
  EXPECT_NE(Output().find("-c, --config <korvax_config.json>  Load configuration file"), std::string::npos);
  EXPECT_NE(Output().find(" <korvax_config.json>."), std::string::npos);
  EXPECT_EQ(server.ErrorLines(), QStringList());
}

TEST_F(CommandLineTest, VersionIsPrintedBeforeAnyConfigurationIsRead) {
  server.Start({QStringLiteral("--version")});
  EXPECT_EQ(server.WaitForExit(), 0);
  EXPECT_EQ(Output(), "korvax-boards-server 1.0");
  EXPECT_EQ(server.ErrorLines(), QStringList());
}

TEST_F(CommandLineTest, TheDefaultConfigurationLiesAboveTheWorkingFolder) {
  Installation::Write(DefaultPath(), ToText(configuration));
  Installation::Write(installation.Path(QStringLiteral("work/korvax_config.json")), "never read");
  server.Start({});
  ASSERT_TRUE(server.WaitUntilReady());
  EXPECT_EQ(server.ErrorLines().at(1),
            QStringLiteral("Board server configuration is:  \"../korvax_config_qdcpos.json\""));
}

TEST_F(CommandLineTest, WithoutAnOptionAndWithoutTheDefaultConfigurationTheServerEnds) {
  server.Start({});
  EXPECT_EQ(server.WaitForExit(), 1);
  EXPECT_EQ(server.ErrorLines().value(0),
            QStringLiteral("Unable to locate configuration file  \"../korvax_config_qdcpos.json\""));
}

TEST_F(CommandLineTest, TheLongOptionAndRelativePathsServeAndPositionalArgumentsAreIgnored) {
  installation.WriteConfiguration(ToText(configuration));
  server.Start({QStringLiteral("one"), QStringLiteral("--config=../configuration.json"), QStringLiteral("two")});
  ASSERT_TRUE(server.WaitUntilReady());
  EXPECT_EQ(server.ErrorLines().at(1),
            QStringLiteral("Board server configuration is:  \"../configuration.json\""));
}

TEST_F(CommandLineTest, AnUnknownOptionEndsTheServer) {
  server.Start({QStringLiteral("--colour")});
  EXPECT_EQ(server.WaitForExit(), 1);
  EXPECT_EQ(server.ErrorLines().filter(QStringLiteral("'colour'")).size(), 1);
}

}  // namespace

}  // namespace test
