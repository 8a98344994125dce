// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/front.h"

#include "app/corvid.h"
#include "app/json_queries.h"
#include "app/outside.h"
#include "app/voices.h"
#include "core/text.h"
#include "platform/qt/console_face.h"
#include "platform/qt/end_signals.h"

namespace corvid {

namespace {

std::string Joined(const std::vector<std::string>& words) {
  std::string all;
  for (const std::string& word : words) all += (all.empty() ? "" : ",") + word;
  return all;
}

}  // namespace

int RunJson(const CommandLine& line, int argc, char** argv) {
  const std::string filter = Joined(line.JsonEvents);
  const std::string unknown = JsonFace::UnknownEvents(filter);
  if (!unknown.empty()) return Refuse("There is no event " + unknown + ".");
  Outside outside(argc, argv);
  std::string problem;
  const StartRequest request = outside.Request(line, problem);
  if (!problem.empty()) return Refuse(problem);
  JsonFace face(outside.loop, outside.clock, {.Events = filter});
  int code = 0;
  {
    Corvid corvid(outside.With(face.Engine(), face.Reader(), face, face.Sounds()));
    ProgramQueries queries(corvid);
    face.Start(
        {.Queries = &queries, .JobDue = [&] { return corvid.timers.JobDue(); }, .Quit = [&] { corvid.quit(true); }});
    const EndSignals signals([&] { face.Leave(); });
    code = corvid.Start(request) ? outside.loop.Run() : 0;
    face.NoteExit(code);
  }
  return code;
}

int RunConsole(const CommandLine& line, int argc, char** argv) {
  Outside outside(argc, argv);
  std::string problem;
  const StartRequest request = outside.Request(line, problem);
  if (!problem.empty()) return Refuse(problem);
  ConsoleFace face(outside.loop, outside.clock);
  Voices voices(outside.timers, face);
  int code = 0;
  {
    Corvid corvid(outside.With(voices.engine, voices.reader, face, voices.sounds));
    corvid.prompts.AskByVoice = nullptr;  // lines come here, not keys, and who reads them would not see the question
    face.Start({.JobDue = [&] { return corvid.timers.JobDue(); }, .Quit = [&] { corvid.quit(true); }});
    const EndSignals signals([&] { face.Leave(); });
    code = corvid.Start(request) ? outside.loop.Run() : 0;
    face.Finish();
  }
  return code;
}

}  // namespace corvid
