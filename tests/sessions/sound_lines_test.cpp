// SPDX-License-Identifier: GPL-3.0-or-later
// What a game server may play.
#include "sessions/fixture.h"

namespace corvid {
namespace {

class SoundLinesTest : public SessionTest {
 protected:
  SoundLinesTest() {
    for (const char* name : {"x.wav", "Hit1.wav", "hit2.WAV", "song.mp3", "both.wav", "both.mp3", "fight/blow.wav"})
      memory.PutSound("/data/Sounds/" + std::string(name), 1000);
    memory.PutSound("/data/secret.wav", 1000);
    memory.PutSound("/etc/alarm.wav", 1000);
  }
  Texts Heard(const std::string& line) {
    soundLines.msp(line);
    Texts heard = Of("sound");
    EXPECT_TRUE(Of("quit").empty()) << line;
    EXPECT_TRUE(Of("unknownerror").empty()) << line;
    memory.effects.Clear();
    return heard;
  }
  // Handle, file and so on of the one sound that a line plays, and the end of it.
  std::string Played(const std::string& line) {
    const Texts heard = Heard(line);
    soundLines.msp("!!SOUND(Off)");
    memory.effects.Clear();
    memory.loop.Pass(2000);
    if (heard.size() != 1) return std::to_string(heard.size()) + " sounds";
    return heard[0].substr(heard[0].find(' ', 5) + 1);  // without "play" and the handle
  }
};

TEST_F(SoundLinesTest, SaysWhatASoundLineIs) {
  for (const char* line : {"!!SOUND(x.wav)", "!!sound(x.wav)", "!!MUSIC(x.mid)", "!!SOUND"})
    EXPECT_TRUE(SoundLines::IsSoundLine(line)) << line;
  for (const char* line : {"!!music(x.mid)", "!SOUND(x.wav)", " !!SOUND(x.wav)", "!!SOUN", "", "hello !!SOUND(x.wav)"})
    EXPECT_FALSE(SoundLines::IsSoundLine(line)) << line;
}

TEST_F(SoundLinesTest, PlaysWhatTheLineAsksFor) {
  const struct {
    const char* line;
    const char* played;
  } rows[] = {
      {"!!SOUND(x.wav)", "x.wav 0 0 22050 once background"},
      {"!!sound(X.WAV V=50 L=1)", "x.wav -1500 0 22050 once background"},
      {"!!SOUND(x V=100)", "x.wav 0 0 22050 once background"},
      {"!!SOUND(x v=0 p=20 c=1 t=combat)", "x.wav -3000 0 22050 once background"},
      {"!!SOUND(x L=-1)", "x.wav 0 0 22050 loop background"},
      {"!!SOUND(x L=3)", "x.wav 0 0 22050 once background"},
      {"!!SOUND(x L=-1 L=2)", "x.wav 0 0 22050 once background"},
      {"!!SOUND(x V=150)", "x.wav 0 0 22050 once background"},
      {"!!SOUND(x V=-50)", "x.wav -4500 0 22050 once background"},
      {"!!SOUND(x V=abc)", "x.wav -3000 0 22050 once background"},
      {"!!SOUND(x V=1e999 L=1e999)", "x.wav -2970 0 22050 once background"},
      {"!!SOUND(x V=99999999999999999999999)", "x.wav 0 0 22050 once background"},
      {"!!SOUND(x.wav", "0 sounds"},  // the last character goes
      {"!!SOUND(x.wav )", "x.wav 0 0 22050 once background"},
      {"!!SOUND( x.wav)", "0 sounds"},  // the name ends at the first blank
      {"!!SOUND  ", "0 sounds"},
      {"!!SOUND(x.wav)  ", "x.wav 0 0 22050 once background"},
      {"!!MUSIC(x.wav)", "x.wav 0 0 22050 once background"},
      {"!!MUSIC(song)", "song.mp3 0 0 22050 once background"},
      {"!!MUSIC(song.mp3 L=-1)", "song.mp3 0 0 22050 once background"},
      {"!!SOUND(song)", "song.mp3 0 0 22050 once background"},
      {"!!SOUND(both)", "both.wav 0 0 22050 once background"},
      {"!!SOUND(song.mp3)", "0 sounds"},  // "song.mp3.WAV" is not there
      {"!!SOUND(fight/blow.wav)", "fight/blow.wav 0 0 22050 once background"},
      {"!!SOUND(Fight\\Blow)", "fight/blow.wav 0 0 22050 once background"},
      {"!!SOUND(monsters/x.wav)", "x.wav 0 0 22050 once background"},  // what follows the last separator
      {"!!SOUND(hit*.wav)", "Hit1.wav 0 0 22050 once background"},
      {"!!SOUND(hit?)", "Hit1.wav 0 0 22050 once background"},
      {"!!SOUND(*2)", "hit2.WAV 0 0 22050 once background"},
      {"!!SOUND(nosuch)", "0 sounds"},
      {"!!SOUND(nosuch/x.mid)", "0 sounds"},
      {"!!SOUND()", "0 sounds"},
      {"!!SOUND(", "0 sounds"},
      {"!!SOUND", "0 sounds"},
      {"!!SOUND(#x)", "0 sounds"},
  };
  prompter.OnBox = [] { ADD_FAILURE() << "a box"; };
  for (const auto& row : rows) EXPECT_EQ(Played(row.line), row.played) << row.line;
}

TEST_F(SoundLinesTest, AChoiceIsMadeAmongAllThatMatch) {
  Chance = 2;
  EXPECT_EQ(Played("!!SOUND(hit*.wav)"), "hit2.WAV 0 0 22050 once background");
  EXPECT_EQ(Played("!!MUSIC(both)"), "both.wav 0 0 22050 once background");
  Chance = 1;
  EXPECT_EQ(Played("!!MUSIC(both)"), "both.mp3 0 0 22050 once background");
}

TEST_F(SoundLinesTest, AnMp3SoundIsLookedForAsAWaveFile) {
  memory.PutSound("/data/Sounds/song.mp3.wav", 1000);
  EXPECT_EQ(Played("!!SOUND(song.mp3)"), "song.mp3.wav 0 0 22050 once background") << "into the pool of its name";
}

TEST_F(SoundLinesTest, AMidiFileKeepsItsEndingAsMusicAlone) {
  memory.PutSound("/data/Sounds/tune.mid", 1000);
  EXPECT_EQ(Played("!!MUSIC(tune.MID)"), "tune.mid 0 0 22050 once background");
  EXPECT_EQ(Played("!!MUSIC(tune)"), "tune.mid 0 0 22050 once background");
  EXPECT_EQ(Played("!!SOUND(tune.mid)"), "0 sounds") << "it is looked for as a wave file";
  EXPECT_EQ(Played("!!SOUND(tune)"), "0 sounds") << "a sound without an ending is a wave or an MP3 file";
}

TEST_F(SoundLinesTest, TheMasterVolumeIsNotAsked) {
  script.SystemValues[sysvar::VOLUME] = "10";
  EXPECT_EQ(Played("!!SOUND(x)"), "x.wav 0 0 22050 once background");
}

TEST_F(SoundLinesTest, InTheBackgroundOnlyIfWanted) {
  options.PlaySoundsOutsideCorvid = false;
  EXPECT_EQ(Played("!!SOUND(x)"), "x.wav 0 0 22050 once");
}

TEST_F(SoundLinesTest, NoNameLeadsOutOfTheFolder) {
  for (const char* name : {"../secret.wav", "..\\secret.wav", "fight/../../secret.wav", "/data/secret.wav",
                           "\\data\\secret.wav", "//etc/alarm.wav", "/etc/alarm.wav", "../../etc/alarm.wav",
                           "C:\\secret.wav", "C:secret.wav", "./../secret.wav", ".../secret.wav", "fight/..", "..", ".",
                           "..\\sec*.wav", "*/../../secret.wav", "~/secret.wav", "x.wav/../../secret.wav"})
    EXPECT_EQ(Played("!!SOUND(" + std::string(name) + ")"), "0 sounds") << name;
  EXPECT_EQ(Played(std::string("!!SOUND(..\0/secret.wav)", 24)), "0 sounds");
}

TEST_F(SoundLinesTest, ALinkLeadsNowhereEither) {
  memory.files.Links["/data/Sounds/x.wav"] = "/etc/alarm.wav";
  memory.files.Links["/data/Sounds/fight/blow.wav"] = "/data/SoundsOfOthers/blow.wav";
  EXPECT_EQ(Played("!!SOUND(x.wav)"), "0 sounds");
  EXPECT_EQ(Played("!!SOUND(fight/blow.wav)"), "0 sounds");
  memory.files.Links = {{"/data/Sounds", "/media/s"}, {"/data/Sounds/x.wav", "/media/s/x.wav"}};
  EXPECT_EQ(Played("!!SOUND(x.wav)"), "x.wav 0 0 22050 once background") << "the folder may be one: it is the player's";
}

TEST_F(SoundLinesTest, AServerCannotEndTheProgramWithAnOgg) {
  for (const char* name : {"tune.ogg", "tune.ogg.wav", "old.ogg.files/y.wav"})
    memory.PutSound("/data/Sounds/" + std::string(name), 1000);
  // Any ".ogg" of a whole path would be streamed, and that ends the program.
  for (const char* line : {"!!MUSIC(tune)", "!!SOUND(tune)", "!!SOUND(tune.ogg)", "!!MUSIC(tune.o*)", "!!MUSIC(tune*)",
                           "!!SOUND(tune.ogg.wav)", "!!SOUND(old.ogg.files/y.wav)", "!!MUSIC(old.ogg.files/?.wav)"}) {
    soundLines.msp(line);
    EXPECT_EQ(memory.effects.Transcript(), "") << line;
    memory.effects.Clear();
  }
  options.SoundsFolder = "/data/Sounds/old.ogg.files/";
  soundLines.msp("!!SOUND(y)");
  EXPECT_EQ(memory.effects.Transcript(), "");
}

TEST_F(SoundLinesTest, OffStopsWhatServersStartedAndNothingElse) {
  int32 volume = 0;
  memory.PutSound("/data/Sounds/own.wav", 1000);
  const int16 own = sound.PlaySound("own.wav", volume);
  Heard("!!SOUND(x)");
  Heard("!!MUSIC(song)");
  EXPECT_EQ(Heard("!!MUSIC(off V=3)").size(), 2u);
  EXPECT_TRUE(sound.IsPlaying(own));
  EXPECT_TRUE(Heard("!!SOUND(OFF)").empty());

  soundLines.msp("!!SOUND(x)");
  memory.loop.Pass(2000);
  const int16 again = sound.PlaySound("/data/Sounds/x.wav", volume);  // the same slot, by a script now
  memory.effects.Clear();
  EXPECT_TRUE(Heard("!!SOUND(OFF)").empty());
  EXPECT_TRUE(sound.IsPlaying(again));
}

TEST_F(SoundLinesTest, AStormIsBoundedByThePool) {
  for (int i = 0; i < 10000; ++i) soundLines.msp("!!SOUND(x L=-1)");
  EXPECT_EQ(Of("sound").size(), 30u);
  EXPECT_EQ(memory.sounds.Loads, 1);
  for (int i = 0; i < 1000; ++i) soundLines.msp("!!MUSIC(song)");
  EXPECT_EQ(Of("sound").size(), 50u);
  soundLines.msp("!!SOUND(Off)");
  EXPECT_FALSE(sound.IsPlaying(30));
}

TEST_F(SoundLinesTest, ABrokenFileIsToldAndLinesDuringTheBoxAreDropped) {
  memory.files.Put("/data/Sounds/bad.wav", "nonsense");
  prompter.OnBox = [&] {
    for (int i = 0; i < 100; ++i) soundLines.msp("!!SOUND(bad)");
  };
  soundLines.msp("!!SOUND(bad)");
  EXPECT_EQ(Of("box").size(), 1u);
  EXPECT_EQ(Played("!!SOUND(x)"), "x.wav 0 0 22050 once background");
}

TEST_F(SoundLinesTest, OffIsHeardDuringABoxToo) {
  memory.files.Put("/data/Sounds/bad.wav", "nonsense");
  Heard("!!SOUND(x L=-1)");
  prompter.OnBox = [&] { soundLines.msp("!!SOUND(Off)"); };
  EXPECT_EQ(Heard("!!SOUND(bad)"), (Texts{"stop 1 x.wav"}));
  EXPECT_FALSE(sound.IsPlaying(1));
}

TEST_F(SoundLinesTest, ASoundLineIsNeitherShownNorSpokenNorLogged) {
  const int16 slot = Online("bob");
  state.SessionRef[slot] = "bob";
  logs.OpenLog(slot);
  std::string matched;
  triggers.OnLine = [&](int16, LineVersions& line) {
    matched += line.PlainLine + "|";
    return LineFate{};
  };
  Receives(slot, "!!SOUND(x.wav)\r\nhello\r\n!!music(x.wav)\r\n");
  logs.CloseLog(slot);
  std::string logged;
  for (const std::string& name : memory.files.FileNames("/data/logs/"))
    logged += memory.files.ReadWhole("/data/logs/" + name);
  EXPECT_EQ(logged.find("SOUND"), std::string::npos) << logged;
  EXPECT_NE(logged.find("hello"), std::string::npos) << logged;
  EXPECT_EQ(matched, "hello|!!music(x.wav)|") << "no trigger sees it";
  EXPECT_EQ(Of("sound"), (Texts{"play 1 x.wav 0 0 22050 once background"}));
  EXPECT_EQ(Spoken(), (Texts{"1 hello", "1 !!music(x.wav)"}));
  EXPECT_EQ(Screen(slot).find("SOUND"), std::string::npos);
}

TEST_F(SoundLinesTest, ABackgroundSessionIsHeardToo) {
  const int16 first = Online("bob");
  Online("ann");
  Receives(first, "!!SOUND(x.wav)\r\n");
  EXPECT_EQ(Of("sound").size(), 1u);
}

}  // namespace
}  // namespace corvid
