// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdio>

#include "app/corvid.h"
#include "app/front.h"
#include "app/outside.h"
#include "app/voices.h"
#include "platform/qt/desktop/desktop_application.h"
#include "platform/qt/desktop/desktop_face.h"
#include "platform/qt/end_signals.h"
#include "platform/qt/exit_watch.h"

namespace corvid {

int RunDesktop(const CommandLine& line, int argc, char** argv) {
  if (!HasDisplay()) {
    if (line.UiGiven) return Refuse("There is no display for a window. Try --ui console.");
    std::fputs("corvid: There is no display for a window, so Corvid runs on this console.\n", stderr);
    return RunConsole(line, argc, argv);
  }
  const DesktopApplication application(argc, argv);
  Outside outside(argc, argv);
  std::string problem;
  const StartRequest request = outside.Request(line, problem);
  if (!problem.empty()) return Refuse(problem);
  DesktopFace face(outside.loop, outside.clock);
  Voices voices(outside.timers, face);
  Corvid corvid(outside.With(voices.engine, voices.reader, face, voices.sounds));
  face.Start({.Quit = [&] { corvid.quit(true); }, .Focused = [&](bool focused) { voices.sounds.SetFocused(focused); }});
  const EndSignals signals([&] { face.Leave(); });
  const ExitWatch screenLost([&] {
    outside.loop.Break();
    face.LoseScreen();
    corvid.start.SaveAtOnce();
  });
  return corvid.Start(request) ? outside.loop.Run() : 0;
}

}  // namespace corvid
