// SPDX-License-Identifier: GPL-3.0-or-later
// The keeper of the music.
#include "sound/fixture.h"

namespace corvid {
namespace {

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
