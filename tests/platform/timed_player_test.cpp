// SPDX-License-Identifier: GPL-3.0-or-later
// What stands in for a sound card: sounds that nobody hears end when the real ones would.
#include "platform/timed_player.h"

#include <gtest/gtest.h>

#include "platform/memory/memory_platform.h"
#include "platform/sound_length.h"

namespace corvid {
namespace {

struct OneSound {
  OneSound() { memory.PutSound("/s/x.wav", 1000); }
  std::unique_ptr<SoundPlayer> Make() {
    std::string error;
    return memory.sounds.CreatePlayer(memory.sounds.Load("/s/x.wav", error), true, {7, "x.wav"});
  }
  std::vector<std::string> Heard() { return memory.effects.Of("sound"); }
  MemoryPlatform memory;
};
using Texts = std::vector<std::string>;

TEST(TimedPlayer, EndsWhenItsLengthHasPassed) {
  OneSound sound;
  auto player = sound.Make();
  EXPECT_FALSE(player->IsPlaying());
  player->Play(false);
  sound.memory.clock.Advance(999);
  EXPECT_TRUE(player->IsPlaying());
  sound.memory.clock.Advance(1);
  EXPECT_FALSE(player->IsPlaying());
  player->Play(false);
  sound.memory.clock.Advance(999);
  EXPECT_TRUE(player->IsPlaying()) << "from its start again";
}

TEST(TimedPlayer, ALoopGoesOnUntilItIsStopped) {
  OneSound sound;
  auto player = sound.Make();
  player->Play(true);
  sound.memory.clock.Advance(100'000);
  EXPECT_TRUE(player->IsPlaying());
  player->Play(false);
  sound.memory.clock.Advance(1000);
  EXPECT_FALSE(player->IsPlaying());
}

TEST(TimedPlayer, PitchAndPositionCount) {
  OneSound sound;
  auto player = sound.Make();
  player->SetFrequency(44100);
  player->Play(false);
  sound.memory.clock.Advance(250);
  player->SetFrequency(0);
  EXPECT_EQ(player->Frequency(), 22050);
  sound.memory.clock.Advance(499);
  EXPECT_TRUE(player->IsPlaying());
  sound.memory.clock.Advance(1);
  EXPECT_FALSE(player->IsPlaying());
  player->SetPosition(22050);  // of 44,100 bytes
  player->Play(false);
  sound.memory.clock.Advance(500);
  EXPECT_FALSE(player->IsPlaying());
  player->SetPosition(44100);
  player->Play(false);
  sound.memory.clock.Advance(999);
  EXPECT_TRUE(player->IsPlaying()) << "a position behind the end is the start";
}

TEST(TimedPlayer, StoppingKeepsThePosition) {
  OneSound sound;
  auto player = sound.Make();
  player->Play(false);
  sound.memory.clock.Advance(600);
  player->Stop();
  sound.memory.clock.Advance(600);
  player->Play(false);
  sound.memory.clock.Advance(399);
  EXPECT_TRUE(player->IsPlaying());
  sound.memory.clock.Advance(1);
  EXPECT_FALSE(player->IsPlaying());
}

TEST(TimedPlayer, TellsWhatIsHeard) {
  OneSound sound;
  auto player = sound.Make();
  player->SetVolume(-12000);
  player->SetPan(500);
  player->Play(true);
  player->SetVolume(-300);
  player->SetPan(20000);
  player->SetFrequency(11025);
  player.reset();
  EXPECT_EQ(sound.Heard(), (Texts{"play 7 x.wav -10000 500 22050 loop background", "volume 7 x.wav -300",
                                  "pan 7 x.wav 10000", "frequency 7 x.wav 11025", "stop 7 x.wav"}));
}

std::string WaveHead(int channels, int frequency, int bits, int bytes) {
  const auto number = [](int value, int size) {
    std::string text;
    for (int i = 0; i < size; ++i, value /= 256) text += static_cast<char>(value % 256);
    return text;
  };
  const int block = channels * bits / 8;
  return "RIFF" + number(36 + bytes, 4) + "WAVEfmt " + number(16, 4) + number(1, 2) + number(channels, 2) +
         number(frequency, 4) + number(frequency * block, 4) + number(block, 2) + number(bits, 2) + "data" +
         number(bytes, 4);
}

TEST(SoundLength, IsReadFromTheHeadOfAWaveFile) {
  const auto length = LengthOfSound(WaveHead(1, 22050, 8, 22050), 44 + 22050);
  ASSERT_TRUE(length.has_value());
  EXPECT_EQ(length->Channels, 1);
  EXPECT_EQ(length->Frequency, 22050);
  EXPECT_EQ(length->Bytes, 44100) << "counted as 16-bit samples";
  EXPECT_EQ(LengthOfSound(WaveHead(2, 44100, 16, 1000000), 44 + 4000)->Bytes, 4000) << "a file that was cut off";
}

TEST(SoundLength, OfOtherFilesIsWhatTheirSizeComesTo) {
  EXPECT_EQ(LengthOfSound("OggS", 16000)->Bytes, 44100 * 4);
  EXPECT_EQ(LengthOfSound("ID3\x03", 32000)->Bytes, 2 * 44100 * 4);
  EXPECT_TRUE(LengthOfSound("\xFF\xFB", 16000).has_value());
}

TEST(SoundLength, ThereIsNoneOfWhatIsNoSound) {
  for (const std::string text : {"", "R", "RIFF", "MThd", "RIFF1234AVI ", "\xFF"})
    EXPECT_FALSE(LengthOfSound(text, 1000).has_value()) << text;
  EXPECT_FALSE(LengthOfSound(WaveHead(1, 0, 16, 100), 144).has_value());
  const std::string head = WaveHead(1, 22050, 16, 100);
  for (std::size_t cut = 0; cut < head.size(); ++cut) EXPECT_FALSE(LengthOfSound(head.substr(0, cut), 0).has_value());
}

}  // namespace
}  // namespace corvid
