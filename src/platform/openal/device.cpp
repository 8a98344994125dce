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

namespace {

void Close(const OpenedDevice& opened) {
  if (opened.context != nullptr) alcDestroyContext(opened.context);
  if (opened.device != nullptr) alcCloseDevice(opened.device);
}

}  // namespace

// Shared with the thread that opens: it may outlive the one who waits.
struct DeviceOpening::Shared {
  std::mutex mutex;
  std::condition_variable done;
  bool finished = false;
  bool abandoned = false;
  OpenedDevice opened;
  std::string problem;

  void Open(const std::string& name, const std::vector<ALCint>& attributes) {
    OpenedDevice made;
    made.device = alcOpenDevice(name.empty() ? nullptr : name.c_str());
    std::string why =
        name.empty() ? "No sound card or sound system was found." : "The sound device \"" + name + "\" was not found.";
    if (made.device != nullptr) {
      made.context = alcCreateContext(made.device, attributes.data());
      why = "The sound device was found but cannot be used.";
    }
    if (made.context == nullptr) {
      Close(made);
      made = {};
    }
    const std::lock_guard lock(mutex);
    if (abandoned) {
      Close(made);
      return;
    }
    opened = made;
    problem = why;
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
      "[general]\nperiod_size = 256\nchannels = stereo\nhrtf = false\nresampler = bsinc12\n";
  const int file = memfd_create("corvid-alsoft", MFD_CLOEXEC);
  if (file < 0) return;
  if (write(file, configuration.data(), configuration.size()) != static_cast<ssize_t>(configuration.size())) return;
  setenv("ALSOFT_CONF", ("/proc/self/fd/" + std::to_string(file)).c_str(), 0);
}

struct SideThreads::Shared {
  std::mutex mutex;
  std::condition_variable ended;
  int running = 0;
};

SideThreads::SideThreads() : shared_(std::make_shared<Shared>()) {}
SideThreads::~SideThreads() = default;

void SideThreads::Run(std::function<void()> work) {
  {
    const std::lock_guard lock(shared_->mutex);
    ++shared_->running;
  }
  std::thread([shared = shared_, work = std::move(work)] {
    work();
    const std::lock_guard lock(shared->mutex);
    --shared->running;
    shared->ended.notify_all();
  }).detach();
}

void SideThreads::Wait(std::chrono::milliseconds limit) {
  std::unique_lock lock(shared_->mutex);
  shared_->ended.wait_for(lock, limit, [this] { return shared_->running == 0; });
}

DeviceOpening::DeviceOpening(SideThreads& threads, const std::string& name, const std::vector<ALCint>& attributes)
    : threads_(threads), shared_(std::make_shared<Shared>()) {
  threads_.Run([shared = shared_, name, attributes] { shared->Open(name, attributes); });
}

DeviceOpening::~DeviceOpening() {
  const std::lock_guard lock(shared_->mutex);
  shared_->abandoned = true;
  AbandonDevice(threads_, shared_->opened);
}

bool DeviceOpening::Finished(std::chrono::milliseconds limit) {
  std::unique_lock lock(shared_->mutex);
  return shared_->done.wait_for(lock, limit, [this] { return shared_->finished; });
}

OpenedDevice DeviceOpening::Take() {
  const std::lock_guard lock(shared_->mutex);
  return std::exchange(shared_->opened, {});
}

std::string DeviceOpening::Problem() const {
  const std::lock_guard lock(shared_->mutex);
  return shared_->finished ? shared_->problem : "The sound system does not answer.";
}

void AbandonDevice(SideThreads& threads, const OpenedDevice& opened) {
  if (opened.device != nullptr) threads.Run([opened] { Close(opened); });
}

}  // namespace corvid
