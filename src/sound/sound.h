// SPDX-License-Identifier: GPL-3.0-or-later
// All playing sound belongs to this object; everybody else knows handles. 0 is no sound, 1 to 100 are buffers that are
// decoded whole, 101 to 200 OGG files that would be streamed, 201 to 300 MP3 files. A handle that names nothing has no
// effect anywhere.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/table.h"
#include "core/upcalls.h"
#include "platform/platform.h"
#include "platform/sounds.h"
#include "script/options_state.h"
#include "sound/sound_name.h"
#include "sound/sounds_ini.h"

namespace corvid {

// Bits of DSFlags. Of the priorities the first that is set in this order counts; none of them is priority 0.
namespace playflag {
inline constexpr int16 Duplicate = 0x0001;  // never the loaded buffer of the same file
inline constexpr int16 Priority3 = 0x0002;  // never evicted
inline constexpr int16 PrepareOnly = 0x0004;
inline constexpr int16 Loop = 0x0008;
inline constexpr int16 Restart = 0x0020;  // the loaded buffer of the same file, even while it plays
inline constexpr int16 Priority2 = 0x0040;
inline constexpr int16 Priority1 = 0x0080;
inline constexpr int16 PriorityLowest = 0x0100;  // -1: evicted first
inline constexpr int16 NotStatic = 0x0200;
inline constexpr int16 ThreeD = 0x0400;
inline constexpr int16 OnlyOne = 0x0800;  // nothing while the file plays
inline constexpr int16 Cones = 0x1000;    // of a ThreeD sound: cone angles 0 and 360
inline constexpr int16 InBackground = 0x2000;
}  // namespace playflag

// What a buffer can do, as it was asked for when it was made.
namespace buffercan {
inline constexpr int32 ThreeD = 1, Pan = 2, Frequency = 4, Volume = 8, Static = 0x10, Software = 0x20,
                       GlobalFocus = 0x40;
}

struct WaveFormat {
  int16 FormatTag = 1;  // PCM
  int16 Channels = 2;
  int32 SamplesPerSecond = 22050;
  int32 BytesPerSecond = 88200;
  int16 BlockAlign = 4;
  int16 BitsPerSample = 16;
};

struct BufferDescription {
  int32 Flags = 0;  // of buffercan
  int64 BufferBytes = 0;
  WaveFormat Format;
  std::string Algorithm3D = "DS3DALG_DEFAULT";
};

// A 3D sound stands where the listener stands, so only its being one is heard: it has no pan.
struct Buffer3D {
  int16 InsideConeAngle = 360;
  int16 OutsideConeAngle = 360;
};

struct Listener3D {
  float DistanceFactor = 0;
  float RolloffFactor = 0;
};

class Sound {
 public:
  static constexpr int16 FirstOgg = 101;
  static constexpr int16 FirstMp3 = 201;
  static constexpr int16 LastHandle = 300;

  // random chooses numbered files and where eviction begins; without one, chance.
  Sound(OptionsState& options, Platform& platform, Upcalls& upcalls, RandomNumber random = {});
  ~Sound();
  Sound(const Sound&) = delete;
  Sound& operator=(const Sound&) = delete;

  // Reads "sounds.ini" and opens the device. What is wrong in the file is told in message boxes, a missing device in a
  // notice, once. The program runs on: sounds play in silence, and are heard as soon as there is a device. May pump
  // events.
  void DSInit();
  bool Initialised() const { return initialised_; }
  bool DeviceMissing() const { return deviceMissing_; }  // the player has been told, once
  int16 SoundBuffers() const { return settings_.SoundBuffers; }
  const SoundSettings& Settings() const { return settings_; }
  const Listener3D& Listener() const { return listener_; }

  // Handle, or 0. waveFileIn may begin with "#" (text to speak) or hold "*" and a number. A relative name is looked for
  // in the sounds folder, then in the user data folder. Volume in hundredths of a decibel, 0 down to -10000; for a
  // buffered sound the caller's variable is brought into that range. Frequency in hertz, below 1 the file's own.
  // StartPosition in bytes. A streamed OGG file ends the program. May pump events.
  int16 PlaySound(const std::string& waveFileIn, int32& Volume, int32 Frequency = 0, int32 Pan = 0,
                  int32 StartPosition = 0, int16 DSFlags = 0);
  // Loads a file into slot Index of the buffers. 1, or 0 when it is not there or cannot be loaded (there may be no such
  // slot); the latter is told.
  // May pump events.
  int16 OpenSound(int16 Index, const std::string& waveFileIn, int16 DSFlags);
  // The file is looked for in the folders of sounds alone, whatever its name is. One that is not there is told.
  int16 PlayOGGSound(const std::string& waveFileIn, int32 Volume, int32 Frequency, int32 Pan, int16 DSFlags);
  // A file that is not there is told.
  int16 PlayMP3Sound(const std::string& waveFileIn, int32 Volume, int32 Frequency, int32 Pan, int16 DSFlags);
  void PlayOpenedSound(int16 Index, int32 StartPosition, int16 DSFlags);
  void StopPlay(int16 Index);       // an OGG or MP3 can be resumed
  void DeleteSound(int16& Index);   // Index becomes 0
  void DeleteSound2(int16& Index);  // the same for buffers; above 100 only an OGG falls silent, and keeps its slot
  void KillAllSounds();             // Kept: spares the buffers
  void ResetSounds();               // from the beginning. May pump events.
  void ShutdownForm1();             // May pump events.
  bool IsPlaying(int16 Index);      // of an MP3 also while it is held before its end
  void SetVolume(int16 Index, int32 Volume);
  void SetPan(int16 Index, int32 Pan);
  void SetFrequency(int16 Index, int32 Frequency);
  void SetStartPosition(int16 Index);     // of a buffer: its start
  int32 GetFrequency(int16 Index) const;  // of a buffer; 0 of anything else
  void PauseAllOGGSounds();
  void UnPauseAllOGGSounds();
  void PauseAllMP3Sounds();
  void UnPauseAllMP3Sounds();
  void UnpauseOneOGG(int16 Index);
  void UnpauseOneMP3(int16 Index);
  void StopSoundQ() {}  // these three are part of the interface and have no effect
  void GetPositions() {}
  void DirectXEvent8_DXCallback(int32 /*eventid*/) {}

