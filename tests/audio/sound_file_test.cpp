// SPDX-License-Identifier: GPL-3.0-or-later
// Reading sound files: every kind that players have, and what is no sound at all.
#include "platform/openal/sound_file.h"

#include <sys/stat.h>

#include "sound_rig.h"

namespace corvid {
namespace {

class SoundFiles : public ::testing::Test {
 protected:
  SoundSamples Read(const std::string& path) {
    std::string error;
    SoundSamples sound;
    const auto file = SoundFile::Open(path, error);
    EXPECT_NE(file, nullptr) << error;
    if (file == nullptr) return sound;
    EXPECT_TRUE(ReadAll(*file, sound, error)) << error;
    return sound;
  }
  std::string ErrorOf(const std::string& path) {
    std::string error;
    const auto data = mixer.Load(path, error);
    EXPECT_EQ(data, nullptr) << path;
    return error;
  }
  SoundFolder folder;
  OpenAlMixer mixer{MixerSettings{.loopback = true}};
};

TEST_F(SoundFiles, EveryKindIsRead) {
  struct Case {
    const char* name;
    int format;
    double off;  // how far a sample may be from what was written, of full scale
  };
  const Case cases[] = {
      {"pcm8.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_U8, 1.0 / 127},
      {"pcm16.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16, 0},
      {"pcm24.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_24, 0},
      {"pcm32.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_32, 0},
      {"float.wav", SF_FORMAT_WAV | SF_FORMAT_FLOAT, 1.0 / 32767},
      {"double.wav", SF_FORMAT_WAV | SF_FORMAT_DOUBLE, 1.0 / 32767},
      {"ms.wav", SF_FORMAT_WAV | SF_FORMAT_MS_ADPCM, 0.03},
      {"ima.wav", SF_FORMAT_WAV | SF_FORMAT_IMA_ADPCM, 0.03},
      {"ulaw.wav", SF_FORMAT_WAV | SF_FORMAT_ULAW, 0.02},
      {"a.flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_16, 0},
      {"a.ogg", SF_FORMAT_OGG | SF_FORMAT_VORBIS, 0.05},
      {"a.mp3", SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III, 0.05},
  };
  const Frames sine = SineFrames(441, 22050, 22050);
  for (const Case& c : cases) {
    for (const int channels : {1, 2}) {
      const SoundSamples sound = Read(folder.Write(c.name, sine, channels, 22050, c.format));
      EXPECT_EQ(sound.channels, channels) << c.name;
      EXPECT_EQ(sound.frequency, 22050) << c.name;
      // The blocks of the small formats are filled up at the end, an MP3 may have more of it.
      const std::size_t got = sound.samples.size() / static_cast<std::size_t>(channels);
      EXPECT_GE(got, sine.size()) << c.name;
      EXPECT_LE(got, sine.size() + 2400) << c.name;
      double worst = 0;
      for (std::size_t i = 200; i + 200 < std::min(got, sine.size()); ++i) {
        const double difference = sound.samples[i * static_cast<std::size_t>(channels)] - sine[i][0];
        worst = std::max(worst, std::abs(difference) / 32768);
      }
      EXPECT_LE(worst, c.off) << c.name << ", channels " << channels;
    }
  }
}

TEST_F(SoundFiles, FractionsBeyondFullScaleAreCutAndNoNumberIsSilence) {
  SF_INFO info{.frames = 0,
               .samplerate = 8000,
               .channels = 1,
               .format = SF_FORMAT_WAV | SF_FORMAT_FLOAT,
               .sections = 0,
               .seekable = 0};
  SNDFILE* file = sf_open(folder.Path("a.wav").c_str(), SFM_WRITE, &info);
  const float samples[] = {2.0F, -2.0F, 1.0F, -1.0F, NAN, INFINITY, -INFINITY, 0.5F};
  sf_write_float(file, samples, 8);
  sf_close(file);
  EXPECT_EQ(Read(folder.Path("a.wav")).samples,
            (std::vector<int16>{32767, -32768, 32767, -32768, 0, 32767, -32768, 16384}));
}

TEST_F(SoundFiles, MoreThanTwoChannelsAreMixedDown) {
  for (const int channels : {3, 4, 5, 6, 7, 8}) {
    const Frames ramp = RampFrames(500, 1000);
    const SoundSamples sound = Read(folder.Write("a.wav", ramp, channels, 44100));
    EXPECT_EQ(sound.channels, 2);
    ASSERT_EQ(sound.samples.size(), 1000U) << channels;
    const double share = sound.samples[0] / 1000.0;
    EXPECT_GT(share, 0.25) << channels;
    EXPECT_NEAR(sound.samples[999], -1499 * share, 2) << channels << ": both sides alike";
  }
  EXPECT_NE(ErrorOf(folder.Write("a.wav", RampFrames(500), 9, 44100)).find("9 channels"), std::string::npos);
}

std::string Number(std::uint32_t value, int bytes) {
  std::string text;
  for (int i = 0; i < bytes; ++i) text += static_cast<char>(value >> (8 * i) & 0xFF);
  return text;
}

std::string WavHeader(std::uint32_t channels, std::uint32_t rate, std::uint32_t bits, std::uint32_t dataBytes) {
  const std::uint32_t align = channels * bits / 8;
  return "RIFF" + Number(dataBytes + 36, 4) + "WAVEfmt " + Number(16, 4) + Number(1, 2) + Number(channels, 2) +
         Number(rate, 4) + Number(rate * align, 4) + Number(align, 2) + Number(bits, 2) + "data" + Number(dataBytes, 4);
}

TEST_F(SoundFiles, WhatIsNoSoundIsAnErrorWithItsReason) {
  struct Case {
    const char* name;
    std::string bytes;
    const char* error;  // a piece of it
  };
  const Case cases[] = {
      {"empty.wav", "", "The file is empty."},
      {"text.wav", "This is not a sound, just some words in a file that is called one.", "It is no WAV"},
      {"zeros.mp3", std::string(5000, '\0'), "It is no WAV"},
      {"header.wav", WavHeader(2, 44100, 16, 0), "It holds no sound that can be read."},
      {"riff.wav", "RIFF", "It cannot be read: "},
      {"cut.ogg", std::string("OggS\0\2\0\0\0\0\0\0\0\0", 14), "It cannot be read: "},
      {"rate.wav", WavHeader(1, 3, 16, 100) + std::string(100, 'x'), "sampling rate of 3 hertz"},
      {"fast.wav", WavHeader(1, 2'000'000'000, 16, 100) + std::string(100, 'x'), "hertz cannot be played"},
      {"none.wav", WavHeader(0, 44100, 16, 100) + std::string(100, 'x'), "Channel"},
      {"crowd.wav", WavHeader(1000, 44100, 16, 4000) + std::string(4000, 'x'), "channels"},
  };
  for (const Case& c : cases) {
    const std::string error = ErrorOf(folder.WriteBytes(c.name, c.bytes));
    EXPECT_NE(error.find(c.error), std::string::npos) << c.name << ": " << error;
  }
  EXPECT_EQ(ErrorOf(folder.Path("nothing.wav")), "The file does not exist or cannot be read.");
  EXPECT_EQ(ErrorOf(folder.Path("")), "This is not a file.");
  ASSERT_EQ(mkfifo(folder.Path("pipe.wav").c_str(), 0600), 0);
  EXPECT_EQ(ErrorOf(folder.Path("pipe.wav")), "This is not a file.") << "nor does it wait for a writer";
}

TEST_F(SoundFiles, ADamagedMp3IsReadInSilence) {
  const std::string path =
      folder.Write("a.mp3", SineFrames(441, 44100, 100'000), 2, 44100, SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III);
  std::ifstream file(path, std::ios::binary);
  std::string bytes{std::istreambuf_iterator<char>(file), {}};
  for (std::size_t i = 2000; i < bytes.size(); i += 97) bytes[i] = static_cast<char>(~bytes[i]);
  testing::internal::CaptureStderr();
  std::string error;
  SoundSamples sound;
  const auto damaged = SoundFile::Open(folder.WriteBytes("b.mp3", bytes), error);
  if (damaged != nullptr) ReadAll(*damaged, sound, error);
  const auto cut = SoundFile::Open(folder.WriteBytes("c.mp3", bytes.substr(0, 3000)), error);
  if (cut != nullptr) ReadAll(*cut, sound, error);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(SoundFiles, AHeaderThatPromisesTooMuchIsNotBelieved) {
  const SoundSamples sound = Read(folder.WriteBytes("a.wav", WavHeader(2, 44100, 16, 0xFFFFFF00) + "12345678"));
  EXPECT_EQ(sound.samples.size(), 4U) << "what is there is heard";
  EXPECT_LT(sound.samples.capacity(), 100'000U);
}

TEST_F(SoundFiles, ATruncatedFileIsHeardAsFarAsItGoes) {
  const Frames ramp = RampFrames(20'000);
  const std::string path = folder.Write("a.wav", ramp, 2, 44100);
  std::filesystem::resize_file(path, 44 + 4 * 10'000 + 3);
  const SoundSamples sound = Read(path);
  ASSERT_EQ(sound.samples.size(), 20'000U);
  EXPECT_EQ(sound.samples[19'998], ramp[9'999][0]);
}

TEST_F(SoundFiles, TooLongToBeLoadedIsAnErrorButCanBeStreamed) {
  // Hours of silence in a file without a byte on the disk.
  const std::string path = folder.WriteBytes("a.wav", WavHeader(2, 44100, 16, 2'000'000'000));
  std::filesystem::resize_file(path, 2'000'000'044);
  EXPECT_NE(ErrorOf(path).find("too long"), std::string::npos);
  ASSERT_TRUE(mixer.OpenSounds());
  std::string error;
  const auto player = mixer.CreateStreamed(path, false, {}, error);
  ASSERT_NE(player, nullptr) << error;
  player->Play(false);
  EXPECT_TRUE(player->IsPlaying());
}

TEST_F(SoundFiles, TheLimitIsExact) {
  const std::string path = folder.Write("a.wav", RampFrames(20'000), 2, 44100);
  std::string error;
  for (const std::size_t most : {80'000U, 79'999U}) {
    SoundSamples sound;
    const auto file = SoundFile::Open(path, error);
    ASSERT_NE(file, nullptr) << error;
    EXPECT_EQ(ReadAll(*file, sound, error, most), most == 80'000U) << error;
  }
}

TEST_F(SoundFiles, ZerosInFrontOfMusicAreForgiven) {
  const std::string path =
      folder.Write("a.mp3", SineFrames(441, 44100, 20'000), 2, 44100, SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III);
  std::ifstream file(path, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(file), {}};
  EXPECT_GT(Read(folder.WriteBytes("b.mp3", std::string(1000, '\0') + bytes)).samples.size(), 30'000U);
}

}  // namespace
}  // namespace corvid
