// SPDX-License-Identifier: GPL-3.0-or-later
// The function library over tables of a few variables, three sessions, two characters and two directions.
#pragma once

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "fakes.h"
#include "platform/sockets.h"
#include "script/expansion.h"
#include "script/expression.h"
#include "script/functions.h"
#include "sessions/session_state.h"
#include "support_upcalls.h"

namespace corvid::testing_script {

class FakeSockets : public Sockets {
 public:
  void SetEvents(SocketEvents*) override {}
  void Create(int16) override {}
  bool Connected(int16 Index) const override { return Open.count(Index) != 0; }
  bool Connecting(int16) const override { return false; }
  bool PortKnown(const std::string&) const override { return true; }
  int Connect(int16, const std::string&, const std::string&, int) override { return 0; }
  int Disconnect(int16) override { return 0; }
  int Read(int16, char*, int) override { return -1; }
  int Write(int16, std::string_view) override { return -1; }
  int LastError(int16) const override { return 0; }
  std::set<int16> Open;
};

class FakePrompter : public SilentPrompter {
 public:
  std::string PickList(const std::string& list) override { return "picked from " + list; }
};

class Library : public testing::Test, protected Script {
 protected:
  Library() {
    symbols.LoadSystemVariables();
    Set("list", "a|b|c");
    Set("x", "5");
    Set("name", "Bob");
    Set("note", "about @x");
    sessions.SessionHigh = 3;
    for (Table<std::string>* column : {&sessions.SessionRef, &sessions.PartialLine}) column->Resize(3);
    sessions.HistoryLines.Resize(3);
    sessions.HistoryPos.Resize(3);
    sessions.SessionRef[1] = "gandalf";
    sessions.SessionRef[2] = "Frodo";
    sessions.SessionRef[3] = "frodo";
    sockets.Open = {2};
    for (Table<std::string>* column :
         {&sessions.CharacterName, &sessions.Password, &sessions.CharacterRef, &sessions.MudName})
      column->Resize(2);
    sessions.CharacterName[2] = "Frodo Baggins";
    sessions.Password[2] = "ring";
    sessions.CharacterRef[2] = "FRODO";
    sessions.MudName[2] = "Shire";
    state.CurrentSocket = 1;
    sessions.HistoryPos[1] = 1;
    for (std::size_t i = 0; i < 10; ++i) sessions.HistoryLines[1][i] = "line" + std::to_string(i);
    state.AbbreviationCount = 2;
    symbols.resizeCommand(windowtype::Abbreviations, 2);
    state.Directions[1] = "N";
    state.OppositeDirections[1] = "S";
    state.Directions[2] = "UP";
    state.OppositeDirections[2] = "DOWN";
  }

  std::string Explode(const std::string& text, OwnerId owner = 0) {
    std::string error;
    const std::string result = expansion.ExplodeVariable(text, error, rvar, 0, owner);
    return error.empty() ? result : "!! " + error;
  }

  SessionState sessions;
  FakeSockets sockets;
  FakePrompter prompter;
  ExpressionEvaluator expressions{options};
  Functions functions{FunctionWorld{state, symbols, expressions, sessions, sockets, prompter, [](int32 number) {
                                      if (number < 1 || number > 10) throw Fault(FaultKind::Index, "file");
                                      return number != 3;
                                    }}};
  Expansion expansion{state, options, symbols, functions, [] { return std::string(); }};
  Parameters rvar;
};

}  // namespace corvid::testing_script
