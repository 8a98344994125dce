// SPDX-License-Identifier: GPL-3.0-or-later
// Each operation of each road from the disk or to it fails once, in turn: the player is told of it and of the file,
// what was there is still somewhere, in memory or on disk, and the game goes on.
#include <algorithm>
#include <utility>

#include "core/text.h"
#include "running_program.h"

namespace corvid {
namespace {

struct Road {
  const char* Name;
  void (*Go)(RunningProgram&);
};

// What is told when an operation on such a road fails. Box: a message box that begins so. Spoken: this, and the file is
// named in error.log or in the window of errors. Nothing: the file is read once more, and what is told and in force is
// the same as without the fault.
enum class Way { Box, Spoken, Nothing };

struct Row {
  const char* Road;
  const char* Operation;
  const char* PathEnd;
  Way Told;
  const char* Text;
};

constexpr const char* Logged = "1 Error logged.";
constexpr const char* Error = "1 error";

constexpr Row Rows[] = {
    {"start", "folder", "/Sounds", Way::Box, "MSGBOX Error|Error creating data folder (/data/Sounds/). /data/Sounds: "},
    {"start", "folder", "/logs", Way::Box, "MSGBOX Error|Error creating data folder (/data/logs/). /data/logs: "},
    {"start", "first read", "speech.ini", Way::Nothing, ""},
    {"start", "read", "speech.ini", Way::Spoken, Logged},
    {"start", "first read", "corvid.set", Way::Nothing, ""},
    {"start", "read", "corvid.set", Way::Spoken, Logged},
    {"start", "read", "Character.mud", Way::Spoken, Logged},
    {"start", "read", "start.set", Way::Spoken, Logged},
    {"connect", "write", "Character.mud", Way::Box, "MSGBOX Corvid|Error opening Character.mud file in /data/"},
    {"connect", "read", "", Way::Spoken, Logged},
    {"connect", "append", "", Way::Spoken, Logged},
    {"a line of the game", "", "", Way::Spoken, Logged},
    {"a typed line", "", "", Way::Spoken, Error},
    {"options", "write", "corvid.set", Way::Box, "MSGBOX Error|Error creating file /data/corvid.set"},
    {"scripts", "write", "bob.set", Way::Box, "MSGBOX Error|Error creating file /data/Aard/bob.set"},
    {"by the way", "write", "bob.set", Way::Spoken, Logged},
    {"by the way, a state", "write", "bob-Char.set", Way::Box,
     "MSGBOX Error|Error creating file /data/Aard/bob-char.set"},
    {"by the way, a state", "write", "bob.set", Way::Spoken, Logged},
    {"reload", "write", "bob-var.set", Way::Box, "MSGBOX Error|Error creating file /data/Aard/bob-var.set"},
    {"reload", "write", "bob.set", Way::Box, "MSGBOX Error|Error creating file /data/Aard/bob.set"},
    {"reload", "read", "", Way::Spoken, Logged},
    {"reload", "append", "", Way::Spoken, Logged},
    {"load", "read", "fight.set", Way::Spoken, Logged},
    {"speech", "write", "speech.ini", Way::Box, "MSGBOX Error|Error creating file /data/speech.ini"},
    {"characters", "write", "", Way::Box, "MSGBOX Corvid|Error opening Character.mud file in /data/"},
    {"image", "write", "full.set", Way::Box, "MSGBOX Error|Error creating file /data/full.set"},
    {"a data file written", "", "notes.txt", Way::Spoken, Error},
    {"a data file read", "read", "old.txt", Way::Spoken, Error},
    {"a data file deleted", "remove", "old.txt", Way::Spoken, Error},
    {"end", "write", "bob-var.set", Way::Box, "MSGBOX Error|Error creating file /data/Aard/bob-var.set"},
    {"end", "write", "bob.set", Way::Spoken, Logged},
};

constexpr Road Roads[] = {
    {"start", [](RunningProgram& run) { run.Start(); }},
    {"connect", [](RunningProgram& run) { run.Try("#CONNECT bob"); }},
    {"a line of the game", [](RunningProgram& run) { run.memory.sockets.Receive(1, "A troll arrives.\r\n"); }},
    {"a typed line", [](RunningProgram& run) { run.Try("look"); }},
    {"options", [](RunningProgram& run) { run.corvid.saving.SaveOptionsFile(); }},
    {"scripts", [](RunningProgram& run) { run.Try("#SAVE"); }},
    {"by the way", [](RunningProgram& run) { run.corvid.saving.AutoSave(); }},
    {"by the way, a state",
     [](RunningProgram& run) {
       run.corvid.sessionState.CharFlags[FindCharacter(run.corvid.sessionState, "bob")] |= charflag::SimpleControl;
       run.corvid.saving.AutoSave();
     }},
    {"reload", [](RunningProgram& run) { run.Try("#RELOAD"); }},
    {"load", [](RunningProgram& run) { run.Try("#LOAD fight.set"); }},
    {"speech", [](RunningProgram& run) { run.corvid.speechSettings.SaveSpeech(); }},
    {"characters", [](RunningProgram& run) { run.corvid.characters.writeMudFile(); }},
    {"image", [](RunningProgram& run) { run.corvid.saving.WriteImage("/data/full.set"); }},
    {"a data file written", [](RunningProgram& run) { run.Try("#FILE 1 notes.txt;#WRITE 1 {one};#CLOSE 1"); }},
    {"a data file read", [](RunningProgram& run) { run.Try("#FILE 1 old.txt;#READ 1 line;#CLOSE 1"); }},
    {"a data file deleted", [](RunningProgram& run) { run.Try("#DELFILE old.txt"); }},
    {"end", [](RunningProgram& run) { run.corvid.quit(true); }},
};

void PrintTo(const Road& road, std::ostream* out) {
  *out << road.Name;
}

class ToldFaults : public testing::TestWithParam<Road> {
 protected:
  static bool Is(const char* name) { return std::string(GetParam().Name) == name; }
  static bool Connected() { return !Is("start") && !Is("connect"); }
  static void Prepare(RunningProgram& run);
  std::vector<std::pair<std::string, std::string>> Operations();
  void ExpectTold(RunningProgram& run, const std::string& operation, const std::string& path);
  static void ExpectGoesOn(RunningProgram& run);
  static void ExpectNothingLost(RunningProgram& run);

