// SPDX-License-Identifier: GPL-3.0-or-later
// Everything outside the program, in one bundle that the front ends fill.
#pragma once

#include "platform/clock.h"
#include "platform/event_loop.h"
#include "platform/face.h"
#include "platform/files.h"
#include "platform/sockets.h"
#include "platform/speech.h"

namespace corvid {

class SoundOutput;

struct Platform {
  Clock& clock;
  EventLoop& events;
  Timers& timers;
  Sockets& sockets;
  Files& files;
  Places& places;
  Settings& settings;
  SpeechEngine& speechEngine;
  ScreenReader& screenReader;
  Face& face;
  SoundOutput& sounds;
};

}  // namespace corvid
