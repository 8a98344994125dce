// SPDX-License-Identifier: GPL-3.0-or-later
// The device, all that is heard through it, and the thread that keeps it fed. A device that goes away (a headset is
// unplugged, the sound system ends) is replaced by a silent one in which everything runs on in time, until a real one
// is there again. The silent one is also the first where none is there yet.
#pragma once

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "platform/openal/device.h"
#include "platform/openal/mixer_settings.h"

namespace corvid {

class MemorySound;
class HalfBuffers;

// What is heard through the device. All calls come within a DeviceTurn.
class Audible {
 public:
  virtual ~Audible() = default;
  // Hands over what is due. Gives the time after which it must be called again, 0 when it need not.
  virtual std::chrono::milliseconds Feed() = 0;
  // The device is left, and all that was made in it goes with it. What plays is remembered.
  virtual void LeaveDevice() = 0;
  // Makes in the new device what is needed, and goes on where LeaveDevice found it.
  virtual void EnterDevice() = 0;
  virtual void FocusChanged() {}
};

// All but the constructor and Open is guarded by mutex.
struct DeviceCore {
  DeviceCore(MixerSettings settings, bool plugged);  // plugged, of the loopback: the device is there
  ~DeviceCore();
  DeviceCore(const DeviceCore&) = delete;
  DeviceCore& operator=(const DeviceCore&) = delete;

  // False when not even the silent device can be had. problem says why there is no real one; empty: there is.
  bool Open(std::string& problem);
  bool Found();  // a real device is or was there
  // False from the moment on in which the device went away until another one has been entered. What the library says
  // about what was playing then, that it has stopped, means nothing.
  bool Connected() const;
  std::chrono::nanoseconds Latency() const;  // from a sample's mixing to its being heard
  // Looks whether the device is gone or there again, and moves everything if so.
  void Watch();
  void Join(Audible& audible);
  void Leave(Audible& audible);
  void Hurry() { fed.notify_one(); }  // something must be fed sooner than the feeder expects
  // The sides of a sound as the device holds them, shared by all who play it. nullptr when there is no memory.
  std::shared_ptr<HalfBuffers> Halves(const MemorySound& sound);
  void SetFocused(bool focusedNow);
  std::vector<float> Render(std::size_t frames);
  void SetPlugged(bool plugged);

  const MixerSettings settings;
  std::mutex mutex;
  std::condition_variable fed;
  bool focused = true;
  ALCdevice* device = nullptr;
  ALCcontext* context = nullptr;

 private:
  using Clock = std::chrono::steady_clock;
  OpenedDevice OpenReal(std::string& problem);
  std::vector<ALCint> Attributes(bool silent) const;
  OpenedDevice OpenLoopback() const;
  void MoveTo(const OpenedDevice& next, bool silent);
  bool Gone() const;
  void LookForDevice();
  void RunSilently();
  std::chrono::milliseconds FeedAll();
  void Work();

  std::vector<Audible*> audibles_;
  std::vector<std::pair<const MemorySound*, std::weak_ptr<HalfBuffers>>> halves_;
  bool standIn_ = false;  // the device is the silent one; changed with both mutexes held
  bool told_ = false;     // the player knows that the device is gone
  bool found_ = false;
  bool plugged_;
  SideThreads sideThreads_;
  std::unique_ptr<DeviceOpening> opening_;  // of the device that is to come back
  Clock::time_point nextLook_;
  Clock::time_point silentUntil_;  // up to when the silent device has been mixed
  std::mutex rendering_;           // held while samples are rendered, and while the device changes
  bool ending_ = false;
  std::thread feeder_;
};

// The device for the calling thread alone.
class DeviceTurn {
 public:
  explicit DeviceTurn(DeviceCore& core) : lock_(core.mutex), scope_(core.context) {}

 private:
  std::lock_guard<std::mutex> lock_;
  ContextScope scope_;
};

}  // namespace corvid
