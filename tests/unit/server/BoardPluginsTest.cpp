#include "boards/DigitizerBoard.h"
#include "tests/unit/server/LibraryFolder.h"

#include <algorithm>

namespace {

class BoardPluginsTest : public LibraryFolder {};

TEST_F(BoardPluginsTest, BothPrefixesAreCandidates) {
  AddLibrary("CAENDig2.so");
  AddLibrary("libCAENDig2.so");
  AddLibrary("CAENDig2Other.so");
  AddLibrary("libCAENDig2Other.so");
  plugins_.LoadAll(Folder());
  EXPECT_EQ(plugins_.Count(), 4U);
  for (const char* name : {"CAENDig2", "libCAENDig2", "CAENDig2Other", "libCAENDig2Other"}) {
    EXPECT_NE(plugins_.Find(name), nullptr) << name;
  }
  EXPECT_TRUE(log_.Lines().isEmpty());
}

TEST_F(BoardPluginsTest, OtherNamesAreSkippedSilently) {
  for (const char* name : {"libcaendig2x.so", "caendig2.so", "LIBCAENDig2.so", "CAENdig2.so", "xCAENDig2.so",
                           "liblibCAENDig2.so", "CAENDig.so", "CAENDig2.txt", "CAENDig2.so.1", "libCAENDig2"}) {
    AddText(name);
  }
  AddLibrary("libOther.so");
  plugins_.LoadAll(Folder());
  EXPECT_EQ(plugins_.Count(), 0U);
  EXPECT_TRUE(log_.Lines().isEmpty());
}

TEST_F(BoardPluginsTest, FoldersAreSkippedWhateverTheirName) {
  ASSERT_TRUE(QDir(Folder()).mkdir("libCAENDig2Folder.so"));
  plugins_.LoadAll(Folder());
  EXPECT_EQ(plugins_.Count(), 0U);
  EXPECT_TRUE(log_.Lines().isEmpty());
}

TEST_F(BoardPluginsTest, AMissingOrEmptyFolderGivesNoLibrariesAndNoLine) {
  plugins_.LoadAll(Folder());
  plugins_.LoadAll(Folder() + "none/");
  plugins_.LoadAll("");
  EXPECT_EQ(plugins_.Count(), 0U);
  EXPECT_EQ(plugins_.Find("anything"), nullptr);
  EXPECT_EQ(plugins_.Find(""), nullptr);
  EXPECT_TRUE(log_.Lines().isEmpty());
}

TEST_F(BoardPluginsTest, ATextFileGivesItsThreeLinesAndTheOthersLoad) {
  AddLibrary("CAENDig2A.so");
  AddText("libCAENDig2Bad.so");
  AddLibrary("libCAENDig2Z.so");
  plugins_.LoadAll(Folder());
  EXPECT_EQ(plugins_.Count(), 2U);
  EXPECT_EQ(plugins_.Find("libCAENDig2Bad"), nullptr);
  const QStringList lines = log_.Lines();
  ASSERT_EQ(lines.size(), 3);
  EXPECT_EQ(lines[0], QString("Unable to load plugin:  \"libCAENDig2Bad.so\""));
  EXPECT_TRUE(lines[1].startsWith("Error:   \"")) << lines[1].toStdString();
  EXPECT_TRUE(lines[1].contains("//libCAENDig2Bad.so")) << "the separator is doubled: " << lines[1].toStdString();
  EXPECT_EQ(lines[2], QString("Execution terminated"));
}

TEST_F(BoardPluginsTest, EmptyAndCutOffLibrariesGiveTheirThreeLines) {
  QFile(Folder() + "CAENDig2Empty.so").open(QIODevice::WriteOnly);
  AddLibrary("CAENDig2Cut.so");
  QFile cut(Folder() + "CAENDig2Cut.so");
  ASSERT_TRUE(cut.resize(100));
  plugins_.LoadAll(Folder());
  EXPECT_EQ(plugins_.Count(), 0U);
  EXPECT_EQ(log_.Lines().size(), 6);
  EXPECT_EQ(log_.Count("Execution terminated"), 2);
}

TEST_F(BoardPluginsTest, LibrariesAreFoundByBaseNameLetterCaseAside) {
  AddLibrary("libCAENDig2Sim.so");
  AddLibrary("CAENDig2Rev.2.so");
  plugins_.LoadAll(Folder());
  ASSERT_EQ(plugins_.Count(), 2U);
  for (const char* name : {"libCAENDig2Sim", "libcaendig2sim", "LIBCAENDIG2SIM"}) {
    const QLibrary* library = plugins_.Find(name);
    ASSERT_NE(library, nullptr) << name;
    EXPECT_EQ(BoardPlugins::BaseName(*library), QString("libcaendig2sim"));
  }
  EXPECT_NE(plugins_.Find("caendig2rev"), nullptr);  // a base name ends at the first dot
  for (const char* name :
       {"", "CAENDig2Sim", "libCAENDig2", "libCAENDig2Sim.so", "CAENDig2Rev.2", "libCAENDig2Sim "}) {
    EXPECT_EQ(plugins_.Find(name), nullptr) << name;
  }
}

TEST_F(BoardPluginsTest, OfLibrariesEqualUpToCaseTheLastListedIsFound) {
  AddLibrary("libCAENDig2Twin.so");
  AddLibrary("libCAENDig2TWIN.so");
  AddLibrary("libCAENDig2twin.so");
  plugins_.LoadAll(Folder());
  EXPECT_EQ(plugins_.Count(), 3U);
  const QLibrary* library = plugins_.Find("libCAENDig2Twin");
  ASSERT_NE(library, nullptr);
  EXPECT_EQ(QFileInfo(library->fileName()).fileName().toStdString(), Listing().back());
}

TEST_F(BoardPluginsTest, ABoardReachesTheSixFunctionsOfItsLibrary) {
  AddLibrary("CAENDig2.so");
  plugins_.LoadAll(Folder());
  ASSERT_NE(plugins_.Find("CAENDig2"), nullptr);
  DigitizerBoard board(BoardPlugins::LookupIn(*plugins_.Find("CAENDig2")));
  QString value;
  char block[16] = {};
  EXPECT_EQ(board.Open("x"), 0);
  EXPECT_EQ(board.SetValue("p", "v"), 0);
  EXPECT_EQ(board.GetValue("q", value), 0);
  EXPECT_EQ(value, QString("value"));
  EXPECT_EQ(board.SendCommand("c"), 0);
  EXPECT_EQ(board.ReadData("e", block), 0);
  EXPECT_EQ(board.FreePointer("e", block), 0);
  EXPECT_EQ(CallsOf(*plugins_.Find("CAENDig2")),
            QString("open x;set 7 p=v;get 7 q;command 7 c;read 7 e 1000;free 7 e;"));
}

TEST_F(BoardPluginsTest, ALibraryThatLacksAFunctionLoadsAndGivesMinusFifteenForIt) {
  const QStringList functions = {
      "Open", "SetValueByQuery", "GetValueByQuery", "SendCommandByQuery", "ReadDataByQuery", "FreePointerByQuery"};
  for (const QString& lacking : functions) {
    AddLibrary("CAENDig2" + lacking + ".so", lacking);
  }
  plugins_.LoadAll(Folder());
  ASSERT_EQ(plugins_.Count(), 6U);
  for (const QString& lacking : functions) {
    SCOPED_TRACE(lacking.toStdString());
    DigitizerBoard board(BoardPlugins::LookupIn(*plugins_.Find("CAENDig2" + lacking)));
    QString value = "as it was";
    char block[16] = {};
    const qint32 results[] = {board.Open("x"),        board.SetValue("p", "v"),   board.GetValue("q", value),
                              board.SendCommand("c"), board.ReadData("e", block), board.FreePointer("e", block)};
    for (int i = 0; i < functions.size(); ++i) {
      EXPECT_EQ(results[i], functions[i] == lacking ? -15 : 0) << functions[i].toStdString();
    }
    EXPECT_EQ(value, lacking == "GetValueByQuery" ? QString("as it was") : QString("value"));
  }
}

}  // namespace
