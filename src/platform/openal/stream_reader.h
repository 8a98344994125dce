// SPDX-License-Identifier: GPL-3.0-or-later
// Decodes a file bit by bit on a thread of its own, some blocks ahead of what is heard.
#pragma once

#include <memory>

#include "platform/openal/block_queue.h"
#include "platform/openal/sound_file.h"

namespace corvid {

class StreamReader {
 public:
  // Decodes the first block at once. nullptr with error set when there is none.
  static std::unique_ptr<StreamReader> Make(std::unique_ptr<SoundFile> file, std::string& error);
  ~StreamReader();  // waits for nobody: a file that cannot be read any more keeps its thread to itself
  StreamReader(const StreamReader&) = delete;
  StreamReader& operator=(const StreamReader&) = delete;

  // The next block, in stereo, numbered by the frames of the file. False when none is ready.
  bool Take(SampleBlock& block);
  bool Finished();  // no block is ready and none will come
  // Goes on at another frame, behind the end at the start; blocks that were ready are dropped.
  void Restart(int64 frame, bool loop);
  // Whether the start follows the end. A loop begins also behind an end that has been met already; for the end of a
  // loop use Restart, since blocks of the next round may be ready.
  void BeginLoop();

 private:
  struct Shared;
  explicit StreamReader(std::shared_ptr<Shared> shared) : shared_(std::move(shared)) {}
  std::shared_ptr<Shared> shared_;
};

}  // namespace corvid
