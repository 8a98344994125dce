// SPDX-License-Identifier: GPL-3.0-or-later
// The json face over pipes, with a small program behind it.
#include "platform/qt/json_face.h"

#include <gtest/gtest.h>

#include <QTimer>
#include <nlohmann/json.hpp>

#include "core/keys.h"
#include "platform/qt/clock.h"
#include "platform/qt/json_request.h"
#include "qt_program.h"

namespace corvid {
namespace {

using Json = nlohmann::json;

// A program of one entry, one viewport and one dialog: F5 asks, F6 waits, F7 speaks, Enter hands the line over.
class SmallProgram : public FaceEvents, public JsonQueries, public DialogEvents {
 public:
  SmallProgram(QtEventLoop& eventLoop, JsonFace& jsonFace) : loop(eventLoop), face(jsonFace) {
    face.SetEvents(this);
    face.AttachEntry(entry);
    face.SetEntryLabel("Entry line");
    face.AttachViewport(3, true, viewport);
    face.AttachViewport(4, true, other);
    face.ShowMain();
  }
  void KeyDown(int16 KeyCode, int16 Shift) override {
    keys += "d" + std::to_string(KeyCode) + "/" + std::to_string(Shift) + " ";
    if (KeyCode == keycode::F1 + 4) Ask();
    if (KeyCode == keycode::F1 + 7) face.ShowListMenu({"MAIN", "Main menu", {"File", "caf\xe9"}, 1});
    if (KeyCode == keycode::F1 + 7) menuOpen = true;
    if (KeyCode == keycode::Escape) face.CloseListMenu();
    if (KeyCode == keycode::F1 + 8) TellEverything();
    if (KeyCode == keycode::F1 + 6) entry.SetText("xyz");
    if (KeyCode == keycode::Delete) {
      viewport.Append("a\r\n");
      other.Append("b\r\n");
      viewport.Append("");
      other.Append("c\r\n");
      viewport.Append("d\r\n");
    }
    if (KeyCode == keycode::Insert)
      face.Notice(std::to_string(face.ClipboardText().size()) + " " + face.ClipboardText());
    if (KeyCode == keycode::F1 + 10) AskWithEveryControl();
    if (KeyCode == keycode::F1 + 11) jobUntil = clock.MonotonicMilliseconds() + 30;
    if (KeyCode == keycode::F1 + 9) {
      Ask();
      const std::string first = answer;
      Ask();
      answer = first + "|" + answer;
    }
    if (KeyCode == keycode::F1 + 5) {
      const auto end = clock.MonotonicMilliseconds() + 30;
      while (clock.MonotonicMilliseconds() < end) loop.WaitEvents(5);
    }
  }
  void KeyTyped(const std::string& character) override {
    keys += "t" + character + " ";
    if (character != "\r") return;
    face.Engine().Speak(1, "heard " + entry.Text());
    viewport.Append(entry.Text() + "\r\n");
    viewport.Append("\xe9\r\n");
    face.NoteSend(3, entry.Text());
    entry.SetText("");
  }
  void KeyUp(int16 KeyCode, int16 Shift) override {
    keys += "u" + std::to_string(KeyCode) + "/" + std::to_string(Shift) + " ";
  }
  void FocusChanged(MainFocus) override {}
  bool CloseRequested() override { return mayClose; }

  TextModel& OutputText() override { return viewport; }
  std::vector<JsonSession> SessionList() const override { return {{3, "bob", "connected", true}}; }
  JsonMenu MenuShown() const override {
    if (!menuOpen) return {};
    return {true, "MAIN", {"File", "Edit"}, 1};
  }
  bool BufferShown(int16 number, std::string& name, std::string& text) const override {
    name = "start.set";
    text = "#VAR";
    return number == 4;
  }

  void TellEverything() {
    for (int i = 0; i < 3; ++i) face.Beep();
    face.SetTitle("Corvid [bob");
    face.SetTitle("Corvid [bob");
    face.Engine().Purge(2);
    face.Reader().Say(4, "word", true);
    face.NoteCleared(3);
    face.NoteSession(3, "closed");
    face.SetClipboardText("caf\xe9");
    face.StartProgram("Notepad.exe ", "/data/a.set");
    face.Notice("There is no voice.");
    face.SetFocus(MainFocus::Output);
    face.Beep();
  }