  std::vector<Effect> undisturbed;
};

void ToldFaults::Prepare(RunningProgram& run) {
  MemoryFiles& files = run.memory.files;
  files.Put("/data/corvid.set", "#Configure MarginBell 60\r\n");
  files.Put("/data/Character.mud",
            Scramble("\"Aard\",\"aard.example\",\"\",\"4000\",\"Bob\",\"bob\",\"pass\",2,\"\"\r\n"));
  files.Put("/data/start.set", "#GALIAS s {score}\r\n");
  files.Put("/data/fight.set", "#ALIAS h {hit}\r\n");
  files.Put("/data/old.txt", "old words\r\n");
  files.Put("/data/Aard/Aard.set", "#ALIAS g {glance}\r\n");
  files.Put("/data/Aard/bob.set", "#ALIAS k {kill}\r\n");
  files.Put("/data/Aard/bob-var.set", "#Var silver {7} {}\r\n");
  files.Put("/data/Aard/bob-Char.set", "#Char bob\r\n#ALIAS c {cast}\r\n");
  files.Put("/data/Aard/bob.Tab", "sword\r\n");
  run.memory.loop.Idle = [&run] {  // the player reads each box and says yes
    if (run.memory.face.OpenModel() == nullptr) return false;
    run.memory.face.Will(run.memory.face.OpenModel()->Controls.size() > 3 ? "Yes" : "Ok");
    return run.memory.face.AnswerDialog();
  };
  if (Is("start")) return;
  ASSERT_TRUE(run.Start());
  if (Is("connect")) return;
  run.Do("#CONNECT bob");
  run.Do("#VAR gold 12");
  run.ChangeScript("/data/Aard/bob.set", "#ALIAS k {kick}\r\n");
  run.memory.sockets.TakeWritten(1);
  run.memory.effects.Clear();
}

// All that the road asks of the disk when nothing fails.
std::vector<std::pair<std::string, std::string>> ToldFaults::Operations() {
  RunningProgram run;
  Prepare(run);
  std::vector<std::pair<std::string, std::string>> asked;
  run.memory.files.Fail = [&](const std::string& operation, const std::string& path) {
    const auto before = std::find(asked.begin(), asked.end(), std::pair(std::string("read"), path));
    if (Is("start") && operation == "read" && before != asked.end()) before->first = "first read";
    asked.emplace_back(operation, path);
    return std::string();
  };
  GetParam().Go(run);
  undisturbed = run.memory.effects.All();
  return asked;
}

const Row* FindRow(const std::string& road, const std::string& operation, const std::string& path) {
  for (const Row& row : Rows)
    if (road == row.Road && (operation == row.Operation || *row.Operation == '\0') && EndsWithText(path, row.PathEnd))
      return &row;
  return nullptr;
}

bool AnyBegins(const Texts& texts, const std::string& start) {
  return std::any_of(texts.begin(), texts.end(), [&](const std::string& text) { return text.starts_with(start); });
}

void ToldFaults::ExpectTold(RunningProgram& run, const std::string& operation, const std::string& path) {
  const Row* row = FindRow(GetParam().Name, operation, path);
  ASSERT_NE(row, nullptr) << "nobody has said what is told of this";
  if (row->Told == Way::Nothing) {
    EXPECT_EQ(run.memory.effects.All(), undisturbed);
    EXPECT_EQ(run.corvid.optionsState.MarginBell, 60);
    return;
  }
  EXPECT_TRUE(AnyBegins(run.memory.effects.Of(row->Told == Way::Box ? "dialog" : "speech"), row->Text))
      << run.memory.effects.Transcript();
  if (row->Told == Way::Box) return;
  std::string named = run.ErrorLog();
  if (run.Exists("/data/error.log")) named += run.Read("/data/error.log");
  EXPECT_NE(Upper(named).find(Upper(path)), std::string::npos) << named;
}

void ToldFaults::ExpectGoesOn(RunningProgram& run) {
  if (run.Ended()) return;
  if (FindCharacter(run.corvid.sessionState, "bob") == 0) run.Do("#MUD bob Aard other.example 4000 Bob pass");
  if (!run.memory.sockets.Connected(1)) run.Do("#CONNECT bob");
  run.memory.sockets.TakeWritten(1);
  run.memory.effects.Clear();
  run.memory.sockets.Receive(1, "A raven lands.\r\n");
  run.Do("wave");
  EXPECT_EQ(run.memory.effects.Of("speech"), Texts({"1 A raven lands."}));
  EXPECT_EQ(run.memory.sockets.TakeWritten(1), "wave\r\n");
  if (Connected() && !Is("reload")) {  // which takes everything from the disk
    EXPECT_EQ(run.Variable("gold"), "12");
  }
  run.corvid.quit(true);
  EXPECT_TRUE(run.Ended());
}

// After the end each thing that was known stands in some file.
void ToldFaults::ExpectNothingLost(RunningProgram& run) {
  std::string disk;
  for (const std::string& folder : {std::string("/data/"), std::string("/data/Aard/")})
    for (const std::string& name : run.memory.files.FileNames(folder)) {
      const std::string text = run.Read(folder + name);
      disk += name.starts_with("Character.") ? Scramble(text) : text;
    }
  for (const char* wanted :
       {"MarginBell 60", "aard.example", "{score}", "{hit}", "{glance}", "silver {7}", "{cast}", "sword"})
    EXPECT_NE(disk.find(wanted), std::string::npos) << wanted << " is lost";
  if (Connected() && !Is("end")) {
    EXPECT_NE(disk.find("gold {12}"), std::string::npos);
    EXPECT_NE(disk.find("{kick}"), std::string::npos);
  }
  if (!Is("a data file deleted") || run.Exists("/data/old.txt")) {
    EXPECT_EQ(run.Read("/data/old.txt"), "old words\r\n");
  }
}

TEST_P(ToldFaults, AndNothingIsLost) {
  const auto operations = Operations();
  ASSERT_FALSE(operations.empty());
  for (std::size_t failing = 0; failing < operations.size(); ++failing) {
    const auto& [operation, path] = operations[failing];
    SCOPED_TRACE(operation + " " + path + ", operation " + std::to_string(failing + 1));
    RunningProgram run;
    Prepare(run);
    std::size_t asked = 0;
    run.memory.files.Fail = [&](const std::string&, const std::string&) {
      return asked++ == failing ? "Input/output error" : "";
    };
    GetParam().Go(run);
    run.memory.files.Fail = nullptr;
    ExpectTold(run, operation, path);
    ExpectGoesOn(run);
    ExpectNothingLost(run);
  }
}

INSTANTIATE_TEST_SUITE_P(Roads, ToldFaults, testing::ValuesIn(Roads), [](const auto& each) {
  std::string name = each.param.Name;
  std::erase_if(name, [](char c) { return c == ' ' || c == ','; });
  return name;
});

constexpr const char* VariableFile = "/data/Aard/bob-var.set";
constexpr const char* TwoAndAHalf = "#Var silver {7} {}\r\n#Nonsense\r\n#Var tin {9} {}\r\n";

TEST(SavedVariables, ThatFailOnTheWayStayBesideTheNewOnes) {
  RunningProgram run;
  run.memory.files.Put(VariableFile, TwoAndAHalf);
  run.memory.face.Will("Ok");
  run.StartAndConnect(charflag::KeepVariables);
  run.Define("gold", "12");
  run.corvid.quit(true);
  EXPECT_EQ(run.Read("/data/Aard/bob-var.bad"), TwoAndAHalf);
  EXPECT_EQ(run.Read(VariableFile), "#Var gold {12} {}\r\n#Var silver {7} {7}\r\n");
}

TEST(SavedVariables, ThatCanBeNeitherReadNorKeptAreNotOverwritten) {
  RunningProgram run;
  run.memory.files.Put(VariableFile, "#Var silver {7} {}\r\n");
  run.memory.files.Fail = [](const std::string& operation, const std::string& path) {
    return path == VariableFile && operation != "write" ? "Permission denied" : "";
  };
  run.StartAndConnect(charflag::KeepVariables);
  run.Define("gold", "12");
  run.memory.face.Will("Ok");
  run.corvid.quit(true);
  EXPECT_EQ(run.Asked(), Texts({std::string("MSGBOX Error|Error creating file ") + VariableFile}));
  run.MakeRoom();
  EXPECT_EQ(run.Read(VariableFile), "#Var silver {7} {}\r\n");
}

TEST(SavedVariables, ThatWereReadWholeLeaveNothingBeside) {
  RunningProgram run;
  run.memory.files.Put(VariableFile, "#Var silver {7} {}\r\n");
  run.StartAndConnect(charflag::KeepVariables);
  run.corvid.quit(true);
  EXPECT_FALSE(run.Exists("/data/Aard/bob-var.bad"));
}

}  // namespace
}  // namespace corvid
