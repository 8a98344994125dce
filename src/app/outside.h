// SPDX-License-Identifier: GPL-3.0-or-later
// The parts of the real system that every face needs.
#pragma once

#include <cstdio>
#include <filesystem>
#include <string>

#include "app/command_line.h"
#include "app/practice.h"
#include "app/start_order.h"
#include "platform/platform.h"
#include "platform/qt/clock.h"
#include "platform/qt/event_loop.h"
#include "platform/qt/files.h"
#include "platform/qt/places.h"
#include "platform/qt/settings.h"
#include "platform/qt/sockets.h"

namespace corvid {

// Tells on the console why the program cannot start; the code that it ends with.
inline int Refuse(const std::string& problem) {
  std::fprintf(stderr, "corvid: %s\n", problem.c_str());
  return 1;
}

struct Outside {
  Outside(int& argc, char** argv) : loop(argc, argv) {}

  QtEventLoop loop;
  SystemClock clock;
  QtTimers timers;
  QtSockets sockets;
  PosixFiles files;
  QtPlaces places;
  FileSettings settings{files, SettingsFile(places)};
  PracticeGame practice;

  // What the program is to start with; starts the practice game if that is asked for. problem is what the player must
  // be told when it cannot be done.
  StartRequest Request(const CommandLine& line, std::string& problem) {
    StartRequest request;
    request.Connect = line.Connect;
    if (!line.DataFolder.empty()) request.DataFolder = files.Absolute(line.DataFolder);
    if (!line.Practice) return request;
    std::error_code none;
    problem = practice.Start(std::filesystem::read_symlink("/proc/self/exe", none).string());
    request.PracticePort = practice.Port();
    if (request.DataFolder.empty()) request.DataFolder = StateFolder(places) + "practice";
    if (request.Connect.empty()) request.Connect = "practice";
    return request;
  }
  // All that the program needs, with the voices and the window of a face.
  Platform With(SpeechEngine& engine, ScreenReader& reader, Face& face, SoundOutput& sounds) {
    return {clock, loop, timers, sockets, files, places, settings, engine, reader, face, sounds};
  }
};

}  // namespace corvid
