#include "control/NetworkSettings.h"

#include "tests/support/Json.h"
#include "tests/support/LogCapture.h"
#include "tests/support/Printing.h"

#include <QJsonArray>

#include <gtest/gtest.h>

namespace {

class NetworkSettingsTest : public testing::Test {
protected:
  QString Read(const QByteArray& network) { return settings_.Read(test::Object(network)); }

  test::LogCapture log_;
  NetworkSettings settings_;
};

void ExpectDefaults(const NetworkSettings& settings) {
  EXPECT_EQ(settings.address, QHostAddress(QHostAddress::Any));
  EXPECT_FALSE(settings.origins.has_value());
  EXPECT_EQ(settings.maxConnections, 4096);
  EXPECT_EQ(settings.maxMessageBytes, 268435456);
  EXPECT_EQ(settings.maxUnsentBytes, 268435456);
}

TEST_F(NetworkSettingsTest, WithoutKeysEverythingIsAsEver) {
  EXPECT_EQ(Read("{}"), QString());
  ExpectDefaults(settings_);
  EXPECT_TRUE(log_.Lines().isEmpty());
}

TEST_F(NetworkSettingsTest, ReadsTheFiveKeys) {
  EXPECT_EQ(Read(R"({"address": "127.0.0.1", "origins": ["http://lab.example:8080", "null"], "max_connections": 7,
                     "max_message_bytes": 4096, "max_unsent_bytes": 8192})"),
            QString());
  EXPECT_EQ(settings_.address, QHostAddress("127.0.0.1"));
  EXPECT_EQ(settings_.origins, (QStringList{"http://lab.example:8080", "null"}));
  EXPECT_EQ(settings_.maxConnections, 7);
  EXPECT_EQ(settings_.maxMessageBytes, 4096);
  EXPECT_EQ(settings_.maxUnsentBytes, 8192);
  EXPECT_TRUE(log_.Lines().isEmpty());
}

TEST_F(NetworkSettingsTest, AddressesOfBothFamiliesAreTaken) {
  for (const char* address : {"127.0.0.1", "0.0.0.0", "::1", "::", "fe80::1%1", "::ffff:10.0.0.1"}) {
    NetworkSettings settings;
    EXPECT_EQ(settings.Read(QJsonObject{{"address", address}}), QString()) << address;
    EXPECT_EQ(settings.address, QHostAddress(QLatin1String(address))) << address;
  }
}

TEST_F(NetworkSettingsTest, ATextThatIsNoAddressIsNamed) {
  EXPECT_EQ(Read(R"({"address": "localhost"})"),
            QString("Configuration section \"network\", key \"address\": expected an IP address, such as "
                    "\"127.0.0.1\"; found \"localhost\""));
  for (const char* wrong : {"", " ", "256.1.1.1", "10.0.0.0/8", "127.0.0.1:51234", "*", "[::1]", ":::1", "%1"}) {
    const QString fault = NetworkSettings().Read(QJsonObject{{"address", wrong}});
    EXPECT_TRUE(fault.endsWith(QString("; found \"%1\"").arg(wrong))) << wrong << fault.toStdString();
  }
  const QString line = NetworkSettings().Read(QJsonObject{{"address", "a\n" + QString(1000, 'x')}});
  EXPECT_LT(line.size(), 300);
  EXPECT_FALSE(line.contains('\n'));
  EXPECT_TRUE(log_.Lines().isEmpty());  // it is the caller's
}

