// SPDX-License-Identifier: GPL-3.0-or-later
// Playing: names, slots, flags, eviction.
#include "sound/fixture.h"

namespace corvid {
namespace {

TEST_F(SoundTest, PlaysAFileAndGivesItsHandle) {
  Init();
  int32 volume = -300;
  EXPECT_EQ(sound.PlaySound("a.wav", volume, 11025, 500), 2);
  EXPECT_EQ(Heard(), (Texts{"play 2 a.wav -300 500 11025 once"}));
  EXPECT_TRUE(sound.IsPlaying(2));
  EXPECT_EQ(sound.NameOf(2), "A.WAV");
  EXPECT_EQ(sound.GetFrequency(2), 11025);
  Pass(2000);
  EXPECT_FALSE(sound.IsPlaying(2));
  EXPECT_TRUE(sound.Loaded(2)) << "it stays, so that a repeat is cheap";
}

TEST_F(SoundTest, NothingComesOfNothing) {
  Init();
  EXPECT_EQ(Play(""), 0);
  EXPECT_EQ(Play("   "), 0);
  EXPECT_EQ(Play("nosuch.wav"), 0);
  EXPECT_EQ(Play(std::string("a.wav\0", 6)), 0);
  EXPECT_TRUE(memory.effects.All().empty());
}

TEST_F(SoundTest, ARelativeNameIsLookedForInTheSoundsFolderAndThenInTheUsersFolder) {
  Init();
  memory.PutSound("/data/a.wav", 1000);
  memory.PutSound("/data/own.wav", 1000);
  memory.PutSound("/data/Sounds/fight/hit.wav", 1000);
  memory.PutSound("/elsewhere/x.wav", 1000);
  Play("A.WAV");
  Play("own.wav");
  Play("fight\\hit.wav");
  Play("/elsewhere/x.wav");
  Play("\\elsewhere\\X.wav");
  EXPECT_EQ(Heard(), (Texts{"play 2 a.wav 0 0 22050 once", "play 3 /data/own.wav 0 0 22050 once",
                            "play 4 fight/hit.wav 0 0 22050 once", "play 5 /elsewhere/x.wav 0 0 22050 once",
                            "play 6 /elsewhere/x.wav 0 0 22050 once"}));
  EXPECT_EQ(Play("C:a.wav"), 0) << "a drive is used as it stands, and is not there";
}

TEST_F(SoundTest, WritesTheClampedVolumeBack) {
  Init();
  int32 volume = 700;
  sound.PlaySound("a.wav", volume);
  EXPECT_EQ(volume, 0);
  volume = -20000;
  sound.PlaySound("a.wav", volume);
  EXPECT_EQ(volume, -10000);
  volume = 700;
  sound.PlaySound("tune.mp3", volume);
  EXPECT_EQ(volume, 700) << "not for an MP3";
}

TEST_F(SoundTest, ARepeatReloadsNothingAndOverlapsOnADuplicate) {
  Init();
  EXPECT_EQ(Play("a.wav", playflag::Priority2), 2);
  EXPECT_EQ(Play("a.wav", playflag::Priority2), 3) << "beside the one that plays";
  EXPECT_TRUE(sound.IsPlaying(2));
  EXPECT_EQ(sound.NameOf(3), "");
  EXPECT_EQ(sound.PriorityOf(2), 2);
  EXPECT_EQ(sound.PriorityOf(3), 0) << "a duplicate has no name and priority 0";
  Pass(1500);
  EXPECT_EQ(Play("a.wav"), 2) << "the loaded one is idle again";
  EXPECT_EQ(memory.sounds.Loads, 1);
}

TEST_F(SoundTest, FlagsChooseHowALoadedFileIsUsed) {
  Init();
  Play("a.wav");
  EXPECT_EQ(Play("a.wav", playflag::OnlyOne), 0);
  EXPECT_EQ(Play("a.wav", playflag::Restart), 2);
  Pass(600);
  EXPECT_EQ(Play("a.wav", playflag::Restart), 2);
  Pass(600);
  EXPECT_TRUE(sound.IsPlaying(2)) << "from its start again";
  Pass(600);
  EXPECT_EQ(Play("a.wav", playflag::Duplicate), 3) << "idle, and yet not used";
  EXPECT_EQ(memory.sounds.Loads, 1);
  Pass(1500);
  EXPECT_EQ(Play("a.wav", playflag::OnlyOne), 2);
}

TEST_F(SoundTest, ADuplicateThatTakesTheSlotOfItsOriginalIsLoadedAgain) {
  Init();
  PlayMany(30);
  Pass(1500);
  chance = 5;
  EXPECT_EQ(Play("5.wav", playflag::Duplicate | playflag::Priority1), 6);
  EXPECT_EQ(memory.sounds.Loads, 31);
  EXPECT_EQ(sound.NameOf(6), "5.WAV");
  EXPECT_EQ(sound.PriorityOf(6), 1);
  EXPECT_TRUE(sound.IsPlaying(6));
}

TEST_F(SoundTest, ADuplicateThatFailsIsOpenedLikeAnyFile) {
  Init();
  EXPECT_EQ(Play("a.wav"), 2);
  memory.sounds.PlayersToFail = 1;
  EXPECT_EQ(Play("a.wav", playflag::Priority2), 3);
  EXPECT_EQ(memory.sounds.Loads, 2);
  EXPECT_EQ(sound.NameOf(3), "A.WAV") << "with its name and priority, which a duplicate has not";
  EXPECT_EQ(sound.PriorityOf(3), 2);
  EXPECT_TRUE(sound.IsPlaying(2));
  EXPECT_TRUE(sound.IsPlaying(3));
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(SoundTest, ADuplicateIn3DHasTheConesThatItAsksFor) {
  Init();
  Play("a.wav", playflag::ThreeD);
  EXPECT_EQ(Play("a.wav", playflag::ThreeD | playflag::Cones), 3);
  EXPECT_EQ(sound.ThreeDOf(2)->InsideConeAngle, 360);
  EXPECT_EQ(sound.ThreeDOf(3)->InsideConeAngle, 0);
  EXPECT_EQ(memory.sounds.Loads, 1);
}

TEST_F(SoundTest, PrepareOnlyDoesNotStart) {
  Init();
  EXPECT_EQ(Play("a.wav", playflag::PrepareOnly), 2);
  EXPECT_FALSE(sound.IsPlaying(2));
  EXPECT_TRUE(Heard().empty());
  sound.PlayOpenedSound(2, 0, playflag::Loop);
  EXPECT_EQ(Heard(), (Texts{"play 2 a.wav 0 0 22050 loop"}));
}

TEST_F(SoundTest, FlagsDecideThePriority) {
  const struct {
    int16 flags;
    int16 priority;
  } rows[] = {{0, 0},
              {playflag::Priority3, 3},
              {playflag::Priority2, 2},
              {playflag::Priority1, 1},
              {playflag::PriorityLowest, -1},
              {playflag::Priority3 | playflag::Priority2 | playflag::PriorityLowest, 3},
              {playflag::Priority2 | playflag::Priority1, 2},
              {playflag::Priority1 | playflag::PriorityLowest, 1}};
  for (const auto& row : rows) EXPECT_EQ(PriorityOfFlags(row.flags), row.priority) << row.flags;
  Init();
  EXPECT_EQ(sound.PriorityOf(Play("a.wav", playflag::Priority1)), 1);
}

TEST_F(SoundTest, BuffersKnowWhatTheyCan) {
  Init("SOFTWARE BUFFERS\r\n");
  Play("a.wav", playflag::InBackground);
  Play("b.wav", playflag::NotStatic);
  Play("c.wav", playflag::ThreeD | playflag::Cones | playflag::InBackground);
  constexpr int32 always = buffercan::Frequency | buffercan::Volume | buffercan::Software;
  EXPECT_EQ(sound.DescriptionOf(2).Flags, always | buffercan::Pan | buffercan::Static | buffercan::GlobalFocus);
  EXPECT_EQ(sound.DescriptionOf(3).Flags, always | buffercan::Pan);
  EXPECT_EQ(sound.DescriptionOf(4).Flags, always | buffercan::ThreeD);
  EXPECT_EQ(sound.DescriptionOf(2).Algorithm3D, "DS3DALG_DEFAULT");
  EXPECT_EQ(sound.DescriptionOf(2).Format.BytesPerSecond, 44100);
  EXPECT_EQ(sound.DescriptionOf(2).BufferBytes, 44100);
  EXPECT_EQ(sound.ThreeDOf(4)->InsideConeAngle, 0);
  EXPECT_EQ(sound.ThreeDOf(4)->OutsideConeAngle, 360);
  EXPECT_FALSE(sound.ThreeDOf(2).has_value());
  EXPECT_EQ(Heard(), (Texts{"play 2 a.wav 0 0 22050 once background", "play 3 b.wav 0 0 22050 once",
                            "play 4 c.wav 0 0 22050 once"}));
}

TEST_F(SoundTest, A3DSoundIsNotTheSameAsAFlatOneAndHasNoPan) {
  Init();
  Play("a.wav");
  Pass(1500);
  EXPECT_EQ(Play("a.wav", playflag::ThreeD), 3);
  Pass(1500);
  EXPECT_EQ(Play("a.wav", playflag::ThreeD), 3);
  EXPECT_EQ(Play("a.wav"), 2);
  EXPECT_EQ(Play("a.wav", playflag::ThreeD), 4);
  EXPECT_TRUE(sound.ThreeDOf(4).has_value());
  Heard();
  sound.SetPan(3, 400);
  EXPECT_TRUE(Heard().empty());
}

TEST_F(SoundTest, AStereoFileIn3DIsToldAndPlays) {
  Init();
  memory.PutSound("/data/Sounds/wide.wav", 1000, 2);
  EXPECT_EQ(Play("wide.wav", playflag::ThreeD), 2);
  EXPECT_EQ(Boxes(), (Texts{"64|Warning |WIDE.WAV will not play.  Trying to use a stereo sound in a 3D buffer."}));
  EXPECT_TRUE(sound.IsPlaying(2));
}

TEST_F(SoundTest, AFileThatIsNoSoundIsTold) {
  Init();
  memory.files.Put("/data/Sounds/bad.wav", "nonsense");
  EXPECT_EQ(Play("bad.wav"), 0);
  EXPECT_EQ(Boxes(), (Texts{"0|Corvid|Error opening file BAD.WAV"}));
  EXPECT_EQ(Play("a.wav"), 2) << "its slot is free";
  EXPECT_EQ(sound.OpenSound(7, "b.wav", 0), 1);
  EXPECT_EQ(sound.OpenSound(8, "nosuch.wav", 0), 0);
  sound.PlayOpenedSound(7, 0, 0);
  EXPECT_TRUE(sound.IsPlaying(7));
}

TEST_F(SoundTest, ThereAreAHundredSlotsToOpenAFileIn) {
  Init();
  for (const int16 slot : {int16{1}, int16{100}}) EXPECT_EQ(sound.OpenSound(slot, "a.wav", 0), 1) << slot;
  for (const int slot : {-32768, -1, 0, 101, 201, 32767}) {
    EXPECT_EQ(sound.OpenSound(static_cast<int16>(slot), "a.wav", 0), 0) << slot;
    EXPECT_EQ(Boxes(), (Texts{"0|Corvid|Error opening file a.wav"})) << slot;
    EXPECT_EQ(sound.OpenSound(static_cast<int16>(slot), "nosuch.wav", 0), 0) << slot;
    EXPECT_EQ(Boxes(), Texts()) << "a file that is not there is not told";
  }
}

TEST_F(SoundTest, PositionsAreRoundedTheirOwnWays) {
  Init();
  memory.PutSound("/data/Sounds/wide.wav", 1000, 2, 1000);  // 4 bytes a millisecond
  int32 volume = 0;
  sound.PlaySound("wide.wav", volume, 0, 0, 403);  // down to 400: 900 ms are left
  Pass(899);
  EXPECT_TRUE(sound.IsPlaying(2));
  Pass(1);
  EXPECT_FALSE(sound.IsPlaying(2));
  sound.PlayOpenedSound(2, 402, 0);  // up to 404: 899 ms are left
  Pass(898);
  EXPECT_TRUE(sound.IsPlaying(2));
  Pass(1);
  EXPECT_FALSE(sound.IsPlaying(2));
}

// --- eviction ---

TEST_F(SoundTest, WithAllSlotsPlayingANewFileGetsNothingAndNobodyIsCut) {
  Init();
  EXPECT_NE(PlayMany(30), 0);
  Heard();
  EXPECT_EQ(Play("a.wav"), 0);
  EXPECT_EQ(Play("1.wav"), 0) << "not as a duplicate either";
  EXPECT_TRUE(Heard().empty());
  for (int16 slot = 1; slot <= 30; ++slot) EXPECT_TRUE(sound.IsPlaying(slot)) << slot;
  Pass(1500);
  EXPECT_NE(Play("a.wav"), 0);
}

TEST_F(SoundTest, ASoundOfPriority3IsNeverEvicted) {
  Init();
  PlayMany(30, playflag::Priority3);
  Pass(1500);
  EXPECT_EQ(Play("a.wav"), 0);
  EXPECT_EQ(Play("1.wav"), 2) << "but it can be played again";
  int16 slot = 5;
  sound.DeleteSound(slot);
  EXPECT_EQ(Play("a.wav"), 5);
}

TEST_F(SoundTest, TheLowestPriorityGoesFirst) {
  Init();
  PlayMany(30, playflag::Priority2);
  Pass(1500);
  const struct {
    int16 slot;
    int16 flags;
  } rows[] = {{20, playflag::Priority1}, {10, 0}, {28, playflag::PriorityLowest}};
  // One after the other, so that each new one is lower than all there are.
  for (const auto& row : rows) {
    int16 slot = row.slot;
    sound.DeleteSound(slot);
    memory.PutSound("/data/Sounds/low" + std::to_string(row.slot) + ".wav", 1000);
    EXPECT_EQ(Play("low" + std::to_string(row.slot) + ".wav", row.flags), row.slot);
    Pass(1500);
  }
  EXPECT_EQ(Play("a.wav", playflag::Priority3), 28);
  EXPECT_EQ(Play("b.wav", playflag::Priority3), 10);
  EXPECT_EQ(Play("c.wav", playflag::Priority3), 20);
  EXPECT_EQ(Play("door1.wav", playflag::Priority3), 2) << "then from behind the start on";
}

TEST_F(SoundTest, AnIdleSoundOfLowestPriorityInTheFirstSlotEndsTheSearchAtOnce) {
  Init();
  chance = 30;  // the search begins behind the last slot
  EXPECT_EQ(Play("a.wav", playflag::PriorityLowest), 1);
  for (int i = 1; i <= 29; ++i) {
    memory.PutSound("/data/Sounds/" + std::to_string(i) + ".wav", 100000);
    chance = static_cast<int16>(i);
    EXPECT_NE(Play(std::to_string(i) + ".wav"), 0);
  }
  Pass(1500);
  EXPECT_EQ(Play("b.wav"), 1);
}

TEST_F(SoundTest, TheSearchBeginsAnywhere) {
  Init("SOUND BUFFERS=20");
  chance = 19;
  EXPECT_EQ(Play("a.wav"), 20);
  EXPECT_EQ(Play("b.wav"), 1);
  chance = 100;
  EXPECT_EQ(Play("c.wav"), 2);
}

TEST_F(SoundTest, ALowestSoundBehindTheMatchDoesNotMoveTheSearch) {
  Init();
  Play("a.wav");                            // 2
  Play("b.wav", playflag::PriorityLowest);  // 3
  Play("c.wav");                            // 4
  Pass(1500);
  Play("a.wav");
  Play("c.wav");
  EXPECT_EQ(Play("c.wav"), 3) << "a lowest one that is scanned before the match is the first to go";
  Pass(1500);
  EXPECT_EQ(Play("b.wav", playflag::PriorityLowest), 5);
  Pass(1500);
  Play("a.wav");
  chance = 10;
  EXPECT_EQ(Play("a.wav"), 11) << "one behind it has not been seen";
}

// --- names ---

TEST_F(SoundTest, ANumberBehindAStarIsAChoice) {
  Init();
  for (const int16 n : {int16{1}, int16{2}, int16{3}}) {
    chance = n;
    Play("door*3.wav");
  }
  const Texts heard = Heard();
  ASSERT_EQ(heard.size(), 3u);
  for (std::size_t i = 0; i < 3; ++i)
    EXPECT_NE(heard[i].find("door" + std::to_string(i + 1) + ".wav"), std::string::npos);
}

TEST_F(SoundTest, AStarNeedsOneToThreeDigits) {
  Init();
  for (const std::string name : {"*.wav", "a*1234.wav", "*x"}) {
    EXPECT_EQ(Play(name), 0);
    EXPECT_EQ(Boxes(), (Texts{"0|Error in PlaySound|Wildcard wave file must have 1 to 3 digit number after asterisk. "
                              "File: " +
                              name}));
  }
  memory.PutSound("/data/Sounds/go*2", 1000);
  EXPECT_NE(Play("go*2"), 0);
  EXPECT_EQ(Heard(), (Texts{"play 2 go*2 0 0 22050 once"})) << "digits to the end of the name stay as they are";
  memory.PutSound("/data/Sounds/x1.wav", 1000);
  EXPECT_NE(Play("x*0.wav"), 0) << "a choice of none is the first";
  memory.PutSound("/data/Sounds/x999.wav", 1000);
  chance = 999;
  EXPECT_NE(Play("x*999.wav"), 0);
}

TEST_F(SoundTest, ANumberSignIsSpeech) {
  Init();
  EXPECT_EQ(Play("#Hello"), 0);
  EXPECT_EQ(memory.effects.Transcript(), "stop 1\nspoken 1 Hello\n");
  memory.effects.Clear();
  EXPECT_EQ(Play("##Hello"), 0);
  EXPECT_EQ(memory.effects.Transcript(), "stop control\nstop 1\nspoken 1 Hello\n");
  memory.effects.Clear();
  memory.PutSound("/data/Sounds/HELLO", 1000);
  EXPECT_EQ(Play("#Hello"), 2) << "a file of that name is played too";
  EXPECT_EQ(Play("#"), 0);
}

TEST_F(SoundTest, AnOggWithAMarkIsDecodedWhole) {
  Init();
  memory.PutSound("/data/Sounds/foo.ogg", 1000);
  EXPECT_EQ(Play("foo.ogg!"), 2);
  EXPECT_EQ(sound.NameOf(2), "FOO.OGG");
  EXPECT_EQ(Heard(), (Texts{"play 2 foo.ogg 0 0 22050 once"}));
  EXPECT_EQ(memory.sounds.Loads, 1);
}

TEST_F(SoundTest, CountsThePlaysOfAHandle) {
  Init();
  EXPECT_EQ(sound.StartOf(2), 0);
  Play("a.wav");
  const int64 first = sound.StartOf(2);
  Pass(1500);
  Play("a.wav");
  EXPECT_NE(sound.StartOf(2), first);
  for (const int16 wrong : {int16{-1}, int16{0}, int16{301}}) EXPECT_EQ(sound.StartOf(wrong), 0);
}

}  // namespace
}  // namespace corvid
