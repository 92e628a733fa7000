#include "control/NetworkSettings.h"
#include "tests/support/LogCapture.h"
#include "tests/unit/configuration/CheckText.h"
#include "tests/unit/configuration/Edits.h"

#include <QJsonArray>

#include <gtest/gtest.h>

namespace {

QJsonObject Complete() {
  return test::ProjectConfiguration(QStringLiteral("tests/unit/configuration/complete.json"));
}

TEST(NetworkFindings, anAddressThatIsNoneIsNamedAtItsLine) {
  const QJsonObject good = Complete();
  const QStringList path{"network", "address"};
  const QByteArray text = test::Text(test::With(good, path, "localhost"));
  EXPECT_EQ(
      test::Joined(test::FindingsIn(text)),
      std::to_string(test::LineOf(good, path)) +
          ": error: network key \"address\": expected an IP address, such as \"127.0.0.1\"; found \"localhost\"");
}

TEST(NetworkFindings, keysThatTheServerDoesNotKnowAreNamed) {
  const QJsonObject good = Complete();
  const QByteArray text = test::Text(test::With(good, {"network", "max_conections"}, 5));
  const QStringList findings = test::FindingsIn(text);
  ASSERT_EQ(findings.size(), 1);
  EXPECT_TRUE(
      findings[0].endsWith("warning: network key \"max_conections\": expected a key that the server knows; "
                           "found an unknown one (did you mean \"max_connections\"?)"))
      << test::Joined(findings);
}

TEST(NetworkFindings, anAddressIsAnErrorExactlyWhereTheServerRefusesIt) {
  const QJsonObject good = Complete();
  for (const char* address : {"127.0.0.1",
                              "0.0.0.0",
                              "::",
                              "::1",
                              "[::1]",
                              "localhost",
                              "",
                              " ",
                              "256.0.0.1",
                              "1.2.3",
                              "1.2.3.4.5",
                              "10.0.0.0/8",
                              "fe80::1%eth0",
                              "::ffff:1.2.3.4",
                              ":",
                              ":::",
                              "1::2::3",
                              "127.0.0.1 ",
                              "127.0.0.1:51234",
                              "*",
                              "12345::",
                              "0x7f.1",
                              "\n",
                              "\xC2\xB9.2.3.4"}) {
    const QString text = QString::fromUtf8(address);
    const bool isRefused = !NetworkSettings().Read(QJsonObject{{"address", text}}).isEmpty();
    const QStringList findings = test::FindingsIn(test::Text(test::With(good, {"network", "address"}, text)));
    EXPECT_EQ(!findings.isEmpty(), isRefused) << address << '\n' << test::Joined(findings);
  }
}

// Numbers, lists and types: what the server reads as missing, with a line in its log, and nothing else, is an
// error.
TEST(NetworkFindings, areOfTheSameValuesThatTheServerReadsAsMissing) {
  const QJsonObject good = Complete();
  for (const char* key : {"address", "origins", "max_connections", "max_message_bytes", "max_unsent_bytes"}) {
    for (const QJsonValue& value :
         {QJsonValue(), QJsonValue(true), QJsonValue(0), QJsonValue(1), QJsonValue(1024), QJsonValue(2.5),
          QJsonValue(65537), QJsonValue(-1), QJsonValue(3e9), QJsonValue("127.0.0.1"), QJsonValue(QJsonArray()),
          QJsonValue(QJsonArray{5}), QJsonValue(QJsonObject())}) {
      const test::LogCapture log;
      const bool isRefused =
          !NetworkSettings().Read(QJsonObject{{key, value}}).isEmpty() || !log.Lines().isEmpty();
      const QByteArray text = test::Text(test::With(good, {"network", key}, value));
      EXPECT_EQ(!test::FindingsIn(text).isEmpty(), isRefused) << key << '\n' << text.toStdString();
    }
  }
}

}  // namespace
