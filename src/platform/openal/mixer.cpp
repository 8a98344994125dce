// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/openal/mixer.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>

#include "platform/openal/stream.h"

namespace corvid {

namespace {

constexpr std::chrono::milliseconds OpenLimit{3000};
constexpr std::chrono::milliseconds FeedInterval{20};  // the library holds 700 ms, so this is early enough

}  // namespace

// The device, and the thread that keeps its streams fed. Everything in it is guarded by mutex.
struct OpenAlMixer::Core {
  std::mutex mutex;
  std::condition_variable fed;
  ALCdevice* device = nullptr;
  ALCcontext* context = nullptr;
  std::vector<SourceFeed*> streams;
  bool ending = false;
  std::thread feeder;

  void Feed();
  ~Core();
};

namespace {

class MixerStream : public PcmStream {
 public:
  MixerStream(OpenAlMixer::Core& core, ALuint source) : core_(core), feed_(std::make_unique<SourceFeed>(source)) {
    core_.streams.push_back(feed_.get());
  }
  ~MixerStream() override {
    const std::lock_guard lock(core_.mutex);
    const ContextScope scope(core_.context);
    std::erase(core_.streams, feed_.get());
    feed_.reset();
  }
  MixerStream(const MixerStream&) = delete;
  MixerStream& operator=(const MixerStream&) = delete;

  void Queue(const int16* samples, std::size_t count) override {
    const std::lock_guard lock(core_.mutex);
    const ContextScope scope(core_.context);
    feed_->Append(samples, count);
    if (feed_->HasMore()) core_.fed.notify_one();
  }
  void Purge() override {
    const std::lock_guard lock(core_.mutex);
    const ContextScope scope(core_.context);
    feed_->Purge();
  }
  void SetPaused(bool paused) override {
    const std::lock_guard lock(core_.mutex);
    const ContextScope scope(core_.context);
    feed_->SetPaused(paused);
    if (feed_->HasMore()) core_.fed.notify_one();
  }
  void SetVolume(double volume) override {
    const std::lock_guard lock(core_.mutex);
    const ContextScope scope(core_.context);
    feed_->SetVolume(volume);
  }
  std::size_t Waiting() override {
    const std::lock_guard lock(core_.mutex);
    const ContextScope scope(core_.context);
    return feed_->Waiting();
  }

 private:
  OpenAlMixer::Core& core_;
  std::unique_ptr<SourceFeed> feed_;
};

}  // namespace

void OpenAlMixer::Core::Feed() {
  std::unique_lock lock(mutex);
  while (!ending) {
    bool more = false;
    {
      const ContextScope scope(context);
      for (SourceFeed* stream : streams) {
        if (stream->HasMore()) stream->Feed();
        more = more || stream->HasMore();
      }
    }
    if (more) {
      fed.wait_for(lock, FeedInterval);
    } else {
      fed.wait(lock);
    }
  }
}

OpenAlMixer::Core::~Core() {
  if (feeder.joinable()) {
    {
      const std::lock_guard lock(mutex);
      ending = true;
    }
    fed.notify_one();
    feeder.join();
  }
  if (context != nullptr) alcDestroyContext(context);
  if (device != nullptr) alcCloseDevice(device);
}

OpenAlMixer::OpenAlMixer(MixerSettings settings) : settings_(std::move(settings)) {}

OpenAlMixer::~OpenAlMixer() = default;

bool OpenAlMixer::Open() {
  if (core_ != nullptr) return true;
  PrepareLibrary();
  auto core = std::make_unique<Core>();
  std::vector<ALCint> attributes{ALC_MONO_SOURCES, SourcesWanted};
  if (settings_.loopback) {
    core->device = alcLoopbackOpenDeviceSOFT(nullptr);
    const ALCint channels = settings_.loopbackChannels == 2 ? ALC_STEREO_SOFT : ALC_MONO_SOFT;
    attributes.insert(attributes.end(), {ALC_FREQUENCY, settings_.loopbackRate, ALC_FORMAT_CHANNELS_SOFT, channels,
                                         ALC_FORMAT_TYPE_SOFT, ALC_FLOAT_SOFT});
    problem_ = "The sound library has no loopback device.";
  } else {
    core->device = OpenDevice(settings_.device, OpenLimit, problem_);
  }
  if (core->device == nullptr) return false;
  attributes.push_back(0);
  core->context = alcCreateContext(core->device, attributes.data());
  if (core->context == nullptr) {
    problem_ = "The sound device was found but cannot be used.";
    return false;
  }
  core->feeder = std::thread([&running = *core] { running.Feed(); });
  core_ = std::move(core);
  problem_.clear();
  return true;
}

std::string OpenAlMixer::Problem() const {
  return problem_;
}

std::unique_ptr<PcmStream> OpenAlMixer::CreateStream() {
  if (core_ == nullptr) return nullptr;
  const std::lock_guard lock(core_->mutex);
  const ContextScope scope(core_->context);
  ALuint source = 0;
  alGetError();
  alGenSources(1, &source);
  if (alGetError() != AL_NO_ERROR) return nullptr;
  return std::make_unique<MixerStream>(*core_, source);
}

std::vector<float> OpenAlMixer::Render(std::size_t frames) {
  std::vector<float> samples(frames * static_cast<std::size_t>(settings_.loopbackChannels));
  if (core_ != nullptr && settings_.loopback) {
    // A block that is handed over in the very moment in which the library finds its stream at the end counts as played
    // without having been heard. A real device mixes by its own clock and can meet that moment, once in many thousand
    // runs dry; a rendering test must give the same each time, so here handing over and mixing take turns.
    const std::lock_guard lock(core_->mutex);
    alcRenderSamplesSOFT(core_->device, samples.data(), static_cast<ALCsizei>(frames));
  }
  return samples;
}

}  // namespace corvid
