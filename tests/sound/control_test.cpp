// SPDX-License-Identifier: GPL-3.0-or-later
// What is done to sounds by their handles, the pools of streams, start and end, and the keeper of the music.
#include "sound/fixture.h"

namespace corvid {
namespace {

// --- the settings file ---

TEST(SoundsIni, KnowsTheseLines) {
  const struct {
    const char* text;
    int16 buffers;
    const char* complaint;
  } rows[] = {
      {"", 30, ""},
      {"SOUND BUFFERS=19", 30, ""},
      {"SOUND BUFFERS=20", 20, ""},
      {"SOUND BUFFERS=100", 100, ""},
      {"SOUND BUFFERS=101", 30, ""},
      {"  sound buffers = 40 ' as many as I like", 40, ""},
      {"SOUND BUFFERS=45abc", 45, ""},
      {"SOUND BUFFERS=-45", 30, ""},
      {"SOUND BUFFERS", 30, ""},
      {"SOUND BUFFERS=99999999999999999999", 30, ""},
      {"SOUND BUFFERS=50\nSOUND BUFFERS=60\r\n", 60, ""},
      {"' SOUND BUFFERS=50", 30, ""},
      {"HRTF\r\nMINIMAL SOUNDS=1\r\nMODIFY FREQUENCY=1", 30, ""},
      {"OGG BUFFERS=5", 30, "OGG BUFFERS=5"},
      {"MP3 BUFFERS=5", 30, "MP3 BUFFERS=5"},
      {"mp3 buffers = 5 'x\r\nSOUND BUFFERS=25", 25, "MP3 BUFFERS = 5"},
      {"volume", 30, "VOLUME"},
      {"=5", 30, "=5"},
  };
  for (const auto& row : rows) {
    std::string complaint;
    const SoundSettings settings = ReadSoundsIni(row.text, [&](const std::string& line) { complaint += line; });
    EXPECT_EQ(settings.SoundBuffers, row.buffers) << row.text;
    EXPECT_EQ(complaint, row.complaint) << row.text;
    EXPECT_EQ(settings.OggBuffers, 20) << row.text;
    EXPECT_EQ(settings.Mp3Buffers, 20) << row.text;
  }
}

TEST(SoundsIni, TruthIsANumberAboveZero) {
  const auto read = [](const char* text) { return ReadSoundsIni(text, [](const std::string&) {}); };
  EXPECT_TRUE(read("SOFTWARE BUFFERS").SoftwareBuffers);
  EXPECT_TRUE(read("software buffers=7").SoftwareBuffers);
  EXPECT_FALSE(read("SOFTWARE BUFFERS=0").SoftwareBuffers);
  EXPECT_FALSE(read("SOFTWARE BUFFERS=-1").SoftwareBuffers);
  EXPECT_FALSE(read("SOFTWARE BUFFERS=true").SoftwareBuffers);
}

TEST_F(SoundTest, AnUnknownSettingIsTold) {
  Init("ogg buffers=5\r\nSOUND BUFFERS=40\r\nnonsense\r\n");
  EXPECT_EQ(Boxes(), (Texts{"0|Corvid|Error in sounds.ini file - unrecognized parameter in line OGG BUFFERS=5",
                            "0|Corvid|Error in sounds.ini file - unrecognized parameter in line NONSENSE"}));
  EXPECT_EQ(sound.SoundBuffers(), 40);
  EXPECT_EQ(sound.Settings().OggBuffers, 20);
}

TEST_F(SoundTest, ASettingsFileThatCannotBeReadIsLogged) {
  memory.files.Fail = [](const std::string& operation, const std::string&) {
    return operation == "read" ? std::string("Input/output error") : std::string();
  };
  Init("SOUND BUFFERS=40");
  EXPECT_EQ(Take("unknownerror").size(), 1u);
  EXPECT_EQ(sound.SoundBuffers(), 30);
  EXPECT_TRUE(sound.Initialised());
}

TEST_F(SoundTest, StartsWithTheListenersValues) {
  EXPECT_FALSE(sound.Initialised());
  Init();
  EXPECT_TRUE(sound.Initialised());
  EXPECT_FLOAT_EQ(sound.Listener().DistanceFactor, 1.0F);
  EXPECT_FLOAT_EQ(sound.Listener().RolloffFactor, 3.4F);
  EXPECT_TRUE(memory.effects.All().empty());
}

// --- without a device ---

TEST_F(SoundTest, AMissingDeviceIsToldOnceAndTheProgramGoesOn) {
  memory.sounds.Works = false;
  Init();
  EXPECT_EQ(Take("notice"), (Texts{"Unable to initialize DirectSound - sound card may not be present"}));
  EXPECT_TRUE(sound.Initialised());
  EXPECT_TRUE(sound.DeviceMissing());
  EXPECT_EQ(Play("a.wav"), 2);
  EXPECT_EQ(Play("tune.mp3"), 201);
  Pass(900);
  EXPECT_TRUE(sound.IsPlaying(2));
  Pass(200);
  EXPECT_FALSE(sound.IsPlaying(2)) << "in silence, and no longer than with a device";
  EXPECT_FALSE(sound.IsPlaying(201));
  sound.ResetSounds();
  EXPECT_TRUE(memory.effects.All().empty()) << "not again";
  memory.sounds.Works = true;
  EXPECT_EQ(Play("a.wav"), 2);
  EXPECT_EQ(Heard(), (Texts{"play 2 a.wav 0 0 22050 once"})) << "headphones are plugged in";
  sound.ResetSounds();
  EXPECT_FALSE(sound.DeviceMissing());
}

TEST_F(SoundTest, WithoutADeviceAndItsStandInNothingPlaysAndNoBoxComes) {
  memory.sounds.Works = false;
  memory.sounds.PlayersLeft = 0;
  Init();
  memory.effects.Clear();
  EXPECT_EQ(Play("a.wav"), 0);
  EXPECT_EQ(Play("tune.mp3"), 0);
  EXPECT_TRUE(memory.effects.All().empty());
  memory.files.Put("/data/Sounds/bad.wav", "nonsense");
  EXPECT_EQ(Play("bad.wav"), 0);
  EXPECT_EQ(Boxes(), (Texts{"0|Corvid|Error opening file BAD.WAV"}));
}

TEST_F(SoundTest, ADeviceWithoutPlayersLeftFailsLikeABadFile) {
  Init();
  Play("a.wav");
  memory.sounds.PlayersLeft = 0;
  EXPECT_EQ(Play("a.wav"), 0) << "neither a duplicate nor a fresh one";
  EXPECT_EQ(Boxes(), (Texts{"0|Corvid|Error opening file A.WAV"}));
  EXPECT_EQ(Play("tune.mp3"), 0);
  EXPECT_TRUE(sound.IsPlaying(2));
}

// --- buffers by handle ---

TEST_F(SoundTest, ABufferIsChangedByItsHandle) {
  Init();
  Play("a.wav");
  Heard();
  sound.SetVolume(2, -20000);
  sound.SetVolume(2, 50);
  sound.SetPan(2, -7000);
  sound.SetFrequency(2, 44100);
  sound.SetFrequency(2, 0);
  sound.StopPlay(2);
  EXPECT_EQ(Heard(), (Texts{"volume 2 a.wav -10000", "volume 2 a.wav 0", "pan 2 a.wav -7000", "frequency 2 a.wav 44100",
                            "frequency 2 a.wav 22050", "stop 2 a.wav"}));
}

TEST_F(SoundTest, ABadHandleHasNoEffect) {
  Init();
  Play("a.wav");
  memory.effects.Clear();
  for (int handle : {-32768, -1, 0, 1, 3, 100, 101, 120, 121, 200, 201, 220, 221, 300, 301, 32767}) {
    auto index = static_cast<int16>(handle);
    sound.SetVolume(index, -100);
    sound.SetPan(index, 100);
    sound.SetFrequency(index, 100);
    sound.StopPlay(index);
    sound.PlayOpenedSound(index, 4, 0);
    sound.SetStartPosition(index);
    sound.UnpauseOneOGG(index);
    sound.UnpauseOneMP3(index);
    EXPECT_FALSE(sound.IsPlaying(index)) << handle;
    EXPECT_EQ(sound.GetFrequency(index), 0) << handle;
    int16 again = index;
    sound.DeleteSound2(again);
    EXPECT_EQ(again, 0) << handle;
    sound.DeleteSound(index);
    EXPECT_EQ(index, 0) << handle;
  }
  EXPECT_TRUE(memory.effects.All().empty());
}

TEST_F(SoundTest, DeletingFreesTheSlotAndClearsTheArgument) {
  Init();
  int16 wave = Play("a.wav", playflag::Priority3);
  int16 mp3 = Play("tune.mp3");
  EXPECT_EQ(mp3, 201);
  sound.DeleteSound(wave);
  sound.DeleteSound(mp3);
  EXPECT_EQ(wave, 0);
  EXPECT_EQ(mp3, 0);
  EXPECT_FALSE(sound.Loaded(2));
  EXPECT_EQ(sound.NameOf(2), "");
  EXPECT_EQ(sound.PriorityOf(2), 0);
  EXPECT_FALSE(sound.IsPlaying(201));
}

TEST_F(SoundTest, SetStartPositionRewindsABuffer) {
  Init();
  Play("a.wav");
  Pass(900);
  sound.SetStartPosition(2);
  Pass(900);
  EXPECT_TRUE(sound.IsPlaying(2));
}

TEST_F(SoundTest, TheLastBufferKeepsItsPosition) {
  Init("SOUND BUFFERS=100");
  ASSERT_EQ(sound.OpenSound(100, "a.wav", 0), 1);
  sound.PlayOpenedSound(100, 22048, 0);
  Pass(600);
  EXPECT_TRUE(sound.IsPlaying(100)) << "from its start, whatever was asked for";
}

TEST_F(SoundTest, KillAllSoundsSparesTheBuffers) {
  Init();
  Play("a.wav");
  Play("tune.mp3");
  sound.KillAllSounds();
  EXPECT_TRUE(sound.IsPlaying(2));
  EXPECT_FALSE(sound.IsPlaying(201));
}

TEST_F(SoundTest, ShutdownSilencesTheBuffers) {
  Init();
  Play("a.wav");
  Play("tune.mp3");
  sound.ShutdownForm1();
  EXPECT_FALSE(sound.IsPlaying(2));
  EXPECT_TRUE(sound.IsPlaying(201));
}

// --- MP3 ---

TEST_F(SoundTest, AnMp3IsStreamedInItsOwnPool) {
  Init();
  int32 volume = -600;
  EXPECT_EQ(sound.PlaySound("TUNE.MP3", volume, -1, 300, 0, 0), 201);
  EXPECT_EQ(Heard(), (Texts{"play 201 tune.mp3 -600 300 22050 once background"}));
  EXPECT_EQ(Play("tune.mp3", playflag::Loop), 202);
  EXPECT_EQ(Heard(), (Texts{"play 202 tune.mp3 0 0 22050 once background"})) << "its keeper loops it, not the stream";
  EXPECT_EQ(memory.sounds.Loads, 0);
  Pass(1500);
  EXPECT_EQ(Play("tune.mp3"), 203) << "an empty slot before one that has ended";
  EXPECT_EQ(Boxes(), Texts());
  EXPECT_EQ(Play("nosuch.mp3"), 0);
  EXPECT_EQ(Boxes(), (Texts{"16|File not found.|File: NOSUCH.MP3 does not exist!"}));
  EXPECT_EQ(sound.PlayMP3Sound("gone.mp3", 0, 0, 0, 0), 0);
  EXPECT_EQ(Boxes(), (Texts{"16|File not found.|File: GONE.MP3 does not exist!"}));
  memory.files.Put("/data/Sounds/bad.mp3", "nonsense");
  EXPECT_EQ(Play("bad.mp3"), 0);
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(SoundTest, TheMp3PoolHasTwentySlots) {
  Init();
  for (int16 handle = 201; handle <= 220; ++handle) EXPECT_EQ(Play("tune.mp3"), handle);
  EXPECT_EQ(Play("tune.mp3"), 0);
  EXPECT_TRUE(Boxes().empty());
  Pass(1500);
  EXPECT_EQ(Play("tune.mp3"), 201) << "the first that has ended";
}

TEST_F(SoundTest, StreamsOfLowPriorityGiveWayFirst) {
  Init();
  Play("tune.mp3", playflag::Priority3);
  Play("tune.mp3", playflag::Priority2);
  Play("tune.mp3", playflag::PriorityLowest);
  for (int i = 0; i < 17; ++i) Play("tune.mp3", playflag::Priority1);
  Pass(1500);
  EXPECT_EQ(Play("tune.mp3", playflag::Priority3), 203);
  for (int16 handle = 204; handle <= 220; ++handle) EXPECT_EQ(Play("tune.mp3", playflag::Priority3), handle);
  EXPECT_EQ(Play("tune.mp3", playflag::Priority3), 202);
  EXPECT_EQ(Play("tune.mp3"), 0) << "priority 3 never gives way";
}

TEST_F(SoundTest, AnMp3HasASpeedAndABalance) {
  Init();
  memory.PutSound("/data/Sounds/fast.mp3", 1000, 2, 44100);
  Play("fast.mp3");
  Heard();
  sound.SetFrequency(201, 11025);
  sound.SetFrequency(201, 0);
  sound.SetFrequency(201, 2147483647);
  sound.SetPan(201, 9000);
  sound.SetPan(201, -9000);
  sound.SetVolume(201, -450);
  EXPECT_EQ(Heard(), (Texts{"frequency 201 fast.mp3 22050", "frequency 201 fast.mp3 1000000", "pan 201 fast.mp3 5000",
                            "pan 201 fast.mp3 -5000", "volume 201 fast.mp3 -450"}));
}

TEST_F(SoundTest, AStoppedMp3KeepsItsSlotAndGoesOn) {
  Init();
  Play("tune.mp3");
  Pass(400);
  sound.StopPlay(201);
  sound.StopPlay(201);
  EXPECT_TRUE(sound.IsPlaying(201)) << "it has not come to its end";
  EXPECT_EQ(Play("tune.mp3"), 202);
  sound.UnpauseOneMP3(201);
  EXPECT_EQ(Heard().back(), "play 201 tune.mp3 0 0 22050 once background");
  Pass(700);
  EXPECT_FALSE(sound.IsPlaying(201));
  sound.UnpauseOneMP3(201);
  EXPECT_FALSE(sound.IsPlaying(201)) << "what has ended does not begin again";
}

TEST_F(SoundTest, AllMp3sArePausedAtOnce) {
  Init();
  Play("tune.mp3");
  Play("tune.mp3", playflag::PrepareOnly);
  EXPECT_TRUE(sound.IsPlaying(202)) << "prepared";
  EXPECT_EQ(Heard().size(), 1u);
  sound.PauseAllMP3Sounds();
  EXPECT_EQ(Heard(), (Texts{"stop 201 tune.mp3"}));
  sound.UnPauseAllMP3Sounds();
  EXPECT_EQ(Heard().size(), 2u);
}

TEST_F(SoundTest, AnMp3CannotBe3DAndPlaysAllTheSame) {
  Init();
  EXPECT_EQ(Play("tune.mp3", playflag::ThreeD), 201);
  EXPECT_EQ(Boxes(), (Texts{"16|Error.|Standard MP3 Files can not be 3d. File: TUNE.MP3"}));
}

// --- streamed OGG ---

TEST_F(SoundTest, AStreamedOggEndsTheProgramInOrder) {
  Init();
  Play("a.wav");
  memory.effects.Clear();
  EXPECT_EQ(Play("x.ogg"), 0);
  EXPECT_EQ(memory.effects.Transcript(), "box 16|Error|OGG DLL is missing.\nsound stop 2 a.wav\nquit mandatory\n");
  memory.effects.Clear();
  EXPECT_EQ(Play("x.ogg"), 0);
  EXPECT_TRUE(memory.effects.All().empty()) << "once";
}

class OggTest : public SoundTest {
 protected:
  OggTest() {
    Init();
    sound.SetOggTick(true);
    memory.PutSound("/data/Sounds/x.ogg", 1000);
  }
};

TEST_F(OggTest, WithItsTickAnOggIsStreamed) {
  int32 volume = -600;
  EXPECT_EQ(sound.PlaySound("x.ogg", volume, -1, 260, 0, playflag::Loop), 101);
  EXPECT_EQ(Heard(), (Texts{"play 101 x.ogg -600 300 22050 loop background"}));
  Pass(5000);
  EXPECT_TRUE(sound.IsPlaying(101));
  EXPECT_EQ(Play("y.ogg"), 0);
  EXPECT_EQ(Boxes(), (Texts{"16|File not found.|File: Y.OGG does not exist!"}));
  EXPECT_EQ(Play("x.ogg", playflag::ThreeD), 102);
  EXPECT_EQ(Boxes(), (Texts{"16|Error.|Standard OGG Files can not be 3d. File: X.OGG"}));
}

TEST_F(OggTest, IsLookedForInTheFoldersOfSoundsAlone) {
  memory.PutSound("/elsewhere/x.ogg", 1000);
  memory.PutSound("/data/own.ogg", 1000);
  for (const char* name : {"/elsewhere/x.ogg", "\\elsewhere\\x.ogg"}) {
    EXPECT_EQ(Play(name), 0) << name;
    EXPECT_EQ(Boxes().size(), 1u) << name;
  }
  EXPECT_EQ(Play("own.ogg"), 101);
  EXPECT_EQ(Play("\\x.ogg"), 102);
}

TEST_F(OggTest, ThePoolHasTwentySlots) {
  for (int16 handle = 101; handle <= 120; ++handle) EXPECT_EQ(Play("x.ogg"), handle);
  EXPECT_EQ(Play("x.ogg"), 0);
  EXPECT_EQ(Boxes(), (Texts{"16|Error!|insufficient OGG Handles available."}));
}

TEST_F(OggTest, VolumeAndPanComeInSteps) {
  Play("x.ogg");
  Heard();
  const struct {
    int32 volume;
    const char* heard;
  } rows[] = {{0, "0"},          {-1000, "-1000"},  {-1025, "-1000"}, {-1075, "-1100"},
              {-5000, "-10000"}, {-9000, "-10000"}, {800, "0"}};
  for (const auto& row : rows) {
    sound.SetVolume(101, row.volume);
    EXPECT_EQ(Heard(), (Texts{std::string("volume 101 x.ogg ") + row.heard})) << row.volume;
  }
  sound.SetPan(101, 250);
  sound.SetPan(101, -350);
  sound.SetPan(101, 9999);
  EXPECT_EQ(Heard(), (Texts{"pan 101 x.ogg 200", "pan 101 x.ogg -400", "pan 101 x.ogg 5000"}));
}

TEST_F(OggTest, StoppingHoldsAndLetsGoTurnByTurn) {
  Play("x.ogg");
  sound.StopPlay(101);
  EXPECT_FALSE(sound.IsPlaying(101));
  sound.StopPlay(101);
  EXPECT_TRUE(sound.IsPlaying(101)) << "the library's pause is a toggle";
  sound.PauseAllOGGSounds();
  EXPECT_FALSE(sound.IsPlaying(101));
  sound.UnPauseAllOGGSounds();
  EXPECT_TRUE(sound.IsPlaying(101));
  sound.StopPlay(101);
  sound.UnpauseOneMP3(101);
  EXPECT_FALSE(sound.IsPlaying(101)) << "not of its pool";
  sound.UnpauseOneOGG(101);
  EXPECT_TRUE(sound.IsPlaying(101));
}

TEST_F(OggTest, DeleteSound2LeavesTheHandleInPlace) {
  Play("x.ogg");
  int16 handle = 101;
  sound.DeleteSound2(handle);
  EXPECT_EQ(handle, 0);
  EXPECT_FALSE(sound.IsPlaying(101));
  Play("tune.mp3");
  handle = 201;
  sound.DeleteSound2(handle);
  EXPECT_TRUE(sound.IsPlaying(201)) << "only buffers and OGGs";
  handle = Play("a.wav");
  sound.DeleteSound2(handle);
  EXPECT_FALSE(sound.Loaded(2));
}

TEST_F(OggTest, DeletingOrKillingFreesTheSlot) {
  Play("x.ogg");
  int16 handle = 101;
  sound.DeleteSound(handle);
  EXPECT_EQ(handle, 0);
  EXPECT_EQ(Heard().back(), "stop 101 x.ogg");
  EXPECT_EQ(Play("x.ogg"), 101);
  sound.KillAllSounds();
  EXPECT_FALSE(sound.IsPlaying(101));
  EXPECT_EQ(Play("x.ogg"), 101);
}

TEST_F(SoundTest, ResetBeginsAnewAndLeavesTheBuffers) {
  Init("SOUND BUFFERS=40");
  sound.SetOggTick(true);
  Play("a.wav");
  Play("tune.mp3");
  memory.files.Put("/data/sounds.ini", "SOUND BUFFERS=25");
  sound.ResetSounds();
  EXPECT_EQ(sound.SoundBuffers(), 25);
  EXPECT_TRUE(sound.IsPlaying(2));
  EXPECT_FALSE(sound.IsPlaying(201));
  Boxes();
  EXPECT_EQ(Play("x.ogg"), 0) << "the tick is off again";
  EXPECT_EQ(Boxes(), (Texts{"16|Error|OGG DLL is missing."}));
}

TEST_F(OggTest, PrepareOnlyHoldsItAtItsStart) {
  EXPECT_EQ(Play("x.ogg", playflag::PrepareOnly), 101);
  EXPECT_FALSE(sound.IsPlaying(101));
  sound.UnPauseAllOGGSounds();
  EXPECT_TRUE(sound.IsPlaying(101));
  sound.ShutdownForm1();
  EXPECT_FALSE(sound.IsPlaying(101));
}

// --- boxes let others in ---

TEST_F(SoundTest, WhatPlaysDuringABoxKeepsItsSlot) {
  Init();
  memory.PutSound("/data/Sounds/wide.wav", 1000, 2);
  prompter.OnBox = [&] {
    prompter.OnBox = nullptr;
    int16 slot = 2;
    sound.DeleteSound(slot);
    Play("a.wav");
  };
  EXPECT_EQ(Play("wide.wav", playflag::ThreeD), 0);
  EXPECT_EQ(sound.NameOf(2), "A.WAV");
  EXPECT_FALSE(sound.ThreeDOf(2).has_value());
  prompter.OnBox = [&] {
    prompter.OnBox = nullptr;
    Play("tune.mp3");
  };
  EXPECT_EQ(Play("tune.mp3", playflag::ThreeD), 202);
}

TEST_F(SoundTest, BoxesDoNotPileUp) {
  Init();
  prompter.OnBox = [&] {
    for (int i = 0; i < 100; ++i) EXPECT_EQ(Play("gone.mp3"), 0);
    EXPECT_EQ(Play("*.wav"), 0);
  };
  EXPECT_EQ(Play("nosuch.mp3"), 0);
  EXPECT_EQ(Boxes(), (Texts{"16|File not found.|File: NOSUCH.MP3 does not exist!"}));
  prompter.OnBox = nullptr;
  EXPECT_EQ(Play("gone.mp3"), 0);
  EXPECT_EQ(Boxes().size(), 1u) << "the next one is told again";
}

// --- the keeper of the music ---

class MusicTest : public SoundTest {
 protected:
  MusicTest() {
    Init();
    int32 volume = -900;
    state = {sound.PlaySound("tune.mp3", volume, 0, 0, 0, playflag::Loop), "tune.mp3", -900, 250, -1};
    music.StartTimer2();
    Heard();
  }
  MusicState state;
  Music music{state, script, sound, platform, upcalls};
};

TEST_F(MusicTest, StartsTheMusicAgainWhenItHasEnded) {
  Pass(999);
  EXPECT_TRUE(Heard().empty());
  Pass(1);
  EXPECT_EQ(Heard(), (Texts{"play 202 tune.mp3 -900 250 22050 once background"})) << "in the next slot that is empty";
  EXPECT_EQ(script.SystemValues[sysvar::MP3LOOP], "202");
  EXPECT_EQ(state.MusicHandle, 202);
  Pass(30000);
  EXPECT_EQ(Heard().size(), 30u) << "for ever";
}

TEST_F(MusicTest, PlaysWithAllThatItsSlotHolds) {
  state = {200, "b.wav", -1200, -400, 11025};  // 200 is music still
  Pass(500);
  EXPECT_EQ(Heard(), (Texts{"play 2 b.wav -1200 -400 11025 loop"}));
  EXPECT_EQ(script.SystemValues[sysvar::MP3LOOP], "2");
  Pass(500);
  EXPECT_EQ(script.SystemValues[sysvar::MP3LOOP], "0") << "a buffer loops by itself";
  EXPECT_FALSE(music.Running());
  EXPECT_TRUE(sound.IsPlaying(2));
}

TEST_F(MusicTest, EndsWithTheMusic) {
  int16 handle = 201;
  state.MusicHandle = 0;
  sound.DeleteSound(handle);
  Heard();
  Pass(500);
  EXPECT_FALSE(music.Running());
  EXPECT_EQ(script.SystemValues[sysvar::MP3LOOP], "0");
  Pass(5000);
  EXPECT_TRUE(Heard().empty());
}

TEST_F(MusicTest, GivesUpAFileThatHasGone) {
  memory.files.Remove("/data/Sounds/tune.mp3");
  Pass(3000);
  EXPECT_EQ(state.MusicHandle, 0);
  EXPECT_FALSE(music.Running());
  EXPECT_TRUE(memory.effects.Of("sound").empty());
  EXPECT_TRUE(memory.effects.Of("unknownerror").empty());
  EXPECT_EQ(Boxes(), (Texts{"16|File not found.|File: TUNE.MP3 does not exist!"})) << "once";
}

TEST_F(MusicTest, AFaultIsLoggedOnce) {
  state.MusicFile = "#speak";
  speaker.Fails = true;
  Pass(5000);
  EXPECT_EQ(Take("unknownerror"), (Texts{"timer2: no voice"}));
  EXPECT_FALSE(music.Running());
}

}  // namespace
}  // namespace corvid
