// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/openal/device_core.h"

#include <algorithm>
#include <utility>

#include "platform/openal/half_buffers.h"

namespace corvid {

namespace {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;

constexpr milliseconds OpenLimit{3000};
constexpr milliseconds EndLimit{1000};       // for devices that are still being opened or closed
constexpr milliseconds WatchInterval{500};   // for a device with nothing to play
constexpr milliseconds SilentInterval{10};   // between two turns of the silent device
constexpr milliseconds LookInterval{2000};   // for a device that may have come back
constexpr milliseconds LongestSilence{500};  // mixed at once, after the machine has slept
constexpr int SilentRate = 22050;

}  // namespace

DeviceCore::DeviceCore(MixerSettings settings_, bool plugged) : settings(std::move(settings_)), plugged_(plugged) {}

DeviceCore::~DeviceCore() {
  if (feeder_.joinable()) {
    {
      const std::lock_guard lock(mutex);
      ending_ = true;
    }
    fed.notify_one();
    feeder_.join();
  }
  if (context != nullptr) alcDestroyContext(context);
  if (device != nullptr) alcCloseDevice(device);
  opening_ = nullptr;
  sideThreads_.Wait(EndLimit);
}

std::vector<ALCint> DeviceCore::Attributes(bool silent) const {
  std::vector<ALCint> attributes{ALC_MONO_SOURCES, SourcesWanted};
  if (settings.loopback || silent) {
    const bool stereo = !settings.loopback || settings.loopbackChannels == 2;
    attributes.insert(attributes.end(),
                      {ALC_FREQUENCY, settings.loopback ? settings.loopbackRate : SilentRate, ALC_FORMAT_CHANNELS_SOFT,
                       stereo ? ALC_STEREO_SOFT : ALC_MONO_SOFT, ALC_FORMAT_TYPE_SOFT, ALC_FLOAT_SOFT});
  }
  attributes.push_back(0);
  return attributes;
}

// The device that is no device: what is mixed is handed to us.
OpenedDevice DeviceCore::OpenLoopback() const {
  OpenedDevice opened;
  opened.device = alcLoopbackOpenDeviceSOFT(nullptr);
  if (opened.device == nullptr) return opened;
  opened.context = alcCreateContext(opened.device, Attributes(true).data());
  if (opened.context != nullptr) return opened;
  alcCloseDevice(opened.device);
  return {};
}

OpenedDevice DeviceCore::OpenReal(std::string& problem) {
  OpenedDevice opened;
  if (settings.loopback) {
    if (plugged_) opened = OpenLoopback();
    if (opened.context == nullptr) problem = "The sound library has no loopback device.";
    return opened;
  }
  opening_ = std::make_unique<DeviceOpening>(sideThreads_, settings.device, Attributes(false));
  const bool finished = opening_->Finished(OpenLimit);
  if (finished) opened = opening_->Take();
  if (opened.context == nullptr) problem = opening_->Problem();
  if (finished) opening_ = nullptr;  // what hangs is waited for on the side
  return opened;
}

bool DeviceCore::Open(std::string& problem) {
  PrepareLibrary();
  problem.clear();
  OpenedDevice opened = OpenReal(problem);
  found_ = opened.context != nullptr;
  if (!found_) {
    opened = OpenLoopback();
    if (opened.context == nullptr) return false;
    standIn_ = true;
    silentUntil_ = Clock::now();
    nextLook_ = silentUntil_ + LookInterval;
  }
  device = opened.device;
  context = opened.context;
  feeder_ = std::thread([this] { Work(); });
  return true;
}

bool DeviceCore::Found() {
  const std::lock_guard lock(mutex);
  return found_;
}

bool DeviceCore::Gone() const {
  if (!plugged_) return true;
  if (standIn_) return false;
  ALCint connected = ALC_TRUE;
  if (alcIsExtensionPresent(device, "ALC_EXT_disconnect") != ALC_FALSE) {
    alcGetIntegerv(device, ALC_CONNECTED, 1, &connected);
  }
  return connected == ALC_FALSE;
}

bool DeviceCore::Connected() const {
  return standIn_ || !Gone();
}

nanoseconds DeviceCore::Latency() const {
  if (alcIsExtensionPresent(device, "ALC_SOFT_device_clock") == ALC_FALSE) return {};
  ALCint64SOFT latency = 0;
  alcGetInteger64vSOFT(device, ALC_DEVICE_LATENCY_SOFT, 1, &latency);
  return nanoseconds(std::max<ALCint64SOFT>(latency, 0));
}

void DeviceCore::Watch() {
  if (standIn_) {
    LookForDevice();
    return;
  }
  if (!Gone()) return;
  silentUntil_ = Clock::now();
  nextLook_ = silentUntil_ + LookInterval;
  if (const OpenedDevice silent = OpenLoopback(); silent.context != nullptr) MoveTo(silent, true);
  if (std::exchange(told_, true) || !settings.notice) return;
  settings.notice("The sound device is gone. Voices and sounds are heard again as soon as there is one.");
}

void DeviceCore::LookForDevice() {
  OpenedDevice found;
  if (settings.loopback) {
    if (plugged_) found = OpenLoopback();
  } else if (opening_ == nullptr) {
    if (Clock::now() >= nextLook_)
      opening_ = std::make_unique<DeviceOpening>(sideThreads_, settings.device, Attributes(false));
  } else if (opening_->Finished(milliseconds(0))) {
    found = opening_->Take();
    opening_ = nullptr;
    nextLook_ = Clock::now() + LookInterval;
  }
  if (found.context == nullptr) return;
  MoveTo(found, false);
  found_ = true;
  told_ = false;
}

// Takes everything over to the next device.
void DeviceCore::MoveTo(const OpenedDevice& next, bool silent) {
  {
    const ContextScope scope(context);
    for (Audible* audible : audibles_) audible->LeaveDevice();
  }
  halves_.clear();
  OpenedDevice old;
  {
    const std::lock_guard lock(rendering_);
    old = {std::exchange(device, next.device), std::exchange(context, next.context)};
    standIn_ = silent;
  }
  AbandonDevice(sideThreads_, old);
  const ContextScope scope(context);
  for (Audible* audible : audibles_) audible->EnterDevice();
}

void DeviceCore::Join(Audible& audible) {
  audibles_.push_back(&audible);
  if (standIn_) Hurry();
}

void DeviceCore::Leave(Audible& audible) {
  std::erase(audibles_, &audible);
}

std::shared_ptr<HalfBuffers> DeviceCore::Halves(const MemorySound& sound) {
  std::erase_if(halves_, [](const auto& entry) { return entry.second.expired(); });
  for (const auto& [known, weak] : halves_) {
    if (known == &sound) return weak.lock();
  }
  auto made = HalfBuffers::Make(sound);
  if (made != nullptr) halves_.emplace_back(&sound, made);
  return made;
}

// The silent device has no clock of its own.
void DeviceCore::RunSilently() {
  const auto now = Clock::now();
  const auto due = std::min<Clock::duration>(now - silentUntil_, LongestSilence);
  silentUntil_ = now;
  const auto frames =
      static_cast<ALCsizei>(due.count() * SilentRate / Clock::duration(std::chrono::seconds(1)).count());
  if (frames <= 0) return;
  std::vector<float> samples(2 * static_cast<std::size_t>(frames));
  alcRenderSamplesSOFT(device, samples.data(), frames);
}

milliseconds DeviceCore::FeedAll() {
  const ContextScope scope(context);
  milliseconds next = WatchInterval;
  for (Audible* audible : audibles_) {
    const milliseconds wanted = audible->Feed();
    if (wanted.count() > 0) next = std::min(next, wanted);
  }
  return next;
}

void DeviceCore::Work() {
  std::unique_lock lock(mutex);
  while (!ending_) {
    Watch();
    if (standIn_ && !settings.loopback) RunSilently();
    milliseconds next = FeedAll();
    if (standIn_ && !settings.loopback && !audibles_.empty()) next = std::min(next, SilentInterval);
    fed.wait_for(lock, next);
  }
}

void DeviceCore::SetFocused(bool focusedNow) {
  const DeviceTurn turn(*this);
  focused = focusedNow;
  for (Audible* audible : audibles_) audible->FocusChanged();
}

std::vector<float> DeviceCore::Render(std::size_t frames) {
  std::vector<float> samples(frames * static_cast<std::size_t>(settings.loopbackChannels));
  if (!settings.loopback) return samples;
  // As on a real device, mixing waits for nobody who feeds.
  const std::lock_guard lock(rendering_);
  alcRenderSamplesSOFT(device, samples.data(), static_cast<ALCsizei>(frames));
  if (standIn_) std::fill(samples.begin(), samples.end(), 0.0F);
  return samples;
}

void DeviceCore::SetPlugged(bool plugged) {
  const std::lock_guard lock(mutex);
  if (!settings.loopback || plugged == plugged_) return;
  plugged_ = plugged;
  Watch();
}

}  // namespace corvid