  // One row for each kind of control, in each state that is told.
  void AskWithEveryControl() {
    model = DialogModel{};
    model.Code = "ALL";
    model.Title = "Ev\xe9ry control";
    const auto add = [&](ControlKind kind, const char* caption) -> DialogControl& {
      DialogControl& control = model.Controls.emplace_back();
      control.Kind = kind;
      control.Caption = caption;
      return control;
    };
    add(ControlKind::Label, "Hear me").Text = "Hear me";
    DialogControl& password = add(ControlKind::TextBox, "Password");
    password.Text = "secret";
    password.Masked = true;
    add(ControlKind::Box, "Notes").Text = "one\r\ntwo";
    DialogControl& ways = add(ControlKind::List, "Ways");
    ways.Items = {"north", "south"};
    ways.ListIndex = 1;
    DialogControl& marks = add(ControlKind::List, "Marks");
    marks.Items = {"a", "b", "c"};
    marks.MultiSelect = true;
    marks.Selected = {true, false, true};
    add(ControlKind::Check, "Both").Value = 2;
    add(ControlKind::Option, "First").Value = 1;
    DialogControl& speed = add(ControlKind::Scroll, "Speed");
    speed.Max = 100;
    speed.Value = 40;
    DialogControl& ok = add(ControlKind::Button, "OK");
    ok.Text = "OK";
    ok.Enabled = false;
    DialogControl& cancel = add(ControlKind::Button, "Leave it");
    cancel.Text = "Cancel";
    cancel.Cancel = true;
    add(ControlKind::Check, "Hidden").Visible = false;
    ShowAndWait();
  }

  void ShowAndWait() {
    open = true;
    face.Dialogs().OpenDialog(model, *this);
    while (open && !loop.Ending()) loop.WaitEvents(-1);
  }

  void Ask() {
    model = DialogModel{};
    model.Code = "TEXTPROMPT";
    model.Title = "Title";
    DialogControl& box = model.Controls.emplace_back();
    box.Kind = ControlKind::TextBox;
    box.Caption = "Name?";
    DialogControl& ok = model.Controls.emplace_back();
    ok.Kind = ControlKind::Button;
    ok.Text = ok.Caption = "OK";
    ok.Default = true;
    ShowAndWait();
  }
  void DialogHappened(int32, DialogEvent event, int16&, int16&) override {
    if (event == DialogEvent::Click) DialogCloseRequested();
  }
  void DialogCloseRequested() override {
    answer = model.Controls[0].Text;
    open = false;
    face.Dialogs().CloseDialog();
  }

