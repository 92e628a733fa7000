#include "control/QueryAudit.h"

#include "tests/support/LogCapture.h"
#include "tests/support/Printing.h"
#include "tests/unit/control/WebSocketFixture.h"

#include <gtest/gtest.h>

namespace {

class QueryAuditTest : public testing::Test {
protected:
  QStringList LinesOf(const QString& route, const QString& message) {
    log_.Clear();
    korvax::LogStorageQuery(route, message, "10.0.0.7");
    return log_.Lines();
  }
  static QStringList RunIdLine(const QString& runId) {
    return {R"(Client "10.0.0.7" asks "start_dump" with run id ")" + runId +
            R"(" which is no folder inside the storage folder)"};
  }
  static QStringList PathLine(const QString& path) {
    return {R"(Client "10.0.0.7" asks "set_dump_path" with storage path ")" + path + '"'};
  }

  test::LogCapture log_;
};

TEST(LeavesStorage, whateverClimbsOutOfTheFolderOrIsTheFolderItself) {
  for (const char* runId : {"", ".", "./", "/", "//", "..", "../", "../x", "/..", "/../x", "a/..", "a/../..",
                            "a/../../b", "./../x", "a//../../b", "../storage/x", "a/b/../../.."}) {
    EXPECT_TRUE(korvax::LeavesStorage(runId)) << runId;
  }
  EXPECT_TRUE(korvax::LeavesStorage(QString("..") + QChar(0) + "x"));
  EXPECT_TRUE(korvax::LeavesStorage(QString("..") + QChar(0) + "/x"));
  EXPECT_TRUE(korvax::LeavesStorage(QString(QChar(0)) + "x"));
}

TEST(LeavesStorage, noIdOfAFolderInside) {
  for (const char* runId : {"run_0", "/run_0", "/etc/passwd", "a/b", "a/../b", "...", "..a", "a..", ".a", " ",
                            "a/./b", "a\\..\\..", "2026/11/21"}) {
    EXPECT_FALSE(korvax::LeavesStorage(runId)) << runId;
  }
  EXPECT_FALSE(korvax::LeavesStorage(QString("run") + QChar(0) + "x"));
}

TEST_F(QueryAuditTest, ARunIdThatLeavesTheStorageFolderIsNoted) {
  EXPECT_EQ(LinesOf("commands", R"({"cmd":"start_dump","run_id":"../x"})"), RunIdLine("../x"));
  EXPECT_EQ(LinesOf("query_by_json", R"({"path":"p","args":[{"cmd":"start_dump"}],"run_id":"a/../../b"})"),
            RunIdLine("a/../../b"));
}

TEST_F(QueryAuditTest, ARunIdOfTheStorageFolderItselfIsNoted) {
  EXPECT_EQ(LinesOf("commands", R"({"cmd":"start_dump","run_id":"."})"), RunIdLine("."));
  EXPECT_EQ(LinesOf("commands", R"({"cmd":"start_dump","run_id":""})"), RunIdLine(""));
  EXPECT_EQ(LinesOf("commands", R"({"cmd":"start_dump","run_id":5})"), RunIdLine(""));
  EXPECT_EQ(LinesOf("commands", R"({"cmd":"start_dump"})"), RunIdLine(""));
}

TEST_F(QueryAuditTest, StoragePathsAreNotedOnBothLevels) {
  EXPECT_EQ(LinesOf("dumper0", R"({"cmd":"set_dump_path","file_path":"/tmp"})"), PathLine("/tmp"));
  EXPECT_EQ(LinesOf("query_by_json", R"({"path":"p","args":[{"cmd":"set_dump_path"}],"file_path":"/etc"})"),
            PathLine("/etc"));
  EXPECT_EQ(LinesOf("dumper0", R"({"cmd":"set_dump_path"})"), PathLine(""));
}

TEST_F(QueryAuditTest, OneQueryIsNotedOnce) {
  EXPECT_EQ(LinesOf("d", R"({"cmd":"set_dump_path","args":[{"cmd":"set_dump_path"}],"file_path":"/tmp"})"),
            PathLine("/tmp"));
}

TEST_F(QueryAuditTest, OfSeveralArgumentsTheLastCountsAsForTheBlocks) {
  EXPECT_EQ(LinesOf("query_by_json", R"({"args":[{"cmd":"reset"},{"cmd":"set_dump_path"}],"file_path":"/a"})"),
            PathLine("/a"));
  EXPECT_EQ(LinesOf("query_by_json", R"({"args":[{"cmd":"set_dump_path"},{"cmd":"reset"}],"file_path":"/a"})"),
            QStringList());
}

TEST_F(QueryAuditTest, LettersHiddenBehindBackslashesDoNotHelp) {
  EXPECT_EQ(LinesOf("d", R"({"cm\u0064":"set\u005fdump\u005fpath","file_path":"/tmp"})"), PathLine("/tmp"));
  EXPECT_EQ(LinesOf("commands", R"({"cmd":"start\u005fdump","run_id":"\u002e./x"})"), RunIdLine("../x"));
}

TEST_F(QueryAuditTest, ValuesAreOnOneLineAndOfSaneLength) {
  EXPECT_EQ(LinesOf("commands", R"({"cmd":"start_dump","run_id":"../\n\u001b[2J\"x"})"),
            RunIdLine("../\\n\\u001B[2J\\\"x"));
  const QStringList lines =
      LinesOf("d", R"({"cmd":"set_dump_path","file_path":")" + QString(100000, 'x') + R"("})");
  EXPECT_EQ(lines, PathLine(QString(200, 'x')));
}

TEST_F(QueryAuditTest, OrdinaryQueriesAreNot) {
  for (const char* message :
       {R"({"cmd":"start_dump","run_id":"run_1"})", R"({"cmd":"start_dump","run_id":"/run_1"})",
        R"({"cmd":"stop_dump","run_id":"../x"})", R"({"cmd":"set_dump_type","file_path":"/tmp"})",
        R"({"cmd":"start"})", "", "no json _dump", "[]", R"(["start_dump"])"}) {
    EXPECT_EQ(LinesOf("commands", message), QStringList()) << message;
  }
  // Without a run id a recording block stays with the one that it has.
  EXPECT_EQ(LinesOf("dumper0", R"({"cmd":"start_dump"})"), QStringList());
  EXPECT_EQ(LinesOf("query_by_json", R"({"args":[{"cmd":"start_dump"}],"run_id":""})"), QStringList());
}

class MainWebSocketAudit : public WebSocketFixture {};

TEST_F(MainWebSocketAudit, NotesTheClientAndChangesNoAnswer) {
  const QString query = R"({"cmd":"set_dump_path","file_path":"/tmp"})";
  Client client(Port(), "/d");
  EXPECT_EQ(client.Ask(query), "d:" + query);
  EXPECT_EQ(log_.Lines(), QStringList{R"(Client "127.0.0.1" asks "set_dump_path" with storage path "/tmp")"});
}

}  // namespace
