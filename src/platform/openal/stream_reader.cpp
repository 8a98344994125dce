// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/openal/stream_reader.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>

namespace corvid {

namespace {

constexpr std::size_t BlockFrames = 4096;  // 93 ms at 44,100 hertz
constexpr std::size_t BlocksAhead = 4;

}  // namespace

struct StreamReader::Shared {
  // The decoding thread's alone, once it runs.
  std::unique_ptr<SoundFile> file;
  int64 at = 0;  // the frame that is decoded next

  std::mutex mutex;  // guards what follows
  std::condition_variable changed;
  std::deque<SampleBlock> ready;
  bool loop = false;
  bool finished = false;
  bool ending = false;
  int64 restart = -1;    // the frame to go on at; -1 where it is
  int64 generation = 0;  // counts restarts, so that a block decoded across one is dropped

  // Decodes a block from where the file is. loops: the start follows the end. True when the end was met.
  bool Decode(SampleBlock& block, bool loops);
  bool GoTo(int64 frame);
  void Work();
};

bool StreamReader::Shared::GoTo(int64 frame) {
  at = file->Seek(frame) ? frame : 0;
  return at > 0 || file->Seek(0);
}

bool StreamReader::Shared::Decode(SampleBlock& block, bool loops) {
  block.start = at;
  const bool mono = file->Channels() == 1;
  std::size_t frames = 0;
  bool ended = false;
  int fruitless = 0;  // rounds that gave nothing: a file that was cut short under us must not keep the thread busy
  while (frames < BlockFrames && fruitless < 2) {
    std::vector<int16> samples;
    const std::size_t got = file->Read(BlockFrames - frames, samples);
    if (mono) {
      for (const int16 sample : samples) block.samples.insert(block.samples.end(), 2, sample);
    } else {
      block.samples.insert(block.samples.end(), samples.begin(), samples.end());
    }
    frames += got;
    at += static_cast<int64>(got);
    if (frames == BlockFrames) return false;
    ended = !loops || !GoTo(0);
    if (ended) return true;
    // Only the last seam of a block is kept in mind, which matters to sounds shorter than one.
    block.wrapsAt = static_cast<int64>(frames);
    fruitless = got > 0 ? 0 : fruitless + 1;
  }
  return fruitless > 0;
}

void StreamReader::Shared::Work() {
  std::unique_lock lock(mutex);
  bool sought = false;  // nothing has been read yet where the last restart led
  while (!ending) {
    if (restart >= 0) {
      sought = restart > 0;
      const int64 frame = std::exchange(restart, -1);
      lock.unlock();
      const bool found = GoTo(frame);
      lock.lock();
      if (!found && restart < 0) finished = true;
      continue;
    }
    if (finished || ready.size() >= BlocksAhead) {
      changed.wait(lock);
      continue;
    }
    const int64 before = generation;
    const bool loops = loop;
    lock.unlock();
    SampleBlock block;
    const bool ended = Decode(block, loops);
    lock.lock();
    if (generation != before) continue;
    if (block.samples.empty() && ended && std::exchange(sought, false)) {
      restart = 0;  // the file had promised more than it holds
      continue;
    }
    if (!block.samples.empty()) ready.push_back(std::move(block));
    if (!ended) continue;
    // The loop may have begun while the end was met.
    finished = !loop || loops;
    if (!finished) restart = 0;
  }
}

std::unique_ptr<StreamReader> StreamReader::Make(std::unique_ptr<SoundFile> file, std::string& error) {
  const auto shared = std::make_shared<Shared>();
  shared->file = std::move(file);
  SampleBlock first;
  shared->finished = shared->Decode(first, false);
  if (first.samples.empty()) {
    error = "It holds no sound that can be read.";
    return nullptr;
  }
  shared->ready.push_back(std::move(first));
  std::thread([shared] { shared->Work(); }).detach();
  return std::unique_ptr<StreamReader>(new StreamReader(shared));
}

StreamReader::~StreamReader() {
  const std::lock_guard lock(shared_->mutex);
  shared_->ending = true;
  shared_->changed.notify_all();
}

bool StreamReader::Take(SampleBlock& block) {
  const std::lock_guard lock(shared_->mutex);
  if (shared_->ready.empty()) return false;
  block = std::move(shared_->ready.front());
  shared_->ready.pop_front();
  shared_->changed.notify_all();
  return true;
}

bool StreamReader::Finished() {
  const std::lock_guard lock(shared_->mutex);
  return shared_->finished && shared_->ready.empty();
}

void StreamReader::Restart(int64 frame, bool loop) {
  const std::lock_guard lock(shared_->mutex);
  shared_->ready.clear();
  shared_->restart = frame;
  shared_->loop = loop;
  shared_->finished = false;
  ++shared_->generation;
  shared_->changed.notify_all();
}

void StreamReader::BeginLoop() {
  const std::lock_guard lock(shared_->mutex);
  if (std::exchange(shared_->loop, true)) return;
  if (std::exchange(shared_->finished, false)) shared_->restart = 0;
  shared_->changed.notify_all();
}

}  // namespace corvid
