// SPDX-License-Identifier: GPL-3.0-or-later
// What is done to sounds by their handles, without a device, and while a box stands.
#include "sound/fixture.h"

namespace corvid {
namespace {

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

}  // namespace
}  // namespace corvid
