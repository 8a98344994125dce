// SPDX-License-Identifier: GPL-3.0-or-later
// Opening the sound device, and making its context the calling thread's own for a while.
#pragma once

#define AL_ALEXT_PROTOTYPES
#include <AL/al.h>
#include <AL/alc.h>
#include <AL/alext.h>

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace corvid {

// How many sources can play at once: a sound needs two, a voice one.
inline constexpr ALCint SourcesWanted = 301;

// Asks the library for short periods, for two channels, for a clean change of pitch, and for silence on the terminal.
// Nothing that the player has set is changed.
void PrepareLibrary();

// A device and the context in it that all is played in. Both nullptr: there is none.
struct OpenedDevice {
  ALCdevice* device = nullptr;
  ALCcontext* context = nullptr;
};

// Threads for what may hang, each for one piece of work; they outlive this object when they do hang.
class SideThreads {
 public:
  SideThreads();
  ~SideThreads();
  SideThreads(const SideThreads&) = delete;
  SideThreads& operator=(const SideThreads&) = delete;

  void Run(std::function<void()> work);
  // Waits that long at most until all have ended: the library goes down with the process, and must have nobody in it
  // by then.
  void Wait(std::chrono::milliseconds limit);

 private:
  struct Shared;
  std::shared_ptr<Shared> shared_;
};

// A device on its way, opened by a thread of its own from the construction on, since a driver or a sound system that
// hangs must hang nobody else. Empty name: the default device. The attributes are the context's.
class DeviceOpening {
 public:
  DeviceOpening(SideThreads& threads, const std::string& name, const std::vector<ALCint>& attributes);
  ~DeviceOpening();  // what hangs is left behind, with its thread
  DeviceOpening(const DeviceOpening&) = delete;
  DeviceOpening& operator=(const DeviceOpening&) = delete;

  bool Finished(std::chrono::milliseconds limit);  // waits that long at most
  OpenedDevice Take();                             // the caller's own from now on
  std::string Problem() const;                     // once it has finished without a device, for the player

 private:
  struct Shared;
  SideThreads& threads_;
  std::shared_ptr<Shared> shared_;
};

// Lets go of a device that is gone, with all that was made in it. Its driver may hang, so nobody waits.
void AbandonDevice(SideThreads& threads, const OpenedDevice& opened);

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
