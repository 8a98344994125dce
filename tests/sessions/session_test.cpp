// SPDX-License-Identifier: GPL-3.0-or-later
// Opening, connecting, closing, and the events of a session's socket.
#include "sessions/session.h"

#include "core/scramble.h"
#include "fixture.h"

namespace corvid {
namespace {

class OpenTest : public SessionTest {};

TEST_F(OpenTest, ConnectsARowInSlotOne) {
  const int16 row = Character("Aard", "Bob", "bob");
  state.OutputBuffer[0] = "x";
  EXPECT_EQ(sessions.OpenMud(row, 0), 0);
  EXPECT_EQ(script.CurrentSocket, 1);
  EXPECT_EQ(script.CurrentOwner, row);
  EXPECT_EQ(script.SocketOwner[1], row);
  EXPECT_EQ(state.SessionHigh, 1);
  EXPECT_EQ(state.SessionMud[1], "Aard");
  EXPECT_EQ(state.SessionName[1], "Bob");
  EXPECT_EQ(state.SessionRef[1], "bob");
  EXPECT_EQ(state.ConnectHost, "Aard.example");
  EXPECT_EQ(memory.sockets.Host(1), "Aard.example");
  EXPECT_EQ(memory.sockets.Port(1), "4000");
  EXPECT_TRUE(memory.sockets.Connecting(1));
  EXPECT_EQ(script.SystemValues[sysvar::CONNECTED], "0");
  EXPECT_EQ(Of("session"), (Texts{"1 connecting"}));
  EXPECT_EQ(Of("cleared"), (Texts{"1"}));
  for (const Table<char>* enabled :
       {&state.TriggerEnabled, &state.AliasEnabled, &state.KeyEnabled, &state.LogEntriesEnabled})
    EXPECT_EQ((*enabled)[1], 1);
}

TEST_F(OpenTest, SetsTheSystemVariables) {
  const int16 slot = Online("bob");
  const auto& values = script.SystemValues;
  EXPECT_EQ(values[sysvar::SOCKET], "1");
  EXPECT_EQ(values[sysvar::CHAR], "Namebob");
  EXPECT_EQ(values[sysvar::MUDNAME], "Mudbob");
  EXPECT_EQ(values[sysvar::Reference], "bob");
  EXPECT_EQ(values[sysvar::PASSWORD], "secret");
  EXPECT_EQ(values[sysvar::CONNECTED], "1");
  EXPECT_EQ(values[sysvar::MUDFOLDER], "/data/Mudbob/");
  sessions.SetMud(0, 0);
  EXPECT_EQ(values[sysvar::CONNECTED], "0");
  EXPECT_EQ(values[sysvar::PASSWORD], "");
  EXPECT_EQ(script.CurrentOwner, 0);
  EXPECT_EQ(state.SessionRef[slot], "bob");
}

TEST_F(OpenTest, FinishesWhenTheConnectionStands) {
  Alias("OnConnect", "hello");
  Alias("login", "log me in");
  Alias("SessionOff", "off");
  Alias("SessionOn", "on");
  const int16 row = Character("Aard", "Bob", "bob", charflag::AutoLogin);
  sessions.OpenMud(row, 0);
  EXPECT_TRUE(Of("command").empty());
  Pass(1);
  EXPECT_EQ(Of("command"), (Texts{"1 #Char bob", "1 #Char bob", "1 hello", "1 log me in", "0 off", "1 on"}));
  EXPECT_EQ(memory.face.Title, "Corvid [bob");
  EXPECT_EQ(state.LastConnected[row], "2026-01-15 12:00:00");
  EXPECT_NE(Scramble(memory.files.ReadWhole("/data/Character.mud")).find("2026-01-15 12:00:00"), std::string::npos);
  EXPECT_GE(Of("forward").size(), 1U);
  EXPECT_EQ(state.LogOpen[1], 1);
  memory.effects.Clear();
  sessions.FinishConnect(1);
  EXPECT_TRUE(memory.effects.All().empty()) << "once for each connection";
}

TEST_F(OpenTest, LeavesTheLoginToThePlayer) {
  Alias("login", "log me in");
  options.AutoLogin = false;
  sessions.OpenMud(Character("Aard", "Bob", "bob", charflag::AutoLogin), 0);
  Pass(1);
  options.AutoLogin = true;
  sessions.OpenMud(Character("Aard", "Amy", "amy"), 0);
  Pass(1);
  for (const std::string& command : Of("command")) EXPECT_EQ(command.find("log me in"), std::string::npos);
}

TEST_F(OpenTest, FinishesLateWhenTheServerIsSlow) {
  memory.sockets.ConnectDelay = 10000;
  Alias("OnConnect", "hello");
  Alias("SessionOn", "on");
  sessions.OpenMud(Character("Aard", "Bob", "bob"), 0);
  Pass(9000);
  sessions.FinishConnect(1);
  EXPECT_TRUE(Of("command").empty()) << "not connected yet";
  sessions.SetMud(0, 0);
  Pass(2000);
  EXPECT_EQ(Of("command"), (Texts{"1 #Char bob", "1 #Char bob", "1 hello", "1 on"}));
  EXPECT_EQ(script.CurrentSocket, 1) << "loading the sets brings the session forward";
  EXPECT_EQ(memory.face.Title, "Corvid [bob");
}

TEST_F(OpenTest, ReconnectsSlowlyBehindTheSessionThatIsPlayed) {
  const int16 bob = Online("bob");
  const int16 amy = Online("amy");
  memory.sockets.CloseByPeer(bob);
  memory.sockets.ConnectDelay = 10000;
  sessions.OpenMud(1, opening::SkipSets);
  sessions.SetMud(amy, 2);
  for (const char* name : {"OnConnect", "SessionOff", "SessionOn"}) Alias(name, name);
  memory.effects.Clear();
  Pass(11000);
  EXPECT_TRUE(memory.sockets.Connected(bob));
  EXPECT_EQ(script.CurrentSocket, amy);
  EXPECT_EQ(Of("command"), (Texts{"1 OnConnect"})) << "nobody was taken away from amy";
  EXPECT_EQ(memory.face.Title, "Corvid [amy");
}

TEST_F(OpenTest, AsksAboutACharacterThatIsConnected) {
  Online("bob");
  EXPECT_EQ(sessions.OpenMud(1, 0), -1);
  EXPECT_EQ(sessions.OpenMud(1, opening::Offline), -1);
  EXPECT_EQ(Of("box"),
            (Texts{"Connect Character|Character Mudbob Namebob already connected. |yesno",
                   "Connect Character|Character Mudbob Namebob already loaded. The character is already connected as "
                   "well.|yesno"}));
  EXPECT_EQ(state.SessionHigh, 1);
}

TEST_F(OpenTest, FitsTwentyConnections) {
  for (int i = 1; i <= 20; ++i) EXPECT_EQ(Online("char" + std::to_string(i)), i);
  EXPECT_EQ(sessions.OpenMud(Character("More", "More", "more"), 0), -1);
  EXPECT_EQ(Of("showerror"), (Texts{"No more free connections--Maximum: 21"}));
  EXPECT_EQ(state.SessionHigh, 20);
}

TEST_F(OpenTest, ReusesTheOwnSlotThenAnUnusedThenAClosedOne) {
  const int16 bob = Online("bob");
  const int16 amy = Online("amy");
  memory.sockets.CloseByPeer(bob);
  memory.sockets.CloseByPeer(amy);
  EXPECT_EQ(sessions.OpenMud(2, 0), 0);
  EXPECT_EQ(script.CurrentSocket, amy) << "its own slot before an earlier one";
  Pass(1);
  memory.effects.Clear();
  EXPECT_EQ(sessions.OpenMud(Character("Zork", "Cem", "cem"), 0), 0);
  EXPECT_EQ(script.CurrentSocket, bob);
  EXPECT_EQ(state.SessionRef[bob], "cem");
  EXPECT_EQ(state.SessionHigh, 2);
}

TEST_F(OpenTest, UnloadsTheCharacterWhoseSlotItTakes) {
  const int16 slot = Online("bob");
  std::string error;
  symbols.AddVariable("Gold", "5", 1, error);
  Alias("x", "y", 1);
  memory.sockets.CloseByPeer(slot);
  EXPECT_EQ(sessions.OpenMud(Character("Zork", "Cem", "cem"), 0), 0);
  EXPECT_EQ(script.VariableCount, 0);
  EXPECT_EQ(script.AliasCount, 0);
  for (int16 n = buffer::FirstScript; n <= buffers.BufferCount; ++n)
    EXPECT_NE(buffers.BufferOwners[n] == 1 && buffers.BufferFlags[n] != 0, true);
}

TEST_F(OpenTest, LeavesASlotThatConnectsAlone) {
  memory.sockets.OnConnectAnswer = MemorySockets::Answer::Never;
  sessions.OpenMud(Character("Aard", "Bob", "bob"), 0);
  sessions.OpenMud(Character("Aard", "Amy", "amy"), 0);
  EXPECT_EQ(script.CurrentSocket, 2);
  EXPECT_TRUE(memory.sockets.Connecting(1));
}

TEST_F(OpenTest, ClearsAReusedSlot) {
  const int16 slot = Online("bob");
  Receives(slot, "old\r\nheld");
  state.Utf8Seen[slot] = state.MspOn[slot] = 1;
  state.TriggerEnabled[slot] = 0;
  memory.sockets.CloseByPeer(slot);
  EXPECT_EQ(sessions.OpenMud(1, opening::SkipSets), 0);
  EXPECT_EQ(Screen(slot), "");
  EXPECT_EQ(state.PartialLine[slot], "");
  EXPECT_EQ(state.OutputBuffer[slot], "");
  EXPECT_EQ(state.Utf8Seen[slot], 0);
  EXPECT_EQ(state.MspOn[slot], 0);
  EXPECT_EQ(state.TriggerEnabled[slot], 1);
}

TEST_F(OpenTest, WorksOffline) {
  EXPECT_EQ(sessions.OpenMud(Character("Aard", "Bob", "bob"), opening::Offline), 0);
  EXPECT_EQ(script.CurrentSocket, 0) << "the start slot serves";
  EXPECT_EQ(Screen(0), "Working Offline.");
  EXPECT_EQ(Of("session"), (Texts{"0 offline"}));
  EXPECT_FALSE(memory.sockets.Connecting(0));
  EXPECT_TRUE(memory.files.FileExists("/data/Aard/bob.set"));
  EXPECT_EQ(sessions.OpenMud(Character("Aard", "Amy", "amy"), 0), 0);
  EXPECT_EQ(script.CurrentSocket, 1) << "a connection leaves slot 0 alone";
}

TEST_F(OpenTest, EndsAnAttemptToConnectForOfflineWork) {
  memory.sockets.ConnectDelay = 5000;
  const int16 row = Character("Aard", "Bob", "bob");
  sessions.OpenMud(row, 0);
  EXPECT_EQ(sessions.OpenMud(row, opening::Offline), 0);
  EXPECT_EQ(script.CurrentSocket, 1) << "its own slot";
  Pass(6000);
  EXPECT_FALSE(memory.sockets.Connected(1));
  EXPECT_EQ(Screen(1), "Working Offline.");
}

TEST_F(OpenTest, RefusesAnUnknownService) {
  state.Port[Character("Aard", "Bob", "bob")] = "nosuchservice";
  EXPECT_EQ(sessions.OpenMud(1, 0), -1);
  EXPECT_EQ(Of("showerror"), (Texts{"The specified service name is invalid"}));
  EXPECT_EQ(Of("session"), (Texts{"1 closed"}));
  EXPECT_EQ(state.SessionRef[1], "bob") << "the session is there for another try";
}

TEST_F(OpenTest, TheTitleFollowsThePlayerWhateverBecomesOfTheConnection) {
  Online("amy");
  const int16 bob = Character("Aard", "Bob", "bob");
  state.Port[bob] = "nosuchservice";
  sessions.OpenMud(bob, 0);
  EXPECT_EQ(memory.face.Title, "Corvid bob [Not connected]");
  sessions.OpenMud(Character("Aard", "Cid", "cid"), opening::Offline);
  EXPECT_EQ(memory.face.Title, "Corvid cid [Not connected]");
  memory.sockets.OnConnectAnswer = MemorySockets::Answer::Never;
  sessions.OpenMud(Character("Aard", "Dan", "dan"), 0);
  EXPECT_EQ(memory.face.Title, "Corvid dan [Not connected]");
}

TEST_F(OpenTest, TellsAConnectionThatCannotBegin) {
  memory.sockets.ConnectError = 101;
  Character("Aard", "Bob", "bob");
  EXPECT_EQ(sessions.OpenMud(1, 0), -1);
  EXPECT_EQ(Of("showerror"), (Texts{"Unable to connect to Aard.example.  Error 101"}));
}

TEST_F(OpenTest, TellsAConnectionThatFails) {
  memory.sockets.OnConnectAnswer = MemorySockets::Answer::Refuse;
  sessions.OpenMud(Character("Aard", "Bob", "bob"), 0);
  Pass(1);
  EXPECT_EQ(Of("showerror"), (Texts{"Unable to connect to Aard.example"}));
  EXPECT_EQ(memory.face.Title, "Corvid bob [Not connected]");
  EXPECT_TRUE(Of("command").empty());
}

TEST_F(OpenTest, GivesUpAfterAMinute) {
  memory.sockets.OnConnectAnswer = MemorySockets::Answer::Never;
  sessions.OpenMud(Character("Aard", "Bob", "bob"), 0);
  Pass(59000);
  EXPECT_TRUE(Of("showerror").empty());
  Pass(1000);
  EXPECT_EQ(Of("showerror").size(), 1U);
}

// --- closing ---

TEST_F(OpenTest, TellsWhenTheServerCloses) {
  Alias("OnDisconnect", "gone");
  const int16 slot = Online("bob");
  Receives(slot, "bye\r\n");
  memory.effects.Clear();
  memory.sockets.CloseByPeer(slot);
  EXPECT_EQ(Screen(slot), "bye\r\nConnection to Mud was closed.");
  EXPECT_EQ(Spoken(), (Texts{"5 Connection closed"}));
  EXPECT_EQ(Of("command"), (Texts{"1 gone"}));
  EXPECT_EQ(script.SystemValues[sysvar::CONNECTED], "0");
  EXPECT_EQ(memory.face.Title, "Corvid bob [Not connected]");
  EXPECT_EQ(Of("session"), (Texts{"1 closed"}));
  EXPECT_EQ(state.SessionRef[slot], "bob") << "a closed slot stays loaded";
}

TEST_F(OpenTest, LeavesTheTitleAloneWhenABackgroundSessionCloses) {
  const int16 bob = Online("bob");
  Online("amy");
  memory.sockets.CloseByPeer(bob);
  EXPECT_TRUE(Of("title").empty());
  EXPECT_EQ(script.SystemValues[sysvar::CONNECTED], "1");
  EXPECT_EQ(Spoken(), (Texts{"5 Connection closed"}));
}

TEST_F(OpenTest, TellsADisconnectThatFails) {
  const int16 slot = Online("bob");
  memory.sockets.DisconnectError = 9;
  memory.sockets.CloseByPeer(slot);
  EXPECT_EQ(Of("showerror"), (Texts{"Unable to disconnect.  Error 9"}));
  EXPECT_EQ(Screen(slot), "Connection to Mud was closed.");
}

TEST_F(OpenTest, DropsASelectionToTellOfTheEnd) {
  const int16 slot = Online("bob");
  Receives(slot, "text\r\n");
  state.OutputWindow(slot).Select(0, 4);
  memory.sockets.CloseByPeer(slot);
  EXPECT_EQ(Screen(slot), "text\r\nConnection to Mud was closed.");
  EXPECT_EQ(state.OutputWindow(slot).SelLength(), 0);
}

TEST_F(OpenTest, AsksBeforeItCloses) {
  const int16 slot = Online("bob");
  sessions.CloseMud(slot);
  EXPECT_EQ(Of("box"), (Texts{"Disconnect Verification |You are currently connected to the Mud. If you disconnect "
                              "without first exiting the Mud normally, you may lose your char's equipment or have "
                              "...|yesno"}));
  EXPECT_TRUE(memory.sockets.Connected(slot)) << "no";
  prompter.answers = {box::ResultYes};
  sessions.CloseMud(slot);
  EXPECT_FALSE(memory.sockets.Connected(slot));
  EXPECT_EQ(script.SystemValues[sysvar::CONNECTED], "0");
  EXPECT_EQ(memory.face.Title, "Corvid bob [Not connected]");
  EXPECT_EQ(Screen(slot), "") << "the player closed it, so nobody tells";
  memory.effects.Clear();
  sessions.CloseMud(slot);
  EXPECT_TRUE(memory.effects.All().empty()) << "nothing to close";
}

TEST_F(OpenTest, TellsThatItCouldNotClose) {
  const int16 slot = Online("bob");
  prompter.answers = {box::ResultYes};
  memory.sockets.DisconnectError = 9;
  sessions.CloseMud(slot);
  EXPECT_EQ(Of("showerror"), (Texts{"Unable to disconnect.  Error 9"}));
}

TEST_F(OpenTest, ShowsAQuickConnectionByItsMud) {
  const int16 row = Character("MUD", "QUICKCONNECT", "");
  sessions.OpenMud(row, 0);
  Pass(1);
  EXPECT_EQ(memory.face.Title, "Corvid [MUD");
  EXPECT_FALSE(memory.files.FolderExists("/data/MUD"));
  EXPECT_EQ(memory.files.FileNames("/data/logs"), (Texts{" 2026-01-15 12.0.txt"}));
  EXPECT_EQ(sessions.OpenMud(row, 0), -1) << "connected already";
  EXPECT_EQ(sessions.OpenMud(Character("MUD", "QUICKCONNECT", ""), 0), 0) << "another row is another connection";
  EXPECT_EQ(script.CurrentSocket, 2);
  Pass(1);
  memory.sockets.CloseByPeer(2);
  EXPECT_EQ(memory.face.Title, "Corvid  [Not connected]") << "it has no reference";
}

}  // namespace
}  // namespace corvid
