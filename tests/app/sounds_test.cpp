// SPDX-License-Identifier: GPL-3.0-or-later
// Sounds in the whole program: from its start to its end.
#include <fcntl.h>
#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "platform/qt/files.h"
#include "running_program.h"
#include "sessions/sound_lines.h"
#include "support_upcalls.h"

namespace corvid {
namespace {

TEST(ProgramSounds, AreReadyBeforeTheStartScript) {
  RunningProgram run;
  run.memory.PutSound("/data/Sounds/hello.wav", 1000);
  run.memory.files.Put("/data/sounds.ini", "SOUND BUFFERS=20\r\n");
  run.memory.files.Put("/data/start.set", "#PLAY hello.wav 50\r\n");
  ASSERT_TRUE(run.Start());
  EXPECT_EQ(run.corvid.sound.SoundBuffers(), 20);
  const Texts heard = run.memory.effects.Of("sound");
  ASSERT_EQ(heard.size(), 1u);
  EXPECT_NE(heard[0].find("hello.wav -1500 0 22050 once background"), std::string::npos);
}

TEST(ProgramSounds, AMissingDeviceDoesNotKeepThePlayerOut) {
  RunningProgram run;
  run.memory.sounds.Works = false;
  ASSERT_TRUE(run.Start());
  EXPECT_EQ(run.Asked().size(), 0u);
  EXPECT_EQ(run.memory.effects.Of("notice").size(), 1u);
  run.Do("#PLAY x.wav");
  EXPECT_TRUE(run.memory.face.MainShown());
}

TEST(ProgramSounds, AStreamedOggEndsTheProgramWithEverythingSaved) {
  RunningProgram run;
  run.StartAndConnect(charflag::SimpleControl | charflag::KeepVariables);
  run.Define("gold", "15");
  run.memory.face.Will("Ok");
  run.Do("#PLAY tune.ogg");
  EXPECT_TRUE(run.Ended());
  EXPECT_FALSE(run.memory.sockets.Connected(1));
  EXPECT_NE(run.Read("/data/Aard/bob-var.set").find("gold"), std::string::npos);
  const Texts asked = run.Asked();
  ASSERT_FALSE(asked.empty());
  EXPECT_NE(asked[0].find("OGG DLL is missing."), std::string::npos);
}

TEST(ProgramSounds, MusicGoesOnWithoutTheScript) {
  RunningProgram run;
  run.memory.PutSound("/data/Sounds/tune.mp3", 1000);
  ASSERT_TRUE(run.Start());
  run.Do("#PLAYLOOP tune.mp3");
  run.memory.loop.Pass(3000);
  EXPECT_GE(run.memory.effects.Of("sound").size(), 3u);
  run.Do("#PC 0 STOP");
  run.memory.effects.Clear();
  run.memory.loop.Pass(3000);
  EXPECT_TRUE(run.memory.effects.Of("sound").empty());
}

TEST(ProgramSounds, SoundLinesOfTheGameArePlayed) {
  RunningProgram run;
  run.memory.PutSound("/data/Sounds/hit.wav", 1000);
  run.StartAndConnect(0);
  run.memory.sockets.Receive(1, "!!SOUND(hit.wav V=60 L=1)\r\nYou hit the rat.\r\n");
  const Texts heard = run.memory.effects.Of("sound");
  ASSERT_EQ(heard.size(), 1u);
  EXPECT_NE(heard[0].find("hit.wav -1200"), std::string::npos);
}

// Sound lines over a real folder.
TEST(ProgramSounds, AStormOfSoundLinesListsTheFolderOnce) {
  std::string pattern = (std::filesystem::temp_directory_path() / "corvid-storm-XXXXXX").string();
  const std::string folder = std::string(mkdtemp(pattern.data())) + "/";
  MemoryPlatform memory;
  for (const char* name : {"Hit1.wav", "hit2.wav", "Song.mp3"}) {
    std::ofstream(folder + name) << "x";
    memory.sounds.Put(folder + name, {44100, 1, 22050});
  }
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  const timespec before[] = {{now.tv_sec - 10, 0}, {now.tv_sec - 10, 0}};
  utimensat(AT_FDCWD, folder.c_str(), before, 0);
  PosixFiles disk{FolderLists([now] { return now; })};
  Platform platform{memory.clock,    memory.loop,   memory.loop,   memory.sockets, disk,         memory.places,
                    memory.settings, memory.speech, memory.speech, memory.face,    memory.sounds};
  OptionsState options;
  options.SoundsFolder = folder;
  options.UserDataFolder = folder;
  ScriptState script;
  RecordingFloors floors{memory.effects};
  Sound sound{options, platform, floors.upcalls};
  SoundLines lines{options, sound, platform};
  sound.DSInit();
  for (int i = 0; i < 500; ++i)
    for (const char* line : {"!!SOUND(HIT1.WAV)", "!!SOUND(hit*)", "!!MUSIC(SONG)", "!!SOUND(nosuch)", "!!MUSIC(no*)"})
      lines.msp(line);
  EXPECT_EQ(disk.Listings(), 1);
  EXPECT_EQ(memory.effects.Of("sound").size(), 50U);  // as many as may sound at once
  std::ofstream(folder + "New.wav") << "x";
  memory.sounds.Put(folder + "New.wav", {44100, 1, 22050});
  memory.loop.Pass(2000);
  memory.effects.Clear();
  lines.msp("!!SOUND(NEW)");
  EXPECT_EQ(memory.effects.Of("sound").size(), 1U) << "a new file is found at once";
  std::filesystem::remove_all(folder);
}

}  // namespace
}  // namespace corvid
