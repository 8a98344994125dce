// SPDX-License-Identifier: GPL-3.0-or-later
#include "sessions/character_file.h"

#include "core/scramble.h"
#include "fixture.h"

namespace corvid {
namespace {

class CharacterFileTest : public SessionTest {
 protected:
  void PutClear(const std::string& text) { memory.files.Put("/data/Character.mud", Scramble(text)); }
  std::string Clear() { return Scramble(memory.files.ReadWhole("/data/Character.mud")); }
};

TEST_F(CharacterFileTest, WritesARecordALine) {
  const int16 row = Character("Aard", "Bob", "bob", charflag::AutoLogin | charflag::SimpleControl);
  state.Notes[row] = "first\r\nsecond, with comma";
  state.LastConnected[row] = "2026-01-15 12:00:00";
  Character("Only", "QUICKCONNECT", "");
  characters.writeMudFile();
  EXPECT_EQ(Clear(),
            "\"Aard\",\"Aard.example\",\"first\r\nsecond, with comma\",\"4000\",\"Bob\",\"bob\",\"secret\",5,"
            "\"2026-01-15 12:00:00\"\r\n"
            "\"Only\",\"Only.example\",\"\",\"4000\",\"QUICKCONNECT\",\"\",\"secret\",0,\"\"\r\n");
  EXPECT_TRUE(memory.files.IsPrivate("/data/Character.mud"));
  const std::string bytes = memory.files.ReadWhole("/data/Character.mud");
  EXPECT_EQ(bytes.find("secret"), std::string::npos);
  EXPECT_EQ(static_cast<unsigned char>(bytes[0]), '"' + 128);
  EXPECT_EQ(bytes.substr(bytes.size() - 2), "\r\n");
}

TEST_F(CharacterFileTest, ReadsBackWhatItWrote) {
  const std::string odd[] = {"",   "\"",          "\"\"",     "a\",\"b", ",",           "\",",  "x\r\n\"\r\ny", "\n",
                             "\r", "caf\xc3\xa9", "\x8a\x8d", "\xff",    "say \"hi\" ", "\r\n", "\xe3\x8d\x8a"};
  for (const std::string& a : odd)
    for (const std::string& b : odd) {
      CharacterTable table;
      for (int i = 0; i < 2; ++i) {
        const int16 row = AddCharacter(table);
        table.MudName[row] = a;
        table.Notes[row] = b;
        table.CharacterRef[row] = a;
        table.Password[row] = b;
        table.CharFlags[row] = static_cast<int16>(i - 1);
        table.LastConnected[row] = "2026-01-15 12:00:00";
      }
      CharacterTable read;
      ASSERT_TRUE(ParseCharacters(Scramble(Scramble(FormatCharacters(table))), read)) << a << "|" << b;
      ASSERT_EQ(read.CharacterCount, 2);
      for (int16 row = 1; row <= 2; ++row) {
        EXPECT_EQ(read.MudName[row], a);
        EXPECT_EQ(read.Notes[row], b);
        EXPECT_EQ(read.CharacterRef[row], a);
        EXPECT_EQ(read.Password[row], b);
        EXPECT_EQ(read.CharFlags[row], table.CharFlags[row]);
        EXPECT_EQ(read.LastConnected[row], "2026-01-15 12:00:00");
      }
    }
}

TEST_F(CharacterFileTest, ReadsWhatOthersWrote) {
  CharacterTable table;
  ASSERT_TRUE(
      ParseCharacters("\"M\",\"h\",\"he said \"hi\" once\",\"23\",\"n\",\"r\",\"p\", 3 ,#2006-05-04#\r\n\r\n"
                      "\"M2\",\"h\",\"\",\"23\",\"n\",\"r2\",\"p\",-1",
                      table));
  EXPECT_EQ(table.CharacterCount, 2);
  EXPECT_EQ(table.Notes[1], "he said \"hi\" once");
  EXPECT_EQ(table.CharFlags[1], 3);
  EXPECT_EQ(table.LastConnected[1], "#2006-05-04#");
  EXPECT_EQ(table.LastConnected[2], "");
}

TEST_F(CharacterFileTest, RefusesARecordThatIsNone) {
  const char* bad[] = {"nonsense",
                       "\"a\",\"b\"\r\n",
                       "\"a\",\"b\",\"c\",\"d\",\"e\",\"f\",\"g\",x,\"\"\r\n",
                       "\"a\",\"b\",\"c\",\"d\",\"e\",\"f\",\"g\",99999,\"\"\r\n",
                       "\"a\",\"b\",\"c\",\"d\",\"e\",\"f\",\"g\",-32e761180",
                       "\"a\",\"b\",\"c\",\"d\",\"e\",\"f\",\"g\",1,\"\",\"more\"\r\n",
                       "\"never closed"};
  for (const char* text : bad) {
    CharacterTable table;
    AddCharacter(table);
    EXPECT_FALSE(ParseCharacters(text, table)) << text;
    EXPECT_EQ(table.CharacterCount, 1) << "untouched";
  }
}

TEST_F(CharacterFileTest, LeavesTheQuickConnectRowWithoutAFile) {
  EXPECT_FALSE(characters.ReadMudFile());
  ASSERT_EQ(state.CharacterCount, 1);
  EXPECT_EQ(state.MudName[1], "QUICKCONNECT");
  EXPECT_EQ(state.HostName[1], "QUICKCONNECT");
  EXPECT_EQ(state.CharacterName[1], "QUICKCONNECT");
  EXPECT_EQ(state.CharacterRef[1], "");
  EXPECT_FALSE(memory.files.FileExists("/data/Character.bad"));
  EXPECT_TRUE(Of("unknownerror").empty());
}

TEST_F(CharacterFileTest, NeverReplacesAFileThatItCannotRead) {
  Character("Aard", "Bob", "bob");
  characters.writeMudFile();
  const std::string before = memory.files.ReadWhole("/data/Character.mud");
  memory.files.Fail = [](const std::string& operation, const std::string&) {
    return operation == "read" ? std::string("bad sector") : std::string();
  };
  EXPECT_FALSE(characters.ReadMudFile());
  EXPECT_EQ(Of("unknownerror"), (Texts{"ReadMudFile: /data/Character.mud: bad sector"}));
  EXPECT_EQ(state.CharacterCount, 1);
  characters.writeMudFile();
  EXPECT_EQ(Of("showerror"), (Texts{"Error opening Character.mud file in /data/"}));
  memory.files.Fail = nullptr;
  EXPECT_EQ(memory.files.ReadWhole("/data/Character.mud"), before);
  characters.writeMudFile();  // it can be kept beside now
  EXPECT_EQ(memory.files.ReadWhole("/data/Character.bad"), before);
  EXPECT_NE(memory.files.ReadWhole("/data/Character.mud"), before);
}

TEST_F(CharacterFileTest, KeepsADamagedFileBeside) {
  const std::string damaged = Scramble("\"a\",\"b\",broken");
  memory.files.Put("/data/Character.mud", damaged);
  EXPECT_FALSE(characters.ReadMudFile());
  EXPECT_EQ(state.CharacterCount, 1);
  EXPECT_EQ(memory.files.ReadWhole("/data/Character.bad"), damaged);
  EXPECT_TRUE(memory.files.IsPrivate("/data/Character.bad"));
  EXPECT_EQ(Of("unknownerror"), (Texts{"ReadMudFile: The character file is damaged"}));
  characters.writeMudFile();
  EXPECT_TRUE(characters.ReadMudFile()) << "writing the table has mended the file";
}

TEST_F(CharacterFileTest, TakesTheDefaultTarget) {
  PutClear("\"MUD\",\"old.example\",\"\",\"23\",\"QUICKCONNECT\",\"\",\"\",0,\"\"\r\n");
  EXPECT_TRUE(characters.ReadMudFile());
  EXPECT_EQ(state.ConnectHost, "old.example");
}

TEST_F(CharacterFileTest, TellsAFailureAndKeepsTheOldFile) {
  Character("Aard", "Bob", "bob");
  characters.writeMudFile();
  const std::string before = memory.files.ReadWhole("/data/Character.mud");
  state.MudName[1] = "Other";
  memory.files.Fail = [](const std::string& operation, const std::string&) {
    return operation == "write" ? std::string("No space left on device") : std::string();
  };
  characters.writeMudFile();
  EXPECT_EQ(Of("showerror"), (Texts{"Error opening Character.mud file in /data/"}));
  EXPECT_EQ(memory.files.ReadWhole("/data/Character.mud"), before);
}

TEST_F(CharacterFileTest, FindsAReferenceInAnyCase) {
  Character("Aard", "Bob", "bob");
  Character("Aard", "Amy", "amy");
  EXPECT_EQ(FindCharacter(state, "AMY"), 2);
  EXPECT_EQ(FindCharacter(state, "cem"), 0);
}

}  // namespace
}  // namespace corvid
