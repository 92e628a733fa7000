#include "acquisition/SourceBinding.h"

#include "tests/unit/acquisition/SourceFixture.h"

namespace {

class SourceBindingTest : public SourceFixture {
protected:
  std::optional<SourceBinding> Bind(const char* sources) {
    return SourceBinding::FromJson(test::Object(QByteArray(R"({"name": "src", "sources": )") + sources + "}"),
                                   &boards_);
  }
};

TEST_F(SourceBindingTest, BindsToTheNamedEndpointOfTheNamedBoard) {
  AddBoard("second");
  const auto binding = Bind(R"([{"pin": "endpoints\\wave", "source": "second"}])");
  ASSERT_TRUE(binding);
  EXPECT_EQ(binding->board, boards_[1].get());
  EXPECT_EQ(binding->endpointIndex, 1U);
  EXPECT_EQ(binding->endpointQuery, QString("endpoints\\wave"));
  EXPECT_EQ(binding->EndpointPath(), QString("second\\wave"));
  ASSERT_NE(binding->Endpoint(), nullptr);
  EXPECT_EQ(binding->Endpoint()->name, QString("wave"));
  EXPECT_TRUE(log_.Lines().isEmpty());
}

TEST_F(SourceBindingTest, TheFirstOfTwoEqualNamesWins) {
  AddBoard("det");
  boards_[0]->LoadEndpoints(test::Object(R"({"endpoints": [{"name": "a"}, {"name": "b"}, {"name": "b"}]})"));
  const auto binding = Bind(R"([{"pin": "endpoints\\b", "source": "det"}])");
  ASSERT_TRUE(binding);
  EXPECT_EQ(binding->board, boards_[0].get());
  EXPECT_EQ(binding->endpointIndex, 1U);
}

TEST_F(SourceBindingTest, APinThatIsNoEndpointFailsWithItsWarning) {
  for (const char* pin :
       {R"("endpoint\\energy")", R"("endpoints\\a\\b")", R"("endpoints")", R"("")", R"("energy")",
        R"("Endpoints\\energy")", R"("\\endpoints\\energy")", R"("endpoints\\energy\\")", R"("endpoints/energy")",
        R"("\\")", "5", "null", "[]", "{}", "true"}) {
    SCOPED_TRACE(pin);
    log_.Clear();
    EXPECT_FALSE(Bind((QByteArray(R"([{"source": "det", "pin": )") + pin + "}]").constData()));
    EXPECT_EQ(log_.Lines(), QStringList{"Warning: source block  \"src\"  Invalid endpoint config parameter"});
  }
}

TEST_F(SourceBindingTest, AnUnknownBoardFailsWithItsWarning) {
  for (const char* source : {R"("nobody")", R"("DET")", R"("")", "0", "null", "[]"}) {
    SCOPED_TRACE(source);
    log_.Clear();
    EXPECT_FALSE(Bind((QByteArray(R"([{"pin": "endpoints\\energy", "source": )") + source + "}]").constData()));
    EXPECT_EQ(log_.Lines(),
              QStringList{"Warning: a source block  \"src\"  has been detected but the related board "
                          "has not been found"});
  }
}

TEST_F(SourceBindingTest, AnUnknownEndpointFailsWithItsWarning) {
  for (const char* pin : {"endpoints\\\\none", "endpoints\\\\", "endpoints\\\\Energy"}) {
    SCOPED_TRACE(pin);
    log_.Clear();
    EXPECT_FALSE(Bind((QByteArray(R"([{"source": "det", "pin": ")") + pin + "\"}]").constData()));
    EXPECT_EQ(log_.Lines(), QStringList{"Warning: a source block  \"src\"  has been detected but related endpoint "
                                        "can not be found on board  \"det\""});
  }
}

TEST_F(SourceBindingTest, WithoutSourcesTheBindingSucceedsWithoutABoard) {
  for (const char* sources : {"[]", "{}", "null", "1", "\"x\""}) {
    SCOPED_TRACE(sources);
    const auto binding = Bind(sources);
    ASSERT_TRUE(binding);
    EXPECT_EQ(binding->board, nullptr);
    EXPECT_EQ(binding->Endpoint(), nullptr);
    EXPECT_EQ(binding->EndpointPath(), QString());
  }
  EXPECT_TRUE(log_.Lines().isEmpty());
}

TEST_F(SourceBindingTest, WithoutABoardListTheBindingSucceedsWhateverTheSourcesSay) {
  const auto binding = SourceBinding::FromJson(test::Object(R"({"sources": [{"pin": "rubbish"}]})"), nullptr);
  ASSERT_TRUE(binding);
  EXPECT_EQ(binding->board, nullptr);
  EXPECT_TRUE(log_.Lines().isEmpty());
}

TEST_F(SourceBindingTest, ALaterEntryOverridesAnEarlierOne) {
  AddBoard("second");
  const auto binding = Bind(R"([{"pin": "endpoints\\energy", "source": "second"},
                                {"pin": "endpoints\\wave", "source": "det"}])");
  ASSERT_TRUE(binding);
  EXPECT_EQ(binding->board, boards_[0].get());
  EXPECT_EQ(binding->endpointIndex, 1U);
  EXPECT_EQ(binding->endpointQuery, QString("endpoints\\wave"));
}

TEST_F(SourceBindingTest, OneBadEntryFailsTheWholeBindingAtOnce) {
  EXPECT_FALSE(Bind(R"([{"pin": "endpoints\\energy", "source": "det"}, {"pin": "x"}, {"pin": "y"}])"));
  EXPECT_FALSE(Bind(R"([1, {"pin": "endpoints\\energy", "source": "det"}])"));
  EXPECT_EQ(log_.Lines().size(), 2);
}

}  // namespace
