// SPDX-License-Identifier: GPL-3.0-or-later
// The tour of the sounds as its player hears it: the shipped script and sounds with the real voices, rendered and
// listened to. CORVID_TOUR_WAV=FILE keeps what was heard as a sound file.
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "core/keys.h"
#include "platform/espeak/espeak_engine.h"
#include "platform/openal/mixer.h"
#include "running_program.h"

namespace corvid {
namespace {

const std::string Tree = CORVID_SOURCE_DIR "/share/";

std::string FileOfTree(const std::string& name) {
  std::ifstream file(Tree + name, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

// The sounds that the program ships stand in its data folder, which is in memory here.
class ShippedSounds : public SoundOutput {
 public:
  explicit ShippedSounds(SoundOutput& real) : real_(real) {}
  bool OpenSounds() override { return real_.OpenSounds(); }
  std::string Problem() const override { return real_.Problem(); }
  std::shared_ptr<const SoundData> Load(const std::string& path, std::string& error) override {
    return real_.Load(InTree(path), error);
  }
  std::unique_ptr<SoundPlayer> CreatePlayer(const std::shared_ptr<const SoundData>& data, bool inBackground,
                                            const SoundLabel& label) override {
    return real_.CreatePlayer(data, inBackground, label);
  }
  std::unique_ptr<SoundPlayer> CreateStreamed(const std::string& path, bool inBackground, const SoundLabel& label,
                                              std::string& error) override {
    return real_.CreateStreamed(InTree(path), inBackground, label, error);
  }
  void SetFocused(bool focused) override { real_.SetFocused(focused); }

 private:
  static std::string InTree(const std::string& path) { return Tree + "Sounds" + path.substr(path.rfind('/')); }
  SoundOutput& real_;
};

struct Stretch {
  std::vector<float> left;
  std::vector<float> right;

  static double Level(const std::vector<float>& side, std::size_t from = 0) {
    double sum = 0;
    for (std::size_t i = from; i < side.size(); ++i) sum += static_cast<double>(side[i]) * static_cast<double>(side[i]);
    return from >= side.size() ? 0 : std::sqrt(sum / static_cast<double>(side.size() - from));
  }
  double Level() const { return std::max(Level(left), Level(right)); }
  double Difference() const {
    std::vector<float> difference(left.size());
    for (std::size_t i = 0; i < left.size(); ++i) difference[i] = right[i] - left[i];
    return Level(difference);
  }
};

class TourSound : public testing::Test {
 protected:
  TourSound() {
    SpeechState speech = OwnVoices();
    speech.VoicePriority[Channel::User] = 2;  // over the top of others
    speech.NotInterruptedByControl[Channel::User] = 1;
    PutStartFiles(memory.files, speech);
    memory.files.Put("/data/examples/tour.set", FileOfTree("examples/tour.set"));
    for (const char* name : {"music.wav", "hit.wav", "miss.wav"})
      memory.files.Put(std::string("/data/Sounds/") + name, FileOfTree(std::string("Sounds/") + name));
  }
  void SetUp() override {
    ASSERT_TRUE(corvid.Start({.DataFolder = "/data", .Connect = {}, .PracticePort = {}}));
    Do("#MUD bob Aard aard.example 4000 Bob secret");
    Do("#CONNECT bob");
    ASSERT_TRUE(memory.sockets.Connected(1));
    Do("#LOAD examples/tour.set");
    HearToTheEnd();
  }
  void TearDown() override {
    if (const char* name = std::getenv("CORVID_TOUR_WAV")) Keep(name);
  }

  void Do(const std::string& line) { TypeLine(corvid, line); }
  void Game(const std::string& line) { memory.sockets.Receive(1, line + "\r\n"); }
  void TapControl() {
    corvid.keyboard.KeyDown(keycode::Control, ControlBit);
    corvid.keyboard.KeyUp(keycode::Control, 0);
  }

  void Render(Stretch& stretch) {
    const std::vector<float> both = mixer.Render(Period);
    for (std::size_t i = 0; i + 1 < both.size(); i += 2) {
      stretch.left.push_back(both[i]);
      stretch.right.push_back(both[i + 1]);
    }
    heard.insert(heard.end(), both.begin(), both.end());
  }
  Stretch Hear(double seconds) {
    Stretch stretch;
    while (static_cast<double>(stretch.left.size()) < seconds * VoiceSampleRate) {
      Render(stretch);
      if (!engine.Idle()) std::this_thread::sleep_for(std::chrono::microseconds(500));  // the voices' thread works
    }
    return stretch;
  }
  // What is heard until no voice has anything more to say.
  Stretch HearToTheEnd() {
    Stretch stretch;
    const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (!engine.Idle() && std::chrono::steady_clock::now() < limit) {
      Render(stretch);
      std::this_thread::sleep_for(std::chrono::microseconds(500));
    }
    EXPECT_TRUE(engine.Idle());
    return stretch;
  }

  void Keep(const std::string& name) const {
    const auto number = [](std::uint32_t value, int bytes) {
      std::string text;
      for (int i = 0; i < bytes; ++i) text += static_cast<char>(value >> (8 * i) & 0xFF);
      return text;
    };
    const auto rate = static_cast<std::uint32_t>(VoiceSampleRate);
    const auto size = static_cast<std::uint32_t>(heard.size() * 2);
    std::ofstream file(name, std::ios::binary);
    file << "RIFF" << number(36 + size, 4) << "WAVEfmt " << number(16, 4) << number(1, 2) << number(2, 2)
         << number(rate, 4) << number(rate * 4, 4) << number(4, 2) << number(16, 2) << "data" << number(size, 4);
    for (const float sample : heard) {
      const auto value = static_cast<int16>(std::lround(std::max(-1.0F, std::min(1.0F, sample)) * 32767.0F));
      file << number(static_cast<std::uint32_t>(static_cast<std::uint16_t>(value)), 2);
    }
  }

  static constexpr std::size_t Period = 256;
  std::vector<float> heard;
  MemoryPlatform memory;
  OpenAlMixer mixer{MixerSettings{.loopback = true, .loopbackChannels = 2}};
  ShippedSounds sounds{mixer};
  EspeakEngine engine{mixer};
  Platform inMemory = memory.All();
  Corvid corvid{{inMemory.clock, inMemory.events, inMemory.timers, inMemory.sockets, inMemory.files, inMemory.places,
                 inMemory.settings, engine, inMemory.screenReader, inMemory.face, sounds}};
};

TEST_F(TourSound, IsHeardAsItIsMeant) {
  // Music in the middle, longer than its file, and the same again from the first sample.
  Do("tour");
  HearToTheEnd();
  const Stretch music = Hear(15);
  ASSERT_GT(music.Level(), 0.002);
  EXPECT_LT(music.Difference(), 1e-4);
  constexpr std::size_t loop = 148176;  // samples of music.wav, 6.72 s
  double worst = 0;
  for (std::size_t i = 0; i + loop < music.left.size(); ++i)
    worst = std::max(worst, std::fabs(static_cast<double>(music.left[i]) - static_cast<double>(music.left[i + loop])));
  EXPECT_LT(worst, 1e-3) << "the second round is the first one again";

  // The player's blow on the right, the foe's on the left; voice and music stay in the middle.
  Game("You hit the rat for 3.");
  const Stretch mine = Hear(0.3);
  EXPECT_GT(mine.Difference(), 0.01);
  EXPECT_GT(Stretch::Level(mine.right), Stretch::Level(mine.left));
  HearToTheEnd();
  Game("The rat bites you for 2.");
  const Stretch theirs = Hear(0.3);
  EXPECT_GT(theirs.Difference(), 0.01);
  EXPECT_GT(Stretch::Level(theirs.left), Stretch::Level(theirs.right));
  HearToTheEnd();
  EXPECT_LT(Hear(0.3).Difference(), 1e-4) << "no blow sounds on";

  // A line of a channel, in the voice for scripts, over the music.
  Game("[chat] Linnet: good evening to all of you at the well");
  EXPECT_GT(HearToTheEnd().Level(), 2 * music.Level());

  // Control: the game's voice is cut off; the voice for scripts and the music go on.
  Game("A long corridor leads past many doors, and at its end a lamp is burning in the draught of an open window.");
  Hear(0.5);
  EXPECT_FALSE(engine.Idle());
  TapControl();
  Hear(0.1);
  EXPECT_TRUE(engine.Idle()) << "the game's voice";
  Game("[chat] Linnet: good evening to all of you, wherever you are");
  Hear(0.5);
  TapControl();
  Hear(0.1);
  EXPECT_FALSE(engine.Idle()) << "the voice for scripts";
  HearToTheEnd();
  EXPECT_NEAR(Hear(7).Level(), music.Level(), 0.2 * music.Level());

  Do("endtour");
  HearToTheEnd();
  Hear(0.1);
  EXPECT_EQ(Hear(1).Level(), 0.0);
}

}  // namespace
}  // namespace corvid
