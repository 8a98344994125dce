// SPDX-License-Identifier: GPL-3.0-or-later
// The settings file of the sound engine.
#include "sound/sounds_ini.h"
#include "sound/fixture.h"

namespace corvid {
namespace {

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

}  // namespace
}  // namespace corvid
