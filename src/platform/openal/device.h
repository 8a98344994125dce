// SPDX-License-Identifier: GPL-3.0-or-later
// Opening the sound device, and making its context the calling thread's own for a while.
#pragma once

#define AL_ALEXT_PROTOTYPES
#include <AL/al.h>
#include <AL/alc.h>
#include <AL/alext.h>

#include <chrono>
#include <memory>
#include <string>

namespace corvid {

// How many sources can play at once: a sound needs two, a voice one.
inline constexpr ALCint SourcesWanted = 301;

// Asks the library for short periods, for two channels, for a clean change of pitch, and for silence on the terminal.
// Nothing that the player has set is changed.
void PrepareLibrary();

// A device on its way, opened by a thread of its own from the construction on. Empty name: the default device.
class DeviceOpening {
 public:
  explicit DeviceOpening(const std::string& name);
  ~DeviceOpening();  // a driver that hangs is left behind, with its thread
  DeviceOpening(const DeviceOpening&) = delete;
  DeviceOpening& operator=(const DeviceOpening&) = delete;

  bool Finished(std::chrono::milliseconds limit);  // waits that long at most
  ALCdevice* Take();                               // the caller's own from now on; nullptr: there is none

 private:
  struct Shared;
  std::shared_ptr<Shared> shared_;
};

// The named device, or nullptr: none exists, or it did not answer within the limit. problem then says which.
ALCdevice* OpenDevice(const std::string& name, std::chrono::milliseconds limit, std::string& problem);

// Lets go of a device that is gone, with all that was made in it. Its driver may hang, so nobody waits.
void AbandonDevice(ALCdevice* device, ALCcontext* context);

// The library acts on the calling thread's context. Every routine takes it for as long as it needs it, so that no
// thread keeps a context that may be gone.
class ContextScope {
 public:
  explicit ContextScope(ALCcontext* context) { alcSetThreadContext(context); }
  ~ContextScope() { alcSetThreadContext(nullptr); }
  ContextScope(const ContextScope&) = delete;
  ContextScope& operator=(const ContextScope&) = delete;
};

}  // namespace corvid
