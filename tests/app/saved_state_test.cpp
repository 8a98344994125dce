// SPDX-License-Identifier: GPL-3.0-or-later
// What one run saves, the next one finds: the whole program over the in-memory platform.
#include "core/text.h"
#include "files/option_rows.h"
#include "running_program.h"

namespace corvid {
namespace {

constexpr const char* OptionsFile = "/data/corvid.set";

// One run of the program on a disk that outlives it.
struct OneRun {
  explicit OneRun(MemoryPlatform& memory) : mem(memory), corvid(memory.All()) {}
  bool Start() { return corvid.Start({.DataFolder = "/data", .Connect = {}, .PracticePort = {}}); }
  void Type(const std::string& line) { TypeLine(corvid, line); }
  std::string Options() {
    std::string text;
    corvid.saving.SaveOptions(text);
    return text;
  }
  MemoryPlatform& mem;
  Corvid corvid;
};

void PrepareDisk(MemoryPlatform& mem) {
  PutStartFiles(mem.files, {});
  mem.files.Put("/data/start.set", "");  // where the signs of the language change, a remark would be a command
}

// A run that changes its options and saves them; their text.
template <typename Change>
std::string SavedByARun(MemoryPlatform& mem, Change&& change) {
  PrepareDisk(mem);
  OneRun run(mem);
  EXPECT_TRUE(run.Start());
  change(run);
  const std::string saved = run.Options();
  EXPECT_TRUE(run.corvid.saving.SaveOptionsFile());
  return saved;
}

TEST(SavedOptions, OfAChangedRunAreThoseOfTheNext) {
  MemoryPlatform mem;
  const std::string saved = SavedByARun(mem, [](OneRun& run) {
    for (const char* line :
         {"#CONFIGURE ColourDisplay on", "#CONFIGURE OutputWindowSize 500", "#CONFIGURE OutputWindowPercent 60",
          "#CONFIGURE LineTerminator %char(33)", "#CONFIGURE ScriptReadOnly yes", "#CONFIGURE EntryByLine off",
          "#CONFIGURE RemoveAsciiArt 2", "#CONFIGURE BackgroundColour blue", "#CONFIGURE ForegroundColour { white }",
          "#CONFIGURE Editor {nano -w }", "#CONFIGURE EndOfLineCommentChar {--}", "#CONFIGURE CommandSeparator {&}",
          "#CONFIGURE CommentChar {*}", "#CONFIGURE EscapeChar {^}", "#CONFIGURE CommandChar {;}"})
      run.Type(line);
  });
  EXPECT_EQ(mem.files.ReadWhole(OptionsFile), saved);
  EXPECT_TRUE(saved.starts_with(";Configure CommandChar {^;}\r\n;Configure EscapeChar {^^}\r\n")) << saved;
  OneRun next(mem);
  ASSERT_TRUE(next.Start());
  EXPECT_EQ(next.Options(), saved);
  EXPECT_EQ(next.corvid.optionsState.LineTerminator, "!");
  EXPECT_EQ(next.corvid.optionsState.Editor, "nano -w ");
  EXPECT_EQ(next.corvid.bufferState.BufferText[buffer::ErrorLog], "");
}

// A letter or a digit as a sign of the language stands in the words and values of the saved file itself.
TEST(SavedOptions, WithAnySignOfTheLanguageAreThoseOfTheNextRun) {
  const std::pair<const char*, char OptionsState::*> signs[] = {{"variable", &OptionsState::VariableChar},
                                                                {"escape", &OptionsState::EscapeChar},
                                                                {"command", &OptionsState::CommandChar},
                                                                {"comment", &OptionsState::CommentChar},
                                                                {"verbatim", &OptionsState::PassThruChar}};
  for (const auto& [name, sign] : signs) {
    for (char c = '!'; c <= '~'; ++c) {
      if (std::string_view("{}%#~;:>@/").find(c) != std::string_view::npos) continue;  // fixed, or another sign already
      SCOPED_TRACE(std::string(name) + " " + c);
      MemoryPlatform mem;
      const std::string saved = SavedByARun(mem, [sign = sign, c](OneRun& run) {
        OptionsState& options = run.corvid.optionsState;
        options.SlowWalk = options.Explicit = options.ScriptReadOnly = options.ColourDisplay = true;
        options.AutoLogin = options.EntryByLine = options.CompressOutput = false;
        options.LogRetentionDays = 1234;
        options.OutputWindowSize = 567890;
        options.BackgroundColour = "MAGENTA";
        options.LineTerminator = "\n";
        options.*sign = c;
      });
      OneRun next(mem);
      ASSERT_TRUE(next.Start());
      EXPECT_EQ(next.Options(), saved);
      EXPECT_EQ(next.corvid.bufferState.BufferText[buffer::ErrorLog], "");
    }
  }
}

TEST(SavedOptions, WithSignsThatWereOthersBeforeAreThoseOfTheNextRun) {
  MemoryPlatform mem;
  const std::string saved = SavedByARun(mem, [](OneRun& run) {
    OptionsState& options = run.corvid.optionsState;
    options.VariableChar = '$';
    options.EndOfLineCommentChar = "--";
    options.CommandSeparator = "a@b";
    options.SwitchSession = "a//b}\r\n $c";
  });
  OneRun next(mem);
  ASSERT_TRUE(next.Start());
  EXPECT_EQ(next.Options(), saved);
  EXPECT_EQ(next.corvid.optionsState.CommandSeparator, "a@b");
  EXPECT_EQ(next.corvid.optionsState.SwitchSession, "a//b}\r\n $c");
}

TEST(SavedOptions, OfAnUntouchedRunAreThoseOfTheNext) {
  MemoryPlatform mem;
  SavedByARun(mem, [](OneRun&) {});
  OneRun next(mem);
  ASSERT_TRUE(next.Start());
  EXPECT_EQ(next.corvid.bufferState.BufferText[buffer::ErrorLog], "");
  EXPECT_EQ(next.corvid.optionsState.OutputWindowSize, 30);  // what plain windows hold
  const std::string saved = next.Options();
  ASSERT_TRUE(next.corvid.saving.SaveOptionsFile());
  OneRun third(mem);
  ASSERT_TRUE(third.Start());
  EXPECT_EQ(third.Options(), saved);
}

TEST(SavedOptions, ThatMoveTheFoldersAreToldAndRewritten) {
  MemoryPlatform mem;
  PrepareDisk(mem);
  mem.files.Put(OptionsFile, "#Configure SoundPath {/tmp}\r\n#Configure MarginBell 60\r\n");
  OneRun run(mem);
  mem.face.Will("Ok");
  ASSERT_TRUE(run.Start());
  EXPECT_EQ(mem.face.AnswersLeft(), 0u);
  EXPECT_EQ(run.corvid.optionsState.SoundsFolder, "/data/Sounds/");
  // The rewritten file is from before the plain windows brought their size to thirty.
  EXPECT_EQ(Replace(mem.files.ReadWhole(OptionsFile), "Size  32", "Size  30"), run.Options());
  EXPECT_NE(run.Options().find("MarginBell 60"), std::string::npos);
}

TEST(FirstStart, FromNothingIsAskedStepByStepAndSpoken) {
  MemoryPlatform mem;
  mem.files.Put("/app/start.set", "; the shipped one\r\n");
  mem.files.Put("/app/Sounds/ding.wav", "wave");
  OneRun run(mem);
  mem.face.Will("No");                      // no previous installation
  mem.face.Will("Ok");                      // moving
  mem.face.Will("Ok");                      // moved
  mem.face.Will("Ok");                      // interim speech
  mem.face.Will({"OK", {}, {{1, 2}}, {}});  // the engine
  mem.face.Will("Ok");                      // next step
  ASSERT_TRUE(run.corvid.Start({.DataFolder = {}, .Connect = {}, .PracticePort = {}}));
  EXPECT_EQ(mem.face.AnswersLeft(), 0u);
  const std::string folder = "/home/player/Documents/Corvid/";
  EXPECT_EQ(run.corvid.optionsState.UserDataFolder, folder);
  EXPECT_TRUE(mem.files.FileExists(folder + "start.set"));
  EXPECT_TRUE(mem.files.FileExists(folder + "Sounds/ding.wav"));
  EXPECT_TRUE(mem.files.FileExists(folder + "speech.ini"));
  EXPECT_EQ(run.corvid.speechState.SpeechType[1], 3);
  bool heard = false;
  for (const std::string& text : mem.effects.Of("speech"))
    heard = heard || text.find("previous installation of Corvid") != std::string::npos;
  EXPECT_TRUE(heard);
}

TEST(PracticeStart, KeepsTheShippedFilesNewAndThePlayersOwn) {
  MemoryPlatform mem;
  mem.files.Put("/app/start.set", "#CONFIGURE MarginBell 40\r\n");
  mem.files.Put("/app/examples/fight.set", "; first\r\n");
  const StartRequest request{.DataFolder = "/data", .Connect = {}, .PracticePort = "1"};
  const auto start = [&] {
    OneRun run(mem);
    EXPECT_TRUE(run.corvid.Start(request));
    return run.corvid.optionsState.MarginBell;
  };
  EXPECT_EQ(start(), 40);
  mem.files.Put("/app/start.set", "#CONFIGURE MarginBell 50\r\n");
  mem.files.Put("/data/examples/fight.set", "; mine\r\n");
  mem.files.Put("/app/examples/fight.set", "; second\r\n");
  EXPECT_EQ(start(), 50);
  EXPECT_EQ(mem.files.ReadWhole("/data/examples/fight.set"), "; mine\r\n");
  mem.files.Put("/data/start.set", "#CONFIGURE MarginBell 60\r\n");
  mem.files.Put("/app/start.set", "#CONFIGURE MarginBell 70\r\n");
  EXPECT_EQ(start(), 60);
}

TEST(FirstStart, CancelledEndsTheProgram) {
  MemoryPlatform mem;
  mem.files.Put("/app/start.set", "");
  OneRun run(mem);
  mem.face.Will("No");
  mem.face.Will("Cancel");
  EXPECT_FALSE(run.corvid.Start({.DataFolder = {}, .Connect = {}, .PracticePort = {}}));
  EXPECT_FALSE(mem.face.MainShown());
}

}  // namespace
}  // namespace corvid
