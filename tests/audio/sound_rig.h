// SPDX-License-Identifier: GPL-3.0-or-later
// Sound files made for a test, and what is heard of them.
#pragma once

#include <gtest/gtest.h>
#include <sndfile.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "platform/openal/mixer.h"

namespace corvid {

inline constexpr double Pi = 3.14159265358979;

// Left and right, of each frame.
using Frames = std::vector<std::array<int16, 2>>;

inline int16 CodeOf(float sample) {
  return static_cast<int16>(std::lround(sample * 32768.0F));
}

// Never zero and no two neighbours alike, and different on both sides.
inline Frames RampFrames(std::size_t count, int16 first = 1) {
  Frames frames(count);
  for (std::size_t i = 0; i < count; ++i) {
    const auto value = static_cast<int16>(first + static_cast<int>(i % 30011));
    frames[i] = {value, static_cast<int16>(-value)};
  }
  return frames;
}

inline Frames SineFrames(double hertz, int rate, std::size_t count, double amplitude = 0.5) {
  Frames frames(count);
  for (std::size_t i = 0; i < count; ++i) {
    const double angle = 2 * Pi * hertz * static_cast<double>(i) / rate;
    const auto value = static_cast<int16>(std::lround(32767 * amplitude * std::sin(angle)));
    frames[i] = {value, value};
  }
  return frames;
}

// A folder of the test's own.
class SoundFolder {
 public:
  SoundFolder() : folder_(std::filesystem::temp_directory_path() / ("corvid-sounds-" + std::to_string(getpid()))) {
    std::filesystem::create_directories(folder_);
  }
  ~SoundFolder() { std::filesystem::remove_all(folder_); }
  SoundFolder(const SoundFolder&) = delete;
  SoundFolder& operator=(const SoundFolder&) = delete;

  std::string Path(const std::string& name) const { return (folder_ / name).string(); }
  std::string WriteBytes(const std::string& name, const std::string& bytes) const {
    std::ofstream(Path(name), std::ios::binary) << bytes;
    return Path(name);
  }
  // channels 1 takes the left side; above 2 the further channels are silent.
  std::string Write(const std::string& name, const Frames& frames, int channels, int rate,
                    int format = SF_FORMAT_WAV | SF_FORMAT_PCM_16) const {
    SF_INFO info{};
    info.samplerate = rate;
    info.channels = channels;
    info.format = format;
    SNDFILE* file = sf_open(Path(name).c_str(), SFM_WRITE, &info);
    EXPECT_NE(file, nullptr) << name << ": " << sf_strerror(nullptr);
    if (file == nullptr) return Path(name);
    constexpr std::size_t Piece = 4096;  // an encoder of the library takes no more than so much at once
    for (std::size_t at = 0; at < frames.size(); at += Piece) {
      const std::size_t count = std::min(Piece, frames.size() - at);
      std::vector<int16> samples(count * static_cast<std::size_t>(channels));
      for (std::size_t i = 0; i < count; ++i) {
        for (std::size_t side = 0; side < static_cast<std::size_t>(std::min(channels, 2)); ++side) {
          samples[i * static_cast<std::size_t>(channels) + side] = frames[at + i][side];
        }
      }
      EXPECT_EQ(WriteFrames(file, samples, static_cast<sf_count_t>(count), format), static_cast<sf_count_t>(count));
    }
    sf_close(file);
    return Path(name);
  }

 private:
  // As whole numbers for whole numbers, so that they come back as they are; as fractions for the others.
  static sf_count_t WriteFrames(SNDFILE* file, const std::vector<int16>& samples, sf_count_t count, int format) {
    const int coding = format & SF_FORMAT_SUBMASK;
    const bool whole = coding != SF_FORMAT_MPEG_LAYER_III && coding != SF_FORMAT_FLOAT && coding != SF_FORMAT_DOUBLE;
    if (whole) return sf_writef_short(file, samples.data(), count);
    std::vector<float> fractions;
    for (const int16 sample : samples) fractions.push_back(static_cast<float>(sample) / 32768.0F);
    return sf_writef_float(file, fractions.data(), count);
  }
  std::filesystem::path folder_;
};

inline bool WaitFor(const std::function<bool()>& condition) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return true;
}

// A stereo device whose sound is looked at.
class SoundRig : public ::testing::Test {
 protected:
  static constexpr int Rate = 44100;
  explicit SoundRig(MixerSettings settings = {.loopback = true, .loopbackRate = Rate, .loopbackChannels = 2})
      : mixer(std::move(settings)) {}
  void SetUp() override { ASSERT_TRUE(mixer.OpenSounds()) << mixer.Problem(); }

  std::shared_ptr<const SoundData> LoadFrames(const Frames& frames, int channels = 2, int rate = Rate) {
    std::string error;
    auto data = mixer.Load(folder.Write("test.wav", frames, channels, rate), error);
    EXPECT_NE(data, nullptr) << error;
    return data;
  }
  std::unique_ptr<SoundPlayer> Player(const std::shared_ptr<const SoundData>& data, bool inBackground = false) {
    auto player = mixer.CreatePlayer(data, inBackground, {});
    EXPECT_NE(player, nullptr);
    return player;
  }
  std::unique_ptr<SoundPlayer> Streamed(const std::string& path, bool inBackground = false) {
    std::string error;
    auto player = mixer.CreateStreamed(path, inBackground, {}, error);
    EXPECT_NE(player, nullptr) << error;
    return player;
  }
  Frames Render(std::size_t count) {
    const std::vector<float> samples = mixer.Render(count);
    Frames frames(count);
    for (std::size_t i = 0; i < count; ++i) frames[i] = {CodeOf(samples[2 * i]), CodeOf(samples[2 * i + 1])};
    return frames;
  }
  // Root mean square of both sides over the next frames, full scale being 1.
  std::array<double, 2> Level(std::size_t count) {
    const std::vector<float> samples = mixer.Render(count);
    std::array<double, 2> sum{};
    for (std::size_t i = 0; i < samples.size(); ++i) sum[i % 2] += static_cast<double>(samples[i]) * samples[i];
    return {std::sqrt(sum[0] / static_cast<double>(count)), std::sqrt(sum[1] / static_cast<double>(count))};
  }

  SoundFolder folder;
  OpenAlMixer mixer;
};

}  // namespace corvid
