// SPDX-License-Identifier: GPL-3.0-or-later
#include "sound/sound.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "core/text.h"
#include "core/trap.h"

namespace corvid {

namespace {

constexpr const char* NoDevice = "Unable to initialize DirectSound - sound card may not be present";

}  // namespace

int16 PriorityOfFlags(int16 DSFlags) {
  if ((DSFlags & playflag::Priority3) != 0) return 3;
  if ((DSFlags & playflag::Priority2) != 0) return 2;
  if ((DSFlags & playflag::Priority1) != 0) return 1;
  return (DSFlags & playflag::PriorityLowest) != 0 ? int16{-1} : int16{0};
}

Sound::Sound(OptionsState& options, Platform& platform, Upcalls& upcalls, RandomNumber random)
    : options_(options),
      platform_(platform),
      upcalls_(upcalls),
      random_(random ? std::move(random) : Chance()),
      starts_(LastHandle),
      SoundBuffer(MostSoundBuffers),
      SoundSamples(MostSoundBuffers),
      SoundBuffer3D(MostSoundBuffers),
      SoundPriority(MostSoundBuffers),
      SoundName(MostSoundBuffers),
      SoundFormat(MostSoundBuffers),
      SoundDesc(MostSoundBuffers),
      NaturalFrequency(MostSoundBuffers),
      labels_(MostSoundBuffers) {}

Sound::~Sound() = default;

// One box at a time: a game that names missing files line by line while the player is away must not pile them up.
void Sound::Tell(const std::string& text, int16 flags, const std::string& title) {
  if (telling_) return;
  struct Telling {
    bool& flag;
    explicit Telling(bool& f) : flag(f) { flag = true; }
    ~Telling() { flag = false; }
    Telling(const Telling&) = delete;
    Telling& operator=(const Telling&) = delete;
  } const telling(telling_);
  upcalls_.prompter.MsgBox(text, flags, title);  // PUMP
}

void Sound::ReadSettings() {
  settings_ = {};
  const std::string path = options_.UserDataFolder + "sounds.ini";
  if (!platform_.files.FileExists(path)) return;
  settings_ = ReadSoundsIni(platform_.files.ReadWhole(path), [&](const std::string& line) {
    Tell("Error in sounds.ini file - unrecognized parameter in line " + line, box::OkOnly, "Corvid");
  });
}

void Sound::DSInit() {
  Trap trap{upcalls_.errors, "DSInit"};
  trap.Step([&] { ReadSettings(); });  // PUMP
  OggHandle.Resize(settings_.OggBuffers);
  for (auto* column : {&OggPaused, &OggHeld, &OggLoops}) column->Resize(settings_.OggBuffers);
  OggPriority.Resize(settings_.OggBuffers);
  OggName.Resize(settings_.OggBuffers);
  Mp3Control.Resize(settings_.Mp3Buffers);
  for (auto* column : {&Mp3Paused, &Mp3Held, &Mp3Loops}) column->Resize(settings_.Mp3Buffers);
  Mp3Priority.Resize(settings_.Mp3Buffers);
  Mp3Name.Resize(settings_.Mp3Buffers);
  Mp3Frequency.Resize(settings_.Mp3Buffers);
  const bool told = deviceMissing_;
  deviceMissing_ = !platform_.sounds.OpenSounds();
  listener_ = {1.0F, 3.4F};
  initialised_ = true;
  oggTick_ = false;  // Kept: also where the library is there, so that a streamed OGG never plays.
  // A line on the screen, not a question: a player with a braille display alone is not held up at each start.
  if (deviceMissing_ && !told) trap.Step([&] { platform_.face.Notice(NoDevice); });
}

// "#text" is spoken on the first channel, which is stopped before; "##text" silences all that Control does.
void Sound::SpeakPrefix(std::string& name) {
  if (!name.starts_with('#')) return;
  constexpr int16 typeOfProgram = -1;
  if (name.starts_with("##")) {
    upcalls_.speaker.StopSpeakingAll();
    name.erase(0, 1);
  }
  name.erase(0, 1);
  upcalls_.speaker.StopSpeaking(Channel::Incoming);
  upcalls_.speaker.Speak(name, typeOfProgram, Channel::Incoming);
}

int16 Sound::PlaySound(const std::string& waveFileIn, int32& Volume, int32 Frequency, int32 Pan, int32 StartPosition,
                       int16 DSFlags) {
  std::string name = waveFileIn;
  if (IsBlank(name)) return 0;
  SpeakPrefix(name);
  if (!ChooseNumbered(name, random_)) {
    Tell("Wildcard wave file must have 1 to 3 digit number after asterisk. File: " + name, box::OkOnly,
         "Error in PlaySound");
    return 0;
  }
  if (IsBlank(name)) return 0;
  return Route({Upper(name), name, Volume, Frequency, Pan, DSFlags}, Volume, StartPosition);
}

int16 Sound::Route(const Request& request, int32& Volume, int32 StartPosition) {
  Request played = request;
  switch (KindOfSound(played.Name)) {
    case SoundKind::Mp3:
      return PlayMP3Sound(played.Asked, Volume, played.Frequency, played.Pan, played.Flags);
    case SoundKind::StreamedOgg:
      return PlayOGGSound(played.Asked, Volume, played.Frequency, played.Pan, played.Flags);
    case SoundKind::Buffered:
      break;
  }
  played.Asked.resize(played.Name.size());
  return PlayBuffered(played, Volume, StartPosition);
}

// Where the file is, as the disk spells it; empty when it is nowhere.
std::string Sound::Locate(const std::string& name) const {
  const Files& files = platform_.files;
  if (name.find('\0') != std::string::npos) return {};
  if (IsWholePath(name)) return files.FileExists(name) ? files.Absolute(name) : std::string();
  return LocateAtHome(name);
}

std::string Sound::LocateAtHome(const std::string& name) const {
  const Files& files = platform_.files;
  if (name.find('\0') != std::string::npos) return {};
  for (const std::string& folder : {options_.SoundsFolder, options_.UserDataFolder})
    if (files.FileExists(folder + name)) return files.Absolute(folder + name);
  return {};
}

SoundLabel Sound::LabelOf(int16 handle, const std::string& path) const {
  const std::string home = platform_.files.Absolute(options_.SoundsFolder);
  const std::string folder = home.ends_with('/') ? home : home + "/";
  return {handle, path.starts_with(folder) ? path.substr(folder.size()) : path};
}

SoundPlayer* Sound::BufferOf(int16 Index) const {
  return Index >= 1 && Index <= MostSoundBuffers ? SoundBuffer[Index].get() : nullptr;
}

SoundPlayer* Sound::PlayerOf(int16 Index) const {
  if (Index >= FirstMp3)
    return Index - FirstMp3 < Mp3Control.UBound() ? Mp3Control[Index - FirstMp3 + 1].get() : nullptr;
  if (Index >= FirstOgg) return Index - FirstOgg < OggHandle.UBound() ? OggHandle[Index - FirstOgg + 1].get() : nullptr;
  return BufferOf(Index);
}

int64 Sound::StartOf(int16 Index) const {
  return Index >= 1 && Index <= LastHandle ? starts_[Index] : 0;
}

}  // namespace corvid
