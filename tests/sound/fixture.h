// SPDX-License-Identifier: GPL-3.0-or-later
// The sound engine over a sound card in memory: what would be heard is read from the effects.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "platform/memory/memory_platform.h"
#include "script/script_state.h"
#include "sound/music.h"
#include "sound/sound.h"
#include "support_upcalls.h"

namespace corvid {

// Boxes are recorded as "flags|title|text", and OK is pressed.
class BoxRecorder : public SilentPrompter {
 public:
  explicit BoxRecorder(EffectLog& effects) : effects_(effects) {}
  int16 MsgBox(const std::string& text, int16 flags, const std::string& title) override {
    effects_.Add("box", std::to_string(flags) + "|" + title + "|" + text);
    if (OnBox) OnBox();
    return box::ResultOk;
  }
  std::function<void()> OnBox;

 private:
  EffectLog& effects_;
};

using Texts = std::vector<std::string>;

class SoundTest : public ::testing::Test {
 protected:
  SoundTest() {
    options.UserDataFolder = "/data/";
    options.SoundsFolder = "/data/Sounds/";
    memory.files.CreateFolder("/data/Sounds");
    for (const char* name : {"a.wav", "b.wav", "c.wav", "Door.WAV", "door1.wav", "door2.wav", "door3.wav", "tune.mp3"})
      memory.PutSound("/data/Sounds/" + std::string(name), 1000);
  }
  // Most tests begin with an engine that has started.
  void Init(const std::string& ini = "") {
    if (!ini.empty()) memory.files.Put("/data/sounds.ini", ini);
    sound.DSInit();
  }
  int16 Play(const std::string& name, int16 flags = 0) {
    int32 volume = 0;
    return sound.PlaySound(name, volume, 0, 0, 0, flags);
  }
  // Files "1.wav", "2.wav" and so on, each played with flags; the last handle.
  int16 PlayMany(int count, int16 flags = 0) {
    int16 handle = 0;
    for (int i = 1; i <= count; ++i) {
      const std::string name = std::to_string(i) + ".wav";
      memory.PutSound("/data/Sounds/" + name, 1000);
      handle = Play(name, flags);
    }
    return handle;
  }
  void Pass(int milliseconds) { memory.loop.Pass(milliseconds); }
  // Effects of a kind since the last call of this.
  Texts Take(const std::string& kind) {
    Texts texts = memory.effects.Of(kind);
    memory.effects.Clear();
    return texts;
  }
  Texts Heard() { return Take("sound"); }
  Texts Boxes() { return Take("box"); }

  MemoryPlatform memory;
  Platform platform = memory.All();
  OptionsState options;
  ScriptState script;
  RecordingRunner runner{memory.effects};
  RecordingErrors errors{memory.effects};
  RecordingSpeaker speaker{memory.effects};
  BoxRecorder prompter{memory.effects};
  RecordingScreens screens{memory.effects};
  RecordingJobs jobs{memory.effects};
  Upcalls upcalls{runner, errors, speaker, prompter, screens, jobs};
  int16 chance = 1;  // what is drawn, as far as it may be
  Sound sound{options, platform, upcalls, [this](int16 highest) { return std::min(chance, highest); }};
};

}  // namespace corvid