  QtEventLoop& loop;
  JsonFace& face;
  SystemClock clock;
  TextModel entry, viewport, other;
  DialogModel model;
  std::string keys, answer;
  std::int64_t jobUntil = 0;
  bool open = false;
  bool menuOpen = false;
  bool mayClose = true;
};

class JsonFaceTest : public testing::Test {
 protected:
  // Feeds input, runs to its end, returns what was printed.
  std::vector<Json> Run(const std::string& input, const std::string& events = "") {
    Pipes pipes(input);
    if (!jobIsDue) pipes.EndInput();
    {
      QtProgram qt;
      const SystemClock clock;
      JsonFace face(qt.loop, clock, {events, pipes.In(), pipes.Out()});
      SmallProgram program(qt.loop, face);
      program.mayClose = mayClose;
      const auto jobDue = [&] { return jobIsDue || clock.MonotonicMilliseconds() < program.jobUntil; };
      const auto jobEnds = [&] {
        face.Notice("the job is done");
        jobIsDue = false;
        pipes.EndInput();
      };
      if (jobIsDue) QTimer::singleShot(20, jobEnds);
      face.Start({&program, jobDue, [&] { qt.loop.End(5); }});
      face.NoteExit(qt.loop.Run());
      keys = program.keys;
      answer = program.answer;
      jobWasOver = !jobDue();
    }
    const std::string text = pipes.Written();
    std::vector<Json> lines;
    for (std::size_t at = 0; at < text.size();) {
      const std::size_t end = text.find('\n', at);
      lines.push_back(Json::parse(text.substr(at, end - at)));
      at = end + 1;
    }
    return lines;
  }
  static std::string Names(const std::vector<Json>& events) {
    std::string names;
    for (const Json& event : events) names += (names.empty() ? "" : " ") + event.at("event").get<std::string>();
    return names;
  }
  std::string keys, answer;
  bool mayClose = true;
  bool jobIsDue = false;  // set: for the first 20 milliseconds, and the input goes on as long
  bool jobWasOver = false;
};

TEST_F(JsonFaceTest, ALineGoesThroughTheKeyPath) {
  const auto events = Run("{\"line\":\"look\"}\n");
  EXPECT_EQ(Names(events), "speech display send ready exit");
  EXPECT_EQ(events[0], Json::parse(R"({"event":"speech","channel":1,"text":"heard look","type":3})"));
  EXPECT_EQ(events[1], Json::parse(R"({"event":"display","session":3,"text":"look\r\né\r\n"})"));
  EXPECT_EQ(events[2], Json::parse(R"({"event":"send","session":3,"text":"look"})"));
  EXPECT_EQ(events[3].at("handled"), 1);
  EXPECT_EQ(events[4].at("code"), 5);
  EXPECT_EQ(keys, "d13/0 t\r u13/0 ");
}

TEST_F(JsonFaceTest, EveryEventHasItsFields) {
  const std::vector<std::string> expected{R"({"event":"beep"})",
                                          R"({"event":"title","text":"Corvid [bob"})",
                                          R"({"event":"silence","channel":2})",
                                          R"({"event":"silence","channel":4})",
                                          R"({"event":"speech","channel":4,"text":"word","type":1})",
                                          R"({"event":"cleared","session":3})",
                                          R"({"event":"session","session":3,"state":"closed"})",
                                          R"({"event":"clipboard","text":"café"})",
                                          R"({"event":"program","program":"Notepad.exe ","file":"/data/a.set"})",
                                          R"({"event":"notice","text":"There is no voice."})",
                                          R"({"event":"focus","window":"output"})",
                                          R"({"event":"beep"})",
                                          R"({"event":"ready","handled":1})",
                                          R"({"event":"exit","code":5})"};
  const auto events = Run("{\"key\":\"F9\"}\n");
  ASSERT_EQ(events.size(), expected.size()) << Names(events);
  for (std::size_t i = 0; i < expected.size(); ++i) EXPECT_EQ(events[i], Json::parse(expected[i]));
  EXPECT_EQ(Names(Run("{\"key\":\"F9\"}\n", "none")), "ready exit");
}

TEST_F(JsonFaceTest, TheClipboardIsFilledFromBothSides) {
  const auto events =
      Run("{\"clipboard\":\"gr\u00fcn\"}\n{\"key\":\"Insert\"}\n{\"key\":\"F9\"}\n{\"key\":\"Insert\"}\n",
          "clipboard,notice");
  ASSERT_EQ(Names(events), "notice clipboard notice notice ready exit");
  EXPECT_EQ(events[0].at("text"), "5 gr\u00fcn");
  EXPECT_EQ(events[3].at("text"), "5 caf\u00e9") << "in UTF-8, as other programs put it there";
}

TEST_F(JsonFaceTest, ALineGoesToTheEntryWhereverTheFocusIs) {
  const auto events = Run("{\"key\":\"F9\"}\n{\"line\":\"look\"}\n{\"get\":\"focus\"}\n", "focus,send");
  ASSERT_EQ(Names(events), "focus focus send state ready exit");
  EXPECT_EQ(events[0].at("window"), "output");
  EXPECT_EQ(events[1].at("window"), "entry");
  EXPECT_EQ(events[2].at("text"), "look");
}

TEST_F(JsonFaceTest, AnOutputThatNobodyReadsEndsTheProgram) {
  std::array<int, 2> in{};
  std::array<int, 2> out{};
  ASSERT_EQ(pipe(in.data()), 0);
  ASSERT_EQ(pipe(out.data()), 0);
  close(out[0]);
  int argc = 1;
  std::string name = "test";
  std::array<char*, 2> argv{name.data(), nullptr};
  {
    QtEventLoop loop(argc, argv.data());
    const SystemClock clock;
    JsonFace face(loop, clock, {"", in[0], out[1]});
    SmallProgram program(loop, face);
    EXPECT_TRUE(face.PlayerThere());
    face.Start({&program, {}, [&] { loop.End(5); }});
    QTimer::singleShot(10000, [&] { loop.End(6); });
    EXPECT_EQ(loop.Run(), 5) << "the input is still open";
    EXPECT_FALSE(face.PlayerThere());
  }
  for (const int descriptor : {in[0], in[1], out[1]}) close(descriptor);
}

TEST_F(JsonFaceTest, WindowTextOfOneGoIsOneEventForEachSession) {
  const auto events = Run("{\"key\":\"Delete\"}\n", "display");
  ASSERT_EQ(Names(events), "display display display ready exit");
  EXPECT_EQ(events[0], Json::parse(R"({"event":"display","session":3,"text":"a\r\n"})"));
  EXPECT_EQ(events[1], Json::parse(R"({"event":"display","session":4,"text":"b\r\nc\r\n"})"));
  EXPECT_EQ(events[2], Json::parse(R"({"event":"display","session":3,"text":"d\r\n"})"));
}

TEST_F(JsonFaceTest, KeysAreWholeWithTheirModifiers) {
  Run("{\"key\":\"Control-Shift-a\"}\n{\"key\":\"Alt\"}\n{\"down\":\"Shift\"}\n{\"key\":\"a\"}\n{\"up\":\"Shift\"}\n");
  EXPECT_EQ(keys, "d16/1 d17/3 d65/3 u65/3 u17/1 u16/0 d18/4 u18/0 d16/1 d65/1 tA u65/1 u16/0 ");
}

TEST_F(JsonFaceTest, TypingKeepsItsOrderThoughAHandlerPumps) {
  Run("{\"key\":\"F6\"}\n{\"type\":\"a\xc3\xa9\"}\n");
  EXPECT_EQ(keys, "d117/0 u117/0 d65/0 ta u65/0 d231/0 t\xc3\xa9 u231/0 ");
}

TEST_F(JsonFaceTest, ADialogIsDrivenByKeysAndItsCharacterStaysThere) {
  const auto events =
      Run("{\"key\":\"F5\"}\n{\"type\":\"Ann\"}\n{\"get\":\"dialog\"}\n{\"key\":\"Enter\"}\n{\"wait\":0.02}\n");
  EXPECT_EQ(Names(events), "dialog focus state dialog-closed ready exit");
  EXPECT_EQ(events[0].at("controls")[0], Json::parse(R"({"kind":"text","caption":"Name?","value":"","focus":true})"));
  EXPECT_EQ(events[2].at("dialog").at("controls")[0].at("value"), "Ann");
  EXPECT_EQ(answer, "Ann");
  EXPECT_EQ(keys, "d116/0 u13/0 u116/0 ");  // no character of Enter
}

TEST_F(JsonFaceTest, ADialogIsToldWithEveryControlAndItsState) {
  const auto events = Run("{\"key\":\"F11\"}\n{\"get\":\"focus\"}\n{\"key\":\"Escape\"}\n");
  EXPECT_EQ(Names(events), "dialog focus state dialog-closed ready exit");
  EXPECT_EQ(events[0], Json::parse(R"({"event":"dialog","code":"ALL","title":"Evéry control","controls":[
    {"kind":"label","caption":"Hear me","value":"Hear me","focus":false},
    {"kind":"text","caption":"Password","value":"******","focus":true},
    {"kind":"box","caption":"Notes","value":"one\r\ntwo","focus":false},
    {"kind":"list","caption":"Ways","value":1,"items":["north","south"],"focus":false},
    {"kind":"list","caption":"Marks","value":-1,"items":["a","b","c"],"selected":[0,2],"focus":false},
    {"kind":"check","caption":"Both","value":2,"focus":false},
    {"kind":"option","caption":"First","value":1,"focus":false},
    {"kind":"scroll","caption":"Speed","value":40,"focus":false},
    {"kind":"button","caption":"OK","value":"OK","enabled":false,"focus":false},
    {"kind":"button","caption":"Leave it","value":"Cancel","focus":false},
    {"kind":"check","caption":"Hidden","value":0,"enabled":false,"focus":false}]})"));
  EXPECT_EQ(events[1], Json::parse(R"({"event":"focus","window":"dialog","control":1,"caption":"Password"})"));
  EXPECT_EQ(events[2], Json::parse(R"({"event":"state","what":"focus","window":"dialog","control":1})"));
  EXPECT_EQ(events[3], Json::parse(R"({"event":"dialog-closed","code":"ALL"})"));
}

TEST_F(JsonFaceTest, WhileAJobIsPutOffTheNextLineWaitsAndNothingIsReady) {
  const auto events = Run("{\"key\":\"F12\"}\n{\"get\":\"title\"}\n");
  EXPECT_EQ(Names(events), "state ready exit");
  EXPECT_TRUE(jobWasOver) << "the end of the input waited too";
}

TEST_F(JsonFaceTest, ItIsReadyOnlyBehindTheJobThatWasPutOff) {
  jobIsDue = true;
  EXPECT_EQ(Names(Run("")), "notice ready exit");
}

TEST_F(JsonFaceTest, AnswersThatAreSentAheadMeetOneDialogAfterTheOther) {
  const auto events = Run("{\"key\":\"F10\"}\n{\"line\":\"Ann\"}\n{\"line\":\"Bob\"}\n{\"line\":\"look\"}\n", "send");
  EXPECT_EQ(answer, "Ann|Bob");
  EXPECT_EQ(Names(events), "send ready exit");
  EXPECT_EQ(events[0].at("text"), "look");
}

TEST_F(JsonFaceTest, ReadyNamesTheDialogThatWaits) {
  const auto events = Run("{\"key\":\"F5\"}\n{\"wait\":0.02}\n");
  EXPECT_EQ(Names(events), "dialog focus ready exit");
  EXPECT_EQ(events[2].at("modal"), "TEXTPROMPT");
}

TEST_F(JsonFaceTest, AMenuIsToldAndTakesKeysAlone) {
  const auto events =
      Run("{\"key\":\"F8\"}\n{\"line\":\"look\"}\n{\"key\":\"Escape\"}\n{\"line\":\"look\"}\n", "menu,menu-closed");
  EXPECT_EQ(Names(events), "menu error menu-closed ready exit");
  EXPECT_EQ(events[0], Json::parse(R"({"event":"menu","name":"MAIN","items":["File","café"],"index":1})"));
  EXPECT_NE(events[1].at("text").get<std::string>().find("MAIN"), std::string::npos);
  EXPECT_EQ(events[2].at("name"), "MAIN");
  EXPECT_EQ(keys, "d119/0 u119/0 d27/0 u27/0 d13/0 t\r u13/0 ");
  EXPECT_EQ(Names(Run("{\"key\":\"F8\"}\n{\"key\":\"Escape\"}\n", "send")), "ready exit");
}

TEST_F(JsonFaceTest, CloseClosesTheDialogAndThenTheWindow) {
  const auto events = Run("{\"key\":\"F5\"}\n{\"close\":true}\n{\"close\":true}\n{\"line\":\"never\"}\n");
  EXPECT_EQ(Names(events), "dialog focus dialog-closed exit");
  mayClose = false;
  EXPECT_EQ(Names(Run("{\"close\":true}\n{\"get\":\"title\"}\n")), "state ready exit");
}

TEST_F(JsonFaceTest, StatesTellWhatIsThere) {
  const auto events =
      Run("{\"type\":\"x\"}\n{\"get\":\"sessions\"}\n{\"get\":\"buffer\",\"number\":4}\n{\"get\":\"focus\"}\n"
          "{\"line\":\"abc\"}\n{\"select\":{\"window\":\"output\",\"start\":1,\"length\":2}}\n{\"get\":\"output\"}\n",
          "none");
  ASSERT_EQ(Names(events), "state state state state ready exit");
  EXPECT_EQ(events[0].at("sessions")[0].at("reference"), "bob");
  EXPECT_EQ(events[1].at("text"), "#VAR");
  EXPECT_EQ(events[2].at("window"), "entry");
  EXPECT_EQ(events[3].at("start"), 1);
  EXPECT_EQ(events[3].at("length"), 2);
  EXPECT_EQ(events[3].at("text"), "abc\r\n\xc3\xa9\r\n");
}

TEST_F(JsonFaceTest, EachThingThatCanBeAskedForHasItsFields) {
  const std::pair<const char*, const char*> asked[] = {
      {R"("get":"entry")", R"({"what":"entry","text":"xyz","start":1,"length":2,"locked":false,"label":"Entry line"})"},
      {R"("get":"output")", R"({"what":"output","text":"","start":0,"length":0,"locked":false})"},
      {R"("get":"buffer","number":4)",
       R"({"what":"buffer","number":4,"exists":true,"name":"start.set","text":"#VAR"})"},
      {R"("get":"title")", R"({"what":"title","text":""})"},
      {R"("get":"focus")", R"({"what":"focus","window":"entry"})"},
      {R"("get":"dialog")", R"({"what":"dialog","open":false})"},
      {R"("get":"menu")", R"({"what":"menu","open":false,"name":"","items":[],"index":-1})"},
      {R"("get":"sessions")",
       R"({"what":"sessions","sessions":[{"session":3,"reference":"bob","state":"connected","current":true}]})"}};
  std::string input = "{\"key\":\"F7\"}\n{\"select\":{\"window\":\"entry\",\"start\":1,\"length\":2}}\n";
  for (const auto& [request, fields] : asked) input += std::string("{") + request + "}\n";
  const auto events = Run(input + "{\"key\":\"F8\"}\n{\"get\":\"menu\"}\n", "none");
  ASSERT_EQ(events.size(), std::size(asked) + 3) << Names(events);
  for (std::size_t i = 0; i < std::size(asked); ++i) {
    Json expected = Json::parse(asked[i].second);
    expected["event"] = "state";
    EXPECT_EQ(events[i], expected);
  }
  EXPECT_EQ(
      events[std::size(asked)],
      Json::parse(R"({"event":"state","what":"menu","open":true,"name":"MAIN","items":["File","Edit"],"index":1})"));
}

TEST_F(JsonFaceTest, BadLinesGetAnErrorAndNothingElse) {
  const auto events = Run(
      "nonsense\n[1]\n{}\n{\"key\":\"Hyper-Q\"}\n{\"wait\":-1}\n{\"wait\":1e300}\n{\"get\":\"moon\"}\n{\"line\":5}\n"
      "{\"select\":{\"window\":\"entry\",\"start\":-1}}\n\xff\xfe\n\n{\"close\":false}");
  EXPECT_EQ(Names(events), "error error error error error error error error error error error error ready exit");
  EXPECT_EQ(keys, "");
}

TEST_F(JsonFaceTest, TheFilterLimitsWhatIsPrinted) {
  EXPECT_EQ(Names(Run("{\"line\":\"x\"}\n", "speech, send")), "speech send ready exit");
  EXPECT_EQ(JsonFace::UnknownEvents("speech,none, beep"), "");
  EXPECT_EQ(JsonFace::UnknownEvents("speech,noise"), "noise");
}

TEST(JsonRequestTest, NamesOfKeys) {
  EXPECT_EQ(ParseJsonRequest("{\"key\":\"control-home\"}").KeyCode, keycode::Home);
  EXPECT_EQ(ParseJsonRequest("{\"key\":\"control-home\"}").Shift, ControlBit);
  EXPECT_EQ(ParseJsonRequest("{\"down\":\"applications\"}").KeyCode, keycode::Applications);
  const JsonRequest both = ParseJsonRequest("{\"key\":\"Shift-Alt\"}");
  EXPECT_EQ(both.KeyCode, keycode::Alt);
  EXPECT_EQ(both.Shift, ShiftBit);
}

}  // namespace
}  // namespace corvid
