// SPDX-License-Identifier: GPL-3.0-or-later
// Making another session the active one.
#include "fixture.h"

namespace corvid {
namespace {

class SwitchTest : public SessionTest {
 protected:
  int16 Switch(const std::string& name, int16 flags = 0) {
    error.clear();
    channel = CurrentSession;
    return sessions.SetCharacter(name, flags, error, rvar, channel);
  }
  std::string error;
  Parameters rvar;
  int16 channel = 0;
};

TEST_F(SwitchTest, FindsASessionByTheStartOfItsReference) {
  Online("Bob");
  Online("bonnie");
  EXPECT_EQ(Switch("b"), 1) << "the first that matches, in any case";
  EXPECT_EQ(script.CurrentSocket, 1);
  EXPECT_EQ(channel, 1);
  EXPECT_EQ(Spoken(), (Texts{"5 Bob"}));
  EXPECT_EQ(memory.face.Title, "Corvid [Bob");
  EXPECT_TRUE(state.OutputWindow(1).Visible());
  EXPECT_EQ(Switch("BON"), 2);
  EXPECT_EQ(Switch("*b"), 1) << "the reference is matched as a pattern";
  EXPECT_EQ(Switch("?onni"), 2);
  EXPECT_EQ(Switch("nobody"), -1);
  EXPECT_EQ(error, "ER1");
  EXPECT_EQ(script.CurrentSocket, 2);
  EXPECT_EQ(Switch("global"), 0);
}

// Tells when a window comes to the front: that is when a console writes what was missed of it.
struct ShownWindow : TextObserver {
  explicit ShownWindow(EffectLog& log) : effects(log) {}
  void TextInserted(const TextModel&, int32, std::string_view, int32, bool) override {}
  void TextRemoved(const TextModel&, int32, std::string_view) override {}
  void SelectionMoved(const TextModel&) override {}
  void StateChanged(const TextModel& model) override {
    if (model.Visible()) effects.Add("shown", "");
  }
  EffectLog& effects;
};

TEST_F(SwitchTest, WhatWasMissedComesUnderItsOwnTitle) {
  const int16 bob = Online("bob");
  Online("amy");
  ShownWindow shown(memory.effects);
  state.OutputWindow(bob).SetObserver(&shown);
  memory.effects.Clear();
  Switch("bob");
  state.OutputWindow(bob).SetObserver(nullptr);
  EXPECT_EQ(memory.effects.Transcript({"spoken"}), "title Corvid [bob\nshown\n");
}

TEST_F(SwitchTest, TheQuestionBeforeLeavingNamesTheHostInFront) {
  Online("bob");
  state.HostName[Character("Moor", "Amy", "amy")] = "moor.example";
  state.Port[FindCharacter(state, "amy")] = "nosuchservice";
  sessions.OpenMud(FindCharacter(state, "amy"), 0);
  EXPECT_EQ(state.ConnectHost, "moor.example");
  Switch("bob");
  EXPECT_EQ(state.ConnectHost, state.HostName[FindCharacter(state, "bob")]);
}

TEST_F(SwitchTest, PrefersConnectedSessions) {
  const int16 bob = Online("bob");
  const int16 bonnie = Online("bonnie");
  memory.sockets.CloseByPeer(bob);
  EXPECT_EQ(Switch("bo"), bonnie);
  EXPECT_EQ(Switch("bob"), bob);
  EXPECT_EQ(Switch("bob", option::ConnectedOnly), -1);
  EXPECT_EQ(error, "ER1");
}

TEST_F(SwitchTest, OnlyLooksUpWhenAsked) {
  Online("bob");
  Online("amy");
  EXPECT_EQ(Switch("bob", option::LookUpOnly | option::ConnectedOnly), 1);
  EXPECT_EQ(channel, 1);
  EXPECT_EQ(script.CurrentSocket, 2);
  EXPECT_TRUE(memory.effects.All().empty());
}

TEST_F(SwitchTest, GoesRoundTheSessions) {
  EXPECT_EQ(Switch(""), -1) << "no session has a character";
  Online("a");
  Online("b");
  memory.sockets.CloseByPeer(Online("c"));
  EXPECT_EQ(Switch(""), 1);
  EXPECT_EQ(Switch("next"), 2);
  EXPECT_EQ(Switch("NEXT"), 3) << "one that is closed counts too";
  EXPECT_EQ(Switch(""), 1);
  Switch("GLOBAL");
  EXPECT_EQ(Switch(""), 1);
}

TEST_F(SwitchTest, TellsScriptsOfTheChange) {
  Online("bob");
  Online("amy");
  Alias("SessionOff", "off");
  Alias("SessionOn", "on");
  Switch("bob");
  EXPECT_EQ(Of("command"), (Texts{"2 off", "1 on"}));
  memory.effects.Clear();
  Switch("bob");
  EXPECT_TRUE(Of("command").empty()) << "no change";
}

TEST_F(SwitchTest, SwitchesTheClassOfTheSession) {
  Online("bob");
  Online("amy");
  Switch("bob");
  EXPECT_TRUE(symbols.InClass("BOB", 0));
  Switch("amy");
  EXPECT_FALSE(symbols.InClass("BOB", 0));
  EXPECT_TRUE(symbols.InClass("amy", 0));
}

TEST_F(SwitchTest, BringsWaitingTextAlong) {
  Online("bob");
  Online("amy");
  state.OutputBuffer[1] = "waited\r\n";
  Switch("bob");
  EXPECT_EQ(Screen(1), "waited\r\n");
}

}  // namespace
}  // namespace corvid
