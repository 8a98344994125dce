// SPDX-License-Identifier: GPL-3.0-or-later
// A disk that fails at any single moment: the program goes on, no file that was there is lost, and the next start finds
// everything in order.
#include <map>
#include <set>

#include "core/text.h"
#include "running_program.h"

namespace corvid {
namespace {

using Disk = std::map<std::string, std::string>;

// All the player's files that are meant to outlive a run.
Disk KeptFiles(MemoryFiles& files) {
  Disk found;
  for (const std::string& folder : {std::string("/data/"), std::string("/data/Aard/")}) {
    if (!files.FolderExists(folder)) continue;
    for (const std::string& name : files.FileNames(folder))
      if (name != "error.log") found[folder + name] = files.ReadWhole(folder + name);
  }
  return found;
}

// An evening: a new character, definitions, a lost connection, saving, the end. seen is told each state of the disk.
template <typename Seen>
void Evening(RunningProgram& run, Seen&& seen) {
  run.Start();
  seen();
  run.Try("#MUD bob Aard aard.example 4000 Bob secret");
  const int16 row = FindCharacter(run.corvid.sessionState, "bob");
  if (row > 0) run.corvid.sessionState.CharFlags[row] = charflag::KeepVariables | charflag::SimpleControl;
  seen();
  run.Try("#CONNECT bob");
  seen();
  if (run.memory.sockets.Connected(1)) run.memory.sockets.Receive(1, "Welcome!\r\nWhat is your name?");
  run.memory.loop.Pass(200);
  run.Try("#ALIAS k {kill %1}");
  run.Try("#VAR gold 12");
  run.Try("look");
  run.Try("#CONFIGURE MarginBell 50");
  run.corvid.saving.SaveOptionsFile();
  seen();
  run.Try("#SAVE");
  run.corvid.saving.AutoSave();
  seen();
  if (run.memory.sockets.Connected(1)) run.memory.sockets.CloseByPeer(1);
  run.Try("#CONNECT bob");
  seen();
  run.corvid.quit(true);
  seen();
}

void PutOldFiles(RunningProgram& run) {
  run.memory.files.Put("/data/corvid.set", "#Configure MarginBell 60\r\n");
  run.memory.files.Put("/data/Aard/bob.set", "#alias {s} {score}\r\n");
  run.memory.files.Put("/data/Aard/bob-var.set", "#Var silver {7} {}\r\n");
  run.memory.files.Put("/data/Aard/mud.set", "; of the game\r\n");
}

// Contents that a file has had in an evening without a failure, at the moments that were looked at.
struct Reference {
  std::map<std::string, std::set<std::string>> Versions;
  int Operations = 0;
};

Reference UndisturbedEvening() {
  Reference reference;
  RunningProgram run;
  PutOldFiles(run);
  run.memory.files.Fail = [&](const std::string&, const std::string&) {
    ++reference.Operations;
    return std::string();
  };
  const auto note = [&] {
    const int before = reference.Operations;
    for (const auto& [name, text] : KeptFiles(run.memory.files)) reference.Versions[name].insert(text);
    reference.Operations = before;  // our own looks do not count
  };
  note();
  Evening(run, note);
  return reference;
}

struct FailingCase {
  const char* Name;
  bool Once;  // else every operation from that one on
  FaultKind Kind;
  const char* Reason;
};

void PrintTo(const FailingCase& failing, std::ostream* out) {
  *out << failing.Name;
}

class FailingDisk : public testing::TestWithParam<FailingCase> {};

void ExpectNothingLost(const Disk& before, RunningProgram& run, const Reference& reference) {
  const Disk after = KeptFiles(run.memory.files);
  for (const auto& [name, text] : before) EXPECT_TRUE(after.contains(name)) << name << " is gone";
  for (const auto& [name, text] : after) {
    const auto known = reference.Versions.find(name);
    if (known == reference.Versions.end() || name.ends_with("speech.ini")) continue;
    // A file holds something whole: what it was before, or what an evening writes into it line by line.
    EXPECT_TRUE(text.empty() || text.ends_with("\n") || known->second.contains(text)) << name << ": " << text;
  }
}

TEST_P(FailingDisk, AtAnyOperationLosesNothing) {
  const Reference reference = UndisturbedEvening();
  ASSERT_GT(reference.Operations, 20);
  for (int failing = 1; failing <= reference.Operations; ++failing) {
    SCOPED_TRACE("operation " + std::to_string(failing));
    RunningProgram run;
    PutOldFiles(run);
    const Disk before = KeptFiles(run.memory.files);
    int count = 0;
    std::string failed;
    run.memory.files.FailKind = GetParam().Kind;
    run.memory.files.Fail = [&](const std::string& operation, const std::string& path) {
      ++count;
      const bool fails = GetParam().Once ? count == failing : count >= failing && operation != "read";
      if (fails && failed.empty()) failed = operation + " " + path;
      return fails ? std::string(GetParam().Reason) : std::string();
    };
    Evening(run, [] {});
    SCOPED_TRACE(failed);
    run.memory.files.Fail = nullptr;
    EXPECT_TRUE(run.Ended());
    ExpectNothingLost(before, run, reference);

    RunningProgram next;
    next.memory.files = run.memory.files;
    EXPECT_TRUE(next.Start());
    if (FindCharacter(next.corvid.sessionState, "bob") == 0) next.Do("#MUD bob Aard aard.example 4000 Bob secret");
    next.Do("#CONNECT bob");
    EXPECT_TRUE(next.memory.sockets.Connected(1));
    next.memory.effects.Clear();
    next.Do("s");
    EXPECT_EQ(next.memory.sockets.TakeWritten(1), "score\r\n");
  }
}

INSTANTIATE_TEST_SUITE_P(Kinds, FailingDisk,
                         testing::Values(FailingCase{"once", true, FaultKind::FileIo, "Input/output error"},
                                         FailingCase{"full", false, FaultKind::DiskFull, "No space left on device"},
                                         FailingCase{"denied", false, FaultKind::Permission, "Permission denied"}),
                         [](const auto& each) { return std::string(each.param.Name); });

TEST(DiskFaults, ALogThatTakesHalfALineIsToldAndGoesOnBehindIt) {
  RunningProgram run;
  run.StartAndConnect(0);
  run.memory.files.Room = 10;
  run.memory.sockets.Receive(1, "0123456789 abcdef\r\n");
  EXPECT_EQ(run.memory.effects.Of("speech"), Texts({"1 Error logged.", "1 0123456789 abcdef"}));
  run.memory.files.Room = std::string::npos;
  run.memory.sockets.Receive(1, "and on\r\n");
  const Texts logs = run.memory.files.FileNames("/data/logs");
  ASSERT_EQ(logs.size(), 1U);
  EXPECT_TRUE(EndsWithText(run.Read("/data/logs/" + logs[0]), "0123456789and on\r\n"))
      << run.Read("/data/logs/" + logs[0]);
}

TEST(DiskFaults, TheFolderOfLogsVanishesAndTheNextConnectionMakesItAnew) {
  RunningProgram run;
  run.StartAndConnect(0);
  run.memory.files.Vanish("/data/logs");
  run.memory.sockets.Receive(1, "one\r\n");
  EXPECT_EQ(run.memory.effects.Of("speech"), Texts({"1 one"}));
  run.memory.sockets.CloseByPeer(1);
  run.Do("#CONNECT bob");
  run.memory.sockets.Receive(1, "two\r\n");
  const Texts logs = run.memory.files.FileNames("/data/logs");
  ASSERT_EQ(logs.size(), 1U);
  EXPECT_NE(run.Read("/data/logs/" + logs[0]).find("two\r\n"), std::string::npos);
}

TEST(DiskFaults, TheWholeDataFolderVanishesAndTheGameGoesOn) {
  RunningProgram run;
  run.StartAndConnect(0);
  const int16 number = run.ChangeScript("/data/Aard/bob.set", "#alias {k} {kill}\r\n");
  run.memory.files.Vanish("/data");
  run.memory.face.Will("Ok");
  run.Do("#SAVE");
  EXPECT_EQ(run.Asked(), Texts({"MSGBOX Error|Error creating file /data/Aard/bob.set"}));
  EXPECT_TRUE(run.corvid.buffers.IsModified(number));
  run.memory.sockets.Receive(1, "one\r\n");
  run.Do("look");
  EXPECT_EQ(run.memory.sockets.TakeWritten(1), "look\r\n");
  // The drive is back, empty: what was changed can be saved.
  run.memory.files.Put("/data/Aard/other.set", "");
  run.Do("#SAVE");
  EXPECT_EQ(run.Read("/data/Aard/bob.set"), "#alias {k} {kill}\r\n");
}

}  // namespace
}  // namespace corvid
