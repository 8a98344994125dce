// SPDX-License-Identifier: GPL-3.0-or-later
// PLAY, PLAYLOOP and PC.
#include <algorithm>
#include <array>

#include "commands/command_call.h"
#include "commands/handlers.h"
#include "core/number.h"
#include "core/text.h"
#include "script/symbols.h"
#include "sound/music.h"
#include "sound/music_state.h"
#include "sound/sound.h"

namespace corvid {

namespace {

constexpr double FullVolume = 100;
constexpr int16 FirstMusic = 201;
constexpr int16 LastMusic = 210;  // Kept: "all sounds" ends here, though the engine has slots behind it.

// Hundredths of a decibel of a volume in percent, under the master volume.
int32 EngineVolume(const CommandCall& call, double volume) {
  const double master = Val(call.house.script.SystemValues[sysvar::VOLUME]);
  const int32 percent = ToInt32(master / 100 * (volume / 100) * 100);
  return (100 - percent) * -30;
}

double AskedVolume(const CommandCall& call) {
  if (call.count() < 2 || !IsNumeric(call.P[3])) return FullVolume;
  const double volume = Val(call.P[3]);
  return volume < 0 || volume > FullVolume ? FullVolume : volume;
}

int16 PlayLooped(CommandCall& call, const std::string& file, int32 volume) {
  const CommandHouse& house = call.house;
  const int16 handle = house.sound.PlaySound(file, volume, 0, 0, 0, playflag::Loop);  // PUMP
  if (handle <= Sound::FirstMp3 - 1) return handle;
  house.musicState = {handle, file, volume, 0, -1};
  house.script.SystemValues[sysvar::MP3LOOP] = std::to_string(handle);
  house.music.StartTimer2();
  return handle;
}

// Told, and the rest of the line goes on: a sound that is not there must not stop a script.
void ReportNotPlayed(CommandCall& call, const std::string& file) {
  const CommandHouse& house = call.house;
  if (house.platform.events.Ending()) return;
  house.upcalls.errors.ErrorReport("problem playing " + house.options.SoundsFolder + file, call.inlineText, 0,
                                   call.options);  // PUMP
}

// --- PC: what is done to the sound with this handle ---

struct ControlRequest {
  CommandCall& call;
  int16 handle;
  double value;
};

void Stop(ControlRequest& request) {
  const CommandHouse& house = request.call.house;
  int16& music = house.musicState.MusicHandle;
  if (request.handle > 0) {
    if (request.handle == music) music = 0;
    return house.sound.DeleteSound(request.handle);
  }
  const auto stop = [&](int16 handle) { house.sound.DeleteSound(handle); };
  for (int16 handle = 1; handle <= house.sound.SoundBuffers(); ++handle) stop(handle);
  for (int16 handle = FirstMusic; handle <= LastMusic; ++handle) stop(handle);
  if (music >= FirstMusic && music <= LastMusic) music = 0;  // or its keeper would start it again
}

void Volume(ControlRequest& request) {
  const CommandHouse& house = request.call.house;
  const double volume = std::clamp(request.value, 0.0, FullVolume);
  if (request.handle <= 0) {
    house.script.SystemValues[sysvar::VOLUME] = NumberText(volume);
    return;
  }
  const int32 engine = EngineVolume(request.call, volume);
  if (request.handle == house.musicState.MusicHandle) house.musicState.MusicVolume = engine;
  house.sound.SetVolume(request.handle, engine);
}

void Frequency(ControlRequest& request) {
  const CommandHouse& house = request.call.house;
  const int32 frequency = ToInt32(request.value);
  if (request.handle == house.musicState.MusicHandle) house.musicState.MusicFrequency = frequency;
  house.sound.SetFrequency(request.handle, frequency);
}

void Pan(ControlRequest& request) {
  const CommandHouse& house = request.call.house;
  const int32 pan = ToInt32(request.value);
  if (request.handle == house.musicState.MusicHandle) house.musicState.MusicPan = pan;
  house.sound.SetPan(request.handle, pan);
}

void IsPlaying(ControlRequest& request) {
  CommandCall& call = request.call;
  const std::string name = call.P[4];
  if (!std::all_of(name.begin(), name.end(), [](char c) { return IsLetter(c) || IsDigit(c); }))
    return call.fail("bad variable name in parameter 3");
  // Kept: the name has been found to be a number before, so only a variable whose name is one takes the answer.
  const bool playing = call.house.sound.IsPlaying(request.handle);
  call.house.symbols.AddVariable(name, playing ? "1" : "0", call.owner, call.ErrorDescription);
  if (!call.ErrorDescription.empty()) call.next = Flow::Report;
}

struct ControlRow {
  std::string_view Keyword;
  void (*Do)(ControlRequest& request);
};

constexpr std::string_view IsPlayingWord = "ISPLAYING";
constexpr std::array<ControlRow, 5> Controls{
    {{"STOP", Stop}, {"VOLUME", Volume}, {"FREQUENCY", Frequency}, {"PAN", Pan}, {IsPlayingWord, IsPlaying}}};

}  // namespace

void handler::Play(CommandCall& call) {
  if (call.checkOnly() || !ExpandParameters(call)) return;  // PUMP
  const CommandHouse& house = call.house;
  const std::string file = call.P[2];
  int32 volume = EngineVolume(call, AskedVolume(call));
  // Kept: by the letters typed, so that a shorter word plays once.
  const bool loop = Upper(call.P[1]).substr(1).starts_with("PLAYL");
  int16 handle = 0;
  if (loop) {
    handle = PlayLooped(call, file, volume);  // PUMP
  } else {
    const int16 flags = house.options.PlaySoundsOutsideCorvid ? playflag::InBackground : int16{0};
    handle = house.sound.PlaySound(file, volume, 0, 0, 0, flags);  // PUMP
  }
  if (handle == 0) ReportNotPlayed(call, file);  // PUMP
  house.script.SystemValues[sysvar::PLAYHANDLE] = std::to_string(handle);
}

void handler::PlayControl(CommandCall& call) {
  if (call.checkOnly()) return;
  if (!ExpandText(call, call.P[2]) || !ExpandText(call, call.P[3])) return;
  const std::string keyword = Upper(call.P[3]);
  const bool valued = call.count() > 2;
  if (valued && keyword != IsPlayingWord && !ExpandText(call, call.P[4])) return;
  if (!IsNumeric(call.P[2]) || (valued && !IsNumeric(call.P[4])))
    return call.fail("Parameters 2 and 4 must both be numeric");
  const auto row = std::find_if(Controls.begin(), Controls.end(), [&](const auto& c) { return c.Keyword == keyword; });
  if (row == Controls.end()) return call.fail("Invalid keyword " + call.P[3] + " in parameter 2");
  if (!valued) call.P[4].clear();
  ControlRequest request{call, ToInt16(Val(call.P[2])), Val(call.P[4])};
  row->Do(request);
}

}  // namespace corvid