TEST_F(NetworkSettingsTest, WrongTypesReadAsMissingWithALineEach) {
  for (const char* wrong : {"null", "true", "{}", "{\"a\": 1}"}) {
    const QByteArray value(wrong);
    log_.Clear();
    NetworkSettings settings;
    EXPECT_EQ(settings.Read(test::Object(R"({"address": )" + value + R"(, "origins": )" + value +
                                         R"(, "max_connections": )" + value + R"(, "max_message_bytes": )" +
                                         value + R"(, "max_unsent_bytes": )" + value + "}")),
              QString());
    ExpectDefaults(settings);
    EXPECT_EQ(log_.Lines().size(), 5) << wrong;
  }
  log_.Clear();
  EXPECT_EQ(Read(R"({"origins": "http://lab.example"})"), QString());
  ExpectDefaults(settings_);
  EXPECT_EQ(log_.Lines(), QStringList{R"(Configuration section "network", key "origins": expected an array of )"
                                      R"(texts; found "http://lab.example", which reads as if it were missing)"});
}

TEST_F(NetworkSettingsTest, ASectionThatIsNoObjectReadsAsMissingWithALine) {
  for (const QJsonValue& wrong :
       {QJsonValue(), QJsonValue(5), QJsonValue("x"), QJsonValue(QJsonArray{QJsonObject()})}) {
    log_.Clear();
    EXPECT_EQ(settings_.Read(wrong), QString());
    ExpectDefaults(settings_);
    EXPECT_EQ(log_.Lines().size(), 1);
  }
  EXPECT_EQ(settings_.Read(QJsonArray{}), QString());
  EXPECT_EQ(log_.Lines().last(),
            QString("Configuration section \"network\": expected an object; found [], which reads "
                    "as if it were missing"));
  log_.Clear();
  EXPECT_EQ(settings_.Read(QJsonValue(QJsonValue::Undefined)), QString());
  EXPECT_TRUE(log_.Lines().isEmpty());
}

TEST_F(NetworkSettingsTest, NumbersBeyondTheirLimitsReadAsMissingWithALineEach) {
  for (const char* key : {"max_connections", "max_message_bytes", "max_unsent_bytes"}) {
    for (const double wrong : {0.0, -1.0, 0.5, 2.5, 1e300, -1e300, 2147483648.0}) {
      log_.Clear();
      NetworkSettings settings;
      EXPECT_EQ(settings.Read(QJsonObject{{key, wrong}}), QString());
      ExpectDefaults(settings);
      EXPECT_EQ(log_.Lines().size(), 1) << key << ' ' << wrong;
    }
  }
  log_.Clear();
  EXPECT_EQ(Read(R"({"max_connections": 65537, "max_message_bytes": 1023, "max_unsent_bytes": 1023})"), QString());
  ExpectDefaults(settings_);
  ASSERT_EQ(log_.Lines().size(), 3);
  EXPECT_EQ(log_.Lines().first(),
            QString("Configuration section \"network\", key \"max_connections\": expected an integer from 1 to "
                    "65536; found 65537, which reads as if it were missing"));
}

TEST_F(NetworkSettingsTest, TheEndsOfTheirRangesAreTaken) {
  EXPECT_EQ(Read(R"({"max_connections": 1, "max_message_bytes": 1024, "max_unsent_bytes": 1024})"), QString());
  EXPECT_EQ(settings_.maxConnections, 1);
  EXPECT_EQ(settings_.maxMessageBytes, 1024);
  EXPECT_EQ(settings_.maxUnsentBytes, 1024);
  EXPECT_EQ(Read(R"({"max_connections": 65536, "max_message_bytes": 2147483647, "max_unsent_bytes": 2147483647})"),
            QString());
  EXPECT_EQ(settings_.maxConnections, 65536);
  EXPECT_EQ(settings_.maxMessageBytes, 2147483647);
  EXPECT_EQ(settings_.maxUnsentBytes, 2147483647);
  EXPECT_TRUE(log_.Lines().isEmpty());
}

TEST_F(NetworkSettingsTest, AnOriginThatIsNoTextDoesNotOpenTheList) {
  EXPECT_EQ(Read(R"({"origins": ["http://a", 5]})"), QString());
  EXPECT_EQ(settings_.origins, QStringList{"http://a"});
  EXPECT_EQ(log_.Lines().size(), 1);
  EXPECT_FALSE(settings_.Allows("http://b"));
}

TEST_F(NetworkSettingsTest, WithoutAListEveryOriginMayConnect) {
  for (const char* origin : {"", "null", "http://anything.example"}) {
    EXPECT_TRUE(settings_.Allows(origin)) << origin;
  }
}

TEST_F(NetworkSettingsTest, AnEmptyListAdmitsNoBrowserButEveryOtherProgram) {
  settings_.origins = QStringList();
  EXPECT_TRUE(settings_.Allows(""));
  EXPECT_FALSE(settings_.Allows("null"));
  EXPECT_FALSE(settings_.Allows("http://lab.example"));
}

TEST_F(NetworkSettingsTest, OriginsAreComparedWithoutLetterCaseAndWithTheirPort) {
  settings_.origins = QStringList{"http://Lab.example:8080", "https://lab.example"};
  for (const char* origin : {"http://lab.example:8080", "HTTP://LAB.EXAMPLE:8080", "https://LAB.example"}) {
    EXPECT_TRUE(settings_.Allows(origin)) << origin;
  }
  for (const char* origin :
       {"http://lab.example", "http://lab.example:80", "http://lab.example:80801", "https://lab.example:8080",
        "https://lab.example:443", "https://lab.example/", "https://lab.example.evil.example", "lab.example", " ",
        "https://evil.example#https://lab.example", "null"}) {
    EXPECT_FALSE(settings_.Allows(origin)) << origin;
  }
}

TEST_F(NetworkSettingsTest, NullIsAnOriginOfItsOwn) {
  settings_.origins = QStringList{"null"};
  EXPECT_TRUE(settings_.Allows("null"));
  EXPECT_FALSE(settings_.Allows("http://lab.example"));
}

}  // namespace
