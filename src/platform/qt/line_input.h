// SPDX-License-Identifier: GPL-3.0-or-later
// Lines of text that come in on a descriptor, such as the standard input, handled one by one on the event loop.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace corvid {

class LineInput {
 public:
  // A line that grows beyond this is dropped; tooLong is then called in its place.
  static constexpr std::size_t LongestLine = std::size_t{16} * 1024 * 1024;

  struct Handlers {
    std::function<void(const std::string&)> line;  // without its end; may pump events
    std::function<void()> tooLong;
    std::function<void()> end;  // once, when the last line was handled and no more can come
    std::function<bool()>
        mayTake;  // asked before each line and the end; while false they wait, and it is asked again soon
  };
  LineInput(int descriptor, Handlers handlers);
  ~LineInput();
  LineInput(const LineInput&) = delete;
  LineInput& operator=(const LineInput&) = delete;

  void Start();
  // Takes no line for so long; the events go on.
  void Pause(int milliseconds);
  // True when nothing waits: no line, no pause, no bytes that could still be read now.
  bool AllTaken() const;
  std::int64_t Taken() const;  // lines so far, those in work included

 private:
  struct Reader;
  std::unique_ptr<Reader> reader_;
};

}  // namespace corvid
