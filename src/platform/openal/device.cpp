// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/openal/device.h"

#include <dlfcn.h>
#include <sys/mman.h>
#include <unistd.h>

#include <condition_variable>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <string_view>
#include <thread>
#include <utility>

namespace corvid {

// Shared with the thread that opens: it may outlive the one who waits.
struct DeviceOpening::Shared {
  std::mutex mutex;
  std::condition_variable done;
  bool finished = false;
  bool abandoned = false;
  ALCdevice* device = nullptr;

  void Open(const std::string& name) {
    ALCdevice* opened = alcOpenDevice(name.empty() ? nullptr : name.c_str());
    const std::lock_guard lock(mutex);
    if (abandoned) {
      if (opened != nullptr) alcCloseDevice(opened);
      return;
    }
    device = opened;
    finished = true;
    done.notify_all();
  }
};

namespace {

void IgnoreMessage(const char* /*file*/, int /*line*/, const char* /*routine*/, int /*error*/, const char* /*text*/,
                   ...) {}

// Without a sound card the system's sound library writes a dozen lines to the terminal, which a player at a text
// console would have to listen to. It is used behind our back, so it is reached softly.
void SilenceAlsa() {
  void* library = dlopen("libasound.so.2", RTLD_LAZY);
  if (library == nullptr) return;
  using SetHandler = int (*)(decltype(&IgnoreMessage));
  const auto setHandler = reinterpret_cast<SetHandler>(dlsym(library, "snd_lib_error_set_handler"));
  if (setHandler != nullptr) setHandler(IgnoreMessage);
}

}  // namespace

void PrepareLibrary() {
  SilenceAlsa();
  setenv("ALSOFT_LOGLEVEL", "0", 0);
  if (getenv("ALSOFT_CONF") != nullptr) return;
  // These can only be set by a configuration file. This one lives in memory, open as long as the program runs. On a
  // device of one channel the sides of a sound would have nowhere to go, so two are asked for everywhere; the sound
  // system below makes of them what it has.
  constexpr std::string_view configuration =
      "[general]\nperiod_size = 256\nchannels = stereo\nhrtf = false\nresampler = bsinc24\n";
  const int file = memfd_create("corvid-alsoft", MFD_CLOEXEC);
  if (file < 0) return;
  if (write(file, configuration.data(), configuration.size()) != static_cast<ssize_t>(configuration.size())) return;
  setenv("ALSOFT_CONF", ("/proc/self/fd/" + std::to_string(file)).c_str(), 0);
}

DeviceOpening::DeviceOpening(const std::string& name) : shared_(std::make_shared<Shared>()) {
  std::thread([shared = shared_, name] { shared->Open(name); }).detach();
}

DeviceOpening::~DeviceOpening() {
  const std::lock_guard lock(shared_->mutex);
  shared_->abandoned = true;
  if (shared_->device != nullptr) alcCloseDevice(shared_->device);
}

bool DeviceOpening::Finished(std::chrono::milliseconds limit) {
  std::unique_lock lock(shared_->mutex);
  return shared_->done.wait_for(lock, limit, [this] { return shared_->finished; });
}

ALCdevice* DeviceOpening::Take() {
  const std::lock_guard lock(shared_->mutex);
  return std::exchange(shared_->device, nullptr);
}

ALCdevice* OpenDevice(const std::string& name, std::chrono::milliseconds limit, std::string& problem) {
  DeviceOpening opening(name);
  if (!opening.Finished(limit)) {
    problem = "The sound system does not answer.";
    return nullptr;
  }
  ALCdevice* device = opening.Take();
  if (device == nullptr) {
    problem =
        name.empty() ? "No sound card or sound system was found." : "The sound device \"" + name + "\" was not found.";
  }
  return device;
}

void AbandonDevice(ALCdevice* device, ALCcontext* context) {
  if (device == nullptr) return;
  std::thread([device, context] {
    if (context != nullptr) alcDestroyContext(context);
    alcCloseDevice(device);
  }).detach();
}

}  // namespace corvid
