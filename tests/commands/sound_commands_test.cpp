// SPDX-License-Identifier: GPL-3.0-or-later
// PLAY, PLAYLOOP and PC.
#include "commands/fixture.h"

namespace corvid::test {

class SoundCommandsTest : public CommandTest {
 protected:
  SoundCommandsTest() {
    MakeSession(0, "bob", true);
    owner = script.SocketOwner[0];
    for (const char* name : {"x.wav", "y.wav", "tune.mp3"}) memory.PutSound("/data/Sounds/" + std::string(name), 1000);
  }
  Lines Heard() { return Of("sound"); }
  std::string System(int16 row) { return script.SystemValues[row]; }
  OwnerId owner = 0;
};

TEST_F(SoundCommandsTest, VolumesAreShares) {
  const struct {
    const char* master;
    const char* line;
    const char* volume;
  } rows[] = {
      {"100", "#PLAY x.wav", "0"},          {"100", "#PLAY x.wav 150", "0"},      {"100", "#PLAY x.wav abc", "0"},
      {"100", "#PLAY x.wav -1", "0"},       {"100", "#PLAY x.wav {}", "0"},       {"100", "#PLAY x.wav 0", "-3000"},
      {"100", "#PLAY x.wav 40", "-1800"},   {"50", "#PLAY x.wav 50", "-2250"},    {"50", "#PLAY x.wav", "-1500"},
      {"100", "#PLAY x.wav 49.5", "-1500"}, {"100", "#PLAY x.wav 50.5", "-1500"}, {"", "#PLAY x.wav", "-3000"}};
  for (const auto& row : rows) {
    script.SystemValues[sysvar::VOLUME] = row.master;
    EXPECT_EQ(Run(row.line), "");
    memory.loop.Pass(1500);
    const Lines heard = Heard();
    ASSERT_EQ(heard.size(), 1u) << row.line;
    EXPECT_NE(heard[0].find(std::string("x.wav ") + row.volume + " 0 22050"), std::string::npos)
        << row.line << heard[0];
  }
}

TEST_F(SoundCommandsTest, TheLettersTypedDecideWhetherItLoops) {
  const struct {
    const char* word;
    const char* how;
  } rows[] = {{"PLAY", "once"}, {"PLAYL", "loop"}, {"playloop", "loop"}, {"PLAYLO", "loop"},
              {"PL", "once"},   {"PLA", "once"},   {"GPLAY", "once"},    {"GPLAYLOOP", "once"}};
  for (const auto& row : rows) {
    EXPECT_EQ(Run("#" + std::string(row.word) + " x.wav"), "");
    const Lines heard = Heard();
    ASSERT_EQ(heard.size(), 1u) << row.word;
    EXPECT_NE(heard[0].find(row.how), std::string::npos) << row.word << ": " << heard[0];
    Run("#PC 0 STOP");
    Heard();
  }
}

TEST_F(SoundCommandsTest, OnlySoundsPlayedOnceGoOnInTheBackgroundAndOnlyIfWanted) {
  Run("#PLAY x.wav;#PLAYLOOP y.wav");
  EXPECT_EQ(Heard(), (Lines{"play 1 x.wav 0 0 22050 once background", "play 2 y.wav 0 0 22050 loop"}));
  Run("#PC 0 STOP");
  Heard();
  options.PlaySoundsOutsideCorvid = false;
  Run("#PLAY x.wav");
  EXPECT_EQ(Heard(), (Lines{"play 1 x.wav 0 0 22050 once"}));
}

TEST_F(SoundCommandsTest, PlayHandleHoldsTheLastHandle) {
  Run("#PLAY x.wav");
  EXPECT_EQ(System(sysvar::PLAYHANDLE), "1");
  Run("#PLAY tune.mp3");
  EXPECT_EQ(System(sysvar::PLAYHANDLE), "201");
  EXPECT_EQ(System(sysvar::MP3LOOP), "0");
  Run("#PLAY nosuch.wav");
  EXPECT_EQ(System(sysvar::PLAYHANDLE), "0");
}

TEST_F(SoundCommandsTest, ASoundThatIsNotThereIsToldAndTheLineGoesOn) {
  EXPECT_EQ(Run("#PLAY nosuch.wav;#VAR after yes"), "");
  EXPECT_EQ(Of("speech"), (Lines{"1 error"}));
  EXPECT_EQ(Variable("after", owner), "yes");
  EXPECT_NE(ErrorLog().find("problem playing /data/Sounds/nosuch.wav"), std::string::npos);
}

TEST_F(SoundCommandsTest, TextIsSpokenAndIsNoSound) {
  EXPECT_EQ(Run("#PLAY {##Hello there};#VAR after yes"), "");
  EXPECT_EQ(System(sysvar::PLAYHANDLE), "0");
  EXPECT_EQ(Variable("after", owner), "yes");
  const Lines spoken = Of("speech");
  ASSERT_FALSE(spoken.empty());
  EXPECT_EQ(spoken[0], "1 Hello there");
  EXPECT_NE(ErrorLog().find("problem playing /data/Sounds/##Hello there"), std::string::npos);
}

TEST_F(SoundCommandsTest, WithoutADeviceSoundsPlayInSilence) {
  memory.sounds.Works = false;
  sound.ResetSounds();
  Effects();
  EXPECT_EQ(Run("#PLAY x.wav;#PLAYLOOP tune.mp3;#VAR after yes"), "");
  EXPECT_EQ(Effects(), Lines{});
  EXPECT_EQ(Variable("after", owner), "yes");
  EXPECT_EQ(System(sysvar::PLAYHANDLE), "201");
  EXPECT_EQ(System(sysvar::MP3LOOP), "201");
  memory.sounds.PlayersLeft = 0;
  EXPECT_EQ(Run("#PLAY y.wav;#VAR after still"), "");
  EXPECT_EQ(Effects(), (Lines{"speech 1 error", "beep"})) << "a handle of 0 is always told";
  EXPECT_NE(ErrorLog().find("problem playing /data/Sounds/y.wav"), std::string::npos);
  EXPECT_EQ(Variable("after", owner), "still");
  EXPECT_EQ(System(sysvar::PLAYHANDLE), "0");
}

TEST_F(SoundCommandsTest, AStreamedOggEndsTheProgram) {
  EXPECT_EQ(Run("#PLAY x.ogg"), "");
  const Lines effects = Effects();
  ASSERT_GE(effects.size(), 2u);
  EXPECT_EQ(effects[0], "box Error|OGG DLL is missing.");
  EXPECT_EQ(effects[1], "quit mandatory");
}

TEST_F(SoundCommandsTest, NamesAreExpanded) {
  AddVariable("n", "x", owner);
  AddVariable("v", "40", owner);
  Run("#PLAY @n.wav @v");
  EXPECT_EQ(Heard(), (Lines{"play 1 x.wav -1800 0 22050 once background"}));
}

TEST_F(SoundCommandsTest, CheckModePlaysNothing) {
  EXPECT_EQ(Run("#PLAY x.wav", option::CheckOnly), "");
  EXPECT_EQ(Run("#PC a b c", option::CheckOnly), "");
  EXPECT_EQ(Run("#PLAY", option::CheckOnly), "Wrong number of parameters");
  EXPECT_EQ(Run("#PC 1"), "Wrong number of parameters");
  EXPECT_EQ(Heard(), Lines{});
}

TEST_F(SoundCommandsTest, MusicLoopsUntilItIsStopped) {
  Run("#PLAYLOOP tune.mp3 80");
  EXPECT_EQ(System(sysvar::MP3LOOP), "201");
  EXPECT_EQ(musicState.MusicHandle, 201);
  EXPECT_EQ(musicState.MusicVolume, -600);
  EXPECT_EQ(musicState.MusicFrequency, -1);
  memory.loop.Pass(1500);
  EXPECT_EQ(Heard(), (Lines{"play 201 tune.mp3 -600 0 22050 once background",
                            "play 202 tune.mp3 -600 0 22050 once background"}));
  Run("#PC %MP3LOOP STOP");
  EXPECT_EQ(Heard(), (Lines{"stop 202 tune.mp3"}));
  EXPECT_EQ(musicState.MusicHandle, 0);
  memory.loop.Pass(5000);
  EXPECT_EQ(Heard(), Lines{});
  EXPECT_EQ(System(sysvar::MP3LOOP), "0");
}

TEST_F(SoundCommandsTest, BufferedLoopsDoNotTakeTheMusicSlot) {
  Run("#PLAYLOOP x.wav");
  EXPECT_EQ(musicState.MusicHandle, 0);
  EXPECT_FALSE(music.Running());
  EXPECT_EQ(System(sysvar::PLAYHANDLE), "1");
}

TEST_F(SoundCommandsTest, PcStopsOneSoundOrAll) {
  Run("#PLAY x.wav;#PLAY y.wav;#PLAYLOOP tune.mp3");
  Heard();
  Run("#PC 2 STOP");
  EXPECT_EQ(Heard(), (Lines{"stop 2 y.wav"}));
  Run("#PC -5 stop");
  EXPECT_EQ(Heard(), (Lines{"stop 1 x.wav", "stop 201 tune.mp3"}));
  memory.loop.Pass(3000);
  EXPECT_EQ(Heard(), Lines{}) << "the music stays away too";
}

TEST_F(SoundCommandsTest, StoppingAllReachesTenStreams) {
  for (int i = 0; i < 11; ++i) Run("#PLAY tune.mp3");
  Run("#PC 0 STOP");
  EXPECT_FALSE(sound.IsPlaying(210));
  EXPECT_TRUE(sound.IsPlaying(211));
}

TEST_F(SoundCommandsTest, PcChangesASoundAndTheMusicSlot) {
  Run("#PLAY x.wav;#PLAYLOOP tune.mp3");
  Heard();
  Run("#PC 1 PAN 1000;#PC 1 VOLUME 50;#PC 1 FREQUENCY 44100");
  EXPECT_EQ(Heard(), (Lines{"pan 1 x.wav 1000", "volume 1 x.wav -1500", "frequency 1 x.wav 44100"}));
  EXPECT_EQ(musicState.MusicPan, 0);
  EXPECT_EQ(musicState.MusicVolume, 0);
  EXPECT_EQ(musicState.MusicFrequency, -1);
  Run("#PC 201 PAN -1000;#PC 201 VOLUME 500;#PC 201 VOLUME 70;#PC 201 FREQUENCY 11025");
  EXPECT_EQ(Heard(), (Lines{"pan 201 tune.mp3 -1000", "volume 201 tune.mp3 0", "volume 201 tune.mp3 -900",
                            "frequency 201 tune.mp3 11025"}));
  EXPECT_EQ(musicState.MusicPan, -1000);
  EXPECT_EQ(musicState.MusicVolume, -900);
  EXPECT_EQ(musicState.MusicFrequency, 11025);
  memory.loop.Pass(3000);
  EXPECT_EQ(Heard(), (Lines{"play 202 tune.mp3 -900 -1000 11025 once background"})) << "kept when it starts again";
}

TEST_F(SoundCommandsTest, WithoutAHandleVolumeIsTheMasters) {
  Run("#PC 0 VOLUME 70");
  EXPECT_EQ(System(sysvar::VOLUME), "70");
  Run("#PC -1 VOLUME 700");
  EXPECT_EQ(System(sysvar::VOLUME), "100");
  Run("#PC 0 VOLUME -7");
  EXPECT_EQ(System(sysvar::VOLUME), "0");
  Run("#PC 0 VOLUME 50;#PLAY x.wav");
  Heard();
  Run("#PC 1 VOLUME 50");
  EXPECT_EQ(Heard(), (Lines{"volume 1 x.wav -2250"}));
}

TEST_F(SoundCommandsTest, IsPlayingAnswersInVariablesNamedByANumberAlone) {
  const auto named = [&](const char* name) {  // scripts cannot define such a variable
    const int32 row = ++script.VariableCount;
    for (auto* column : {&script.VariableNames, &script.VariableValues, &script.VariableDefaults})
      column->Resize(row + 1);
    script.VariableOwners.Resize(row + 1);
    script.VariableNames[row] = name;
    script.VariableOwners[row] = owner;
  };
  named("7");
  EXPECT_EQ(Run("#PLAY x.wav;#PC 1 ISPLAYING 7"), "");
  EXPECT_EQ(Variable("7", owner), "1");
  memory.loop.Pass(1500);
  EXPECT_EQ(Run("#PC 1 isplaying 7"), "");
  EXPECT_EQ(Variable("7", owner), "0");
  EXPECT_EQ(Run("#PC 1 ISPLAYING 8"), "");
  EXPECT_EQ(Variable("8", owner), "(none)");
  AddVariable("state", "");
  EXPECT_EQ(Run("#PC 1 ISPLAYING state"), "Parameters 2 and 4 must both be numeric");
  EXPECT_EQ(Run("#PC 1 ISPLAYING @state"), "Parameters 2 and 4 must both be numeric") << "it stays raw";
  EXPECT_EQ(Run("#PC 1 ISPLAYING 1.5"), "bad variable name in parameter 3");
  EXPECT_EQ(Run("#PC 1 ISPLAYING"), "");
}

TEST_F(SoundCommandsTest, PcRefusesWhatItDoesNotKnow) {
  EXPECT_EQ(Run("#PC x STOP"), "Parameters 2 and 4 must both be numeric");
  EXPECT_EQ(Run("#PC {} STOP"), "Parameters 2 and 4 must both be numeric");
  EXPECT_EQ(Run("#PC 1 VOLUME loud"), "Parameters 2 and 4 must both be numeric");
  EXPECT_EQ(Run("#PC 1 Louder 5"), "Invalid keyword Louder in parameter 2");
  EXPECT_EQ(Run("#PC 1 VOL 5"), "Invalid keyword VOL in parameter 2") << "keywords are not shortened";
  EXPECT_EQ(Run("#PC 40000 STOP").substr(0, 20), "Bad parsing error - ");
  EXPECT_EQ(Run("#PC 1 PAN 99999999999").substr(0, 20), "Bad parsing error - ");
}

TEST_F(SoundCommandsTest, PassThroughSoundsItsDing) {
  keyboard.EchoPrefix = true;
  Run(">hello");
  EXPECT_EQ(Of("beep").size(), 1u) << "there is no such sound";
  memory.PutSound("/data/Sounds/ding.wav", 100);
  Run(">hello");
  EXPECT_EQ(memory.effects.Of("beep").size(), 0u);
  EXPECT_EQ(Heard(), (Lines{"play 1 ding.wav 0 0 22050 once"}));
}

}  // namespace corvid::test
