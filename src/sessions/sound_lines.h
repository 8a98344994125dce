// SPDX-License-Identifier: GPL-3.0-or-later
// Sound lines of game servers, "!!SOUND(name V=50 L=1)" and "!!MUSIC(...)": what a server may play, and no more. It
// names files of the player's sounds folder only, its sounds share the engine's slots with all others, and nothing
// waits.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/types.h"
#include "script/options_state.h"
#include "sound/sound_name.h"

namespace corvid {

class Files;
class Sound;
struct Platform;

class SoundLines {
 public:
  // random chooses among files that match; without one, chance.
  SoundLines(OptionsState& options, Sound& sound, Platform& platform, RandomNumber random = {});

  static bool IsSoundLine(std::string_view line);
  // Plays or stops what a sound line asks for; a name that is not there, or not in the folder, is passed over. May pump
  // events, and drops the lines that come meanwhile, except those that stop what plays.
  void msp(std::string_view l);

 private:
  // Where a name is looked for: a folder that ends in "/", and a file name that may hold "*" and "?".
  struct Place {
    std::string Folder;
    std::string Name;
  };
  struct Request {
    std::string Name;
    int32 Volume = 0;
    int16 Flags = 0;
  };

  static Request Read(std::string_view l);
  void Play(bool isSound, Request request);
  void StopAll();
  bool Find(const std::string& name, Place& place) const;
  bool FindIn(const std::string& name, Place& place) const;
  void SettleEnding(Place& place) const;
  std::string Choose(const Place& place) const;
  std::vector<std::string> Matches(const Place& place) const;
  bool Inside(const std::string& path) const;
  void Remember(int16 handle);

  OptionsState& options_;
  Sound& sound_;
  Platform& platform_;
  RandomNumber random_;
  std::vector<std::pair<int16, int64>> started_;  // handles, and which of their plays was ours
  bool busy_ = false;
};

}  // namespace corvid
