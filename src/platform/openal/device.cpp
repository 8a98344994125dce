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

namespace corvid {

namespace {

// Shared with the thread that opens: it may outlive the caller.
struct Opening {
  std::mutex mutex;
  std::condition_variable done;
  bool finished = false;
  bool abandoned = false;
  ALCdevice* device = nullptr;
};

void OpenInto(Opening& opening, const std::string& name) {
  ALCdevice* device = alcOpenDevice(name.empty() ? nullptr : name.c_str());
  const std::lock_guard lock(opening.mutex);
  if (opening.abandoned) {
    if (device != nullptr) alcCloseDevice(device);
    return;
  }
  opening.device = device;
  opening.finished = true;
  opening.done.notify_all();
}

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
  // The period can only be set by a configuration file. This one lives in memory, open as long as the program runs.
  constexpr std::string_view configuration = "[general]\nperiod_size = 256\n";
  const int file = memfd_create("corvid-alsoft", MFD_CLOEXEC);
  if (file < 0) return;
  if (write(file, configuration.data(), configuration.size()) != static_cast<ssize_t>(configuration.size())) return;
  setenv("ALSOFT_CONF", ("/proc/self/fd/" + std::to_string(file)).c_str(), 0);
}

ALCdevice* OpenDevice(const std::string& name, std::chrono::milliseconds limit, std::string& problem) {
  const auto opening = std::make_shared<Opening>();
  std::thread([opening, name] { OpenInto(*opening, name); }).detach();
  std::unique_lock lock(opening->mutex);
  if (!opening->done.wait_for(lock, limit, [&] { return opening->finished; })) {
    opening->abandoned = true;
    problem = "The sound system does not answer.";
    return nullptr;
  }
  if (opening->device == nullptr) {
    problem =
        name.empty() ? "No sound card or sound system was found." : "The sound device \"" + name + "\" was not found.";
  }
  return opening->device;
}

}  // namespace corvid