  // Counts the plays: a handle that now plays something else has another number than at its own start. 0: never used.
  int64 StartOf(int16 Index) const;
  // The OGG library's tick. DSInit leaves it off, and a streamed OGG needs it.
  void SetOggTick(bool on) { oggTick_ = on; }

  // --- the pools, for whoever shows or proves them ---
  const std::string& NameOf(int16 slot) const { return SoundName[slot]; }
  int16 PriorityOf(int16 slot) const { return SoundPriority[slot]; }
  const BufferDescription& DescriptionOf(int16 slot) const { return SoundDesc[slot]; }
  const std::optional<Buffer3D>& ThreeDOf(int16 slot) const { return SoundBuffer3D[slot]; }
  bool Loaded(int16 slot) const { return SoundBuffer[slot] != nullptr; }

 private:
  // A name as messages and tables have it, and as it was asked for, which is how the disk may spell it.
  struct Request {
    std::string Name;
    std::string Asked;
    int32 Volume;
    int32 Frequency;
    int32 Pan;
    int16 Flags;
  };
  // One of the two pools of streams.
  struct StreamPool {
    int16 First;  // handle of slot 1
    int16 Count;
    Table<std::unique_ptr<SoundPlayer>>& Player;
    Table<int16>& Priority;
    Table<char>& Paused;
    Table<std::string>& Name;
    Table<char>& Held;  // stopped before its end
    Table<char>& Loops;
  };
  struct StreamSlot;

  // sound.cpp
  void SpeakPrefix(std::string& name);
  int16 Route(const Request& request, int32& Volume, int32 StartPosition);
  void ReadSettings();
  void Tell(const std::string& text, int16 flags, const std::string& title);
  std::string Locate(const std::string& name) const;
  std::string LocateAtHome(const std::string& name) const;
  SoundLabel LabelOf(int16 handle, const std::string& path) const;

  // buffered.cpp
  int16 PlayBuffered(const Request& request, int32& Volume, int32 StartPosition);
  int16 FindMatch(const Request& request, int16& start);
  int16 Evict(int16 start);
  bool Fill(int16 slot, int16 match, const Request& request);
  bool DuplicateSoundBuffer(int16 from, int16 to);
  int16 Open(int16 slot, const std::string& name, const std::string& asked, int16 flags);
  int16 NotOpened(const std::string& name);
  int16 StartBuffer(int16 slot, const Request& request, int32& Volume, int32 StartPosition);
  void Make3D(int16 slot, int16 flags);
  void ClearBuffer(int16 slot);

  // streams.cpp
  StreamPool OggPool();
  StreamPool Mp3Pool();
  int16 ChooseStreamSlot(const StreamPool& pool);
  int16 PlayStream(const StreamPool& pool, const Request& request, const std::string& path);
  void ApplyTo(const StreamPool& pool, int16 handle, const Request& request);
  void EndWithoutOgg();
  bool FindStream(int16 Index, StreamSlot& slot);
  void DropStream(const StreamSlot& slot);
  void ToggleOgg(int16 Index);
  void RunStream(const StreamSlot& slot);
  void HoldStream(const StreamSlot& slot);

  SoundPlayer* BufferOf(int16 Index) const;
  SoundPlayer* PlayerOf(int16 Index) const;
  void Started(int16 handle) { starts_[handle] = ++startCount_; }

  OptionsState& options_;
  Platform& platform_;
  Upcalls& upcalls_;
  RandomNumber random_;
  SoundSettings settings_;
  Listener3D listener_;
  bool initialised_ = false;
  bool deviceMissing_ = false;
  bool oggTick_ = true;
  bool ending_ = false;
  bool telling_ = false;         // a box is open
  bool QuietFileErrors = false;  // nothing sets it
  int16 CurrentSlot = 0;         // the slot under treatment; not to be trusted over an event pump
  int64 startCount_ = 0;
  Table<int64> starts_;

  Table<std::unique_ptr<SoundPlayer>> SoundBuffer;
  Table<std::shared_ptr<const SoundData>> SoundSamples;  // shared by the duplicates of a file
  Table<std::optional<Buffer3D>> SoundBuffer3D;
  Table<int16> SoundPriority;
  Table<std::string> SoundName;
  Table<WaveFormat> SoundFormat;
  Table<BufferDescription> SoundDesc;
  Table<int32> NaturalFrequency;
  Table<SoundLabel> labels_;

  Table<std::unique_ptr<SoundPlayer>> OggHandle;
  Table<int16> OggPriority;
  Table<char> OggPaused;
  Table<std::string> OggName;
  Table<char> OggHeld;
  Table<char> OggLoops;

  Table<std::unique_ptr<SoundPlayer>> Mp3Control;  // also what the volume, pan and position of it are set by
  Table<int16> Mp3Priority;
  Table<char> Mp3Paused;
  Table<std::string> Mp3Name;
  Table<char> Mp3Held;
  Table<char> Mp3Loops;
  Table<int32> Mp3Frequency;  // the file's own
};

// Priority that the bits of DSFlags ask for.
int16 PriorityOfFlags(int16 DSFlags);

}  // namespace corvid
