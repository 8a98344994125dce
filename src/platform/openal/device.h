// SPDX-License-Identifier: GPL-3.0-or-later
// Opening the sound device, and making its context the calling thread's own for a while.
#pragma once

#define AL_ALEXT_PROTOTYPES
#include <AL/al.h>
#include <AL/alc.h>
#include <AL/alext.h>

#include <chrono>
#include <string>

namespace corvid {

// How many sounds and voices can play at once.
inline constexpr ALCint SourcesWanted = 301;

// Asks the library for short periods, and for silence on the terminal. Nothing that the player has set is changed.
void PrepareLibrary();

// The named device (empty: the default), or nullptr: none exists, or it did not answer within the limit. problem then
// says which. A driver that hangs is left behind on a thread of its own.
ALCdevice* OpenDevice(const std::string& name, std::chrono::milliseconds limit, std::string& problem);

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
