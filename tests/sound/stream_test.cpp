// SPDX-License-Identifier: GPL-3.0-or-later
// Sounds that are streamed: MP3 and OGG, each in a pool of its own.
#include "sound/fixture.h"

namespace corvid {
namespace {

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

TEST_F(OggTest, PrepareOnlyHoldsItAtItsStart) {
  EXPECT_EQ(Play("x.ogg", playflag::PrepareOnly), 101);
  EXPECT_FALSE(sound.IsPlaying(101));
  sound.UnPauseAllOGGSounds();
  EXPECT_TRUE(sound.IsPlaying(101));
  sound.ShutdownForm1();
  EXPECT_FALSE(sound.IsPlaying(101));
}

}  // namespace
}  // namespace corvid
