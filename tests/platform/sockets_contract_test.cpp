// SPDX-License-Identifier: GPL-3.0-or-later
// What every network must do alike: the real one, to a server on this machine, and the one in memory that the other
// tests trust.
#include <gtest/gtest.h>
#include <netdb.h>

#include <cerrno>
#include <functional>

#include "networks.h"

namespace corvid {
namespace {

// What the program was told, in order: "C" connected, "D" closed by the server, "E" error, and each byte itself.
class Ears : public SocketEvents {
 public:
  explicit Ears(Sockets& net) : net_(net) {}
  void OnConnect(int16 Index) override {
    Note("C", Index, true);
    if (OnStand) OnStand();
  }
  void OnDisconnect(int16 Index) override {
    Note("D", Index, false);
    if (OnEnd) OnEnd();
  }
  void OnError(int16 Index) override {
    Note("E", Index, false);
    if (OnFailure) OnFailure();
  }
  void OnRead(int16 Index) override {
    ++Asked;
    char bytes[8];
    const int count = net_.Read(Index, bytes, Room);
    if (count > 0) Told.append(bytes, static_cast<std::size_t>(count));
    if (OnBytes) OnBytes();
  }

  std::string Told;
  int Asked = 0;  // calls of OnRead
  int Room = 8;   // bytes that are read at once; 0: all are left waiting
  std::function<void()> OnStand, OnBytes, OnEnd, OnFailure;

 private:
  void Note(const char* mark, int16 Index, bool connected) {
    Told += mark;
    EXPECT_EQ(net_.Connected(Index), connected) << mark;
    EXPECT_FALSE(net_.Connecting(Index)) << mark;
  }
  Sockets& net_;
};

template <typename Network>
class SocketsContract : public testing::Test {
 protected:
  SocketsContract() {
    net.SetEvents(&ears);
    net.Create(1);
  }
  ~SocketsContract() override { net.SetEvents(nullptr); }
  bool Until(const std::function<bool()>& done) {
    for (int round = 0; round < 1000 && !done(); ++round) place.Loop.WaitEvents(10);
    return done();
  }
  bool Tells(const std::string& text) {
    Until([&] { return ears.Told.size() >= text.size(); });
    return ears.Told == text;
  }
  // Long enough for what must not come.
  void Settle() {
    for (int round = 0; round < 5; ++round) place.Loop.WaitEvents(5);
  }
  int Call() { return net.Connect(1, "127.0.0.1", place.Port(), 60000); }
  void Connect() {
    ASSERT_EQ(Call(), 0);
    ASSERT_TRUE(Until([&] { return place.Accepted() && net.Connected(1); }));
  }
  // Bytes that have come and that nobody reads.
  void SendUnread(const std::string& bytes) {
    ears.Room = 0;
    place.Send(bytes);
    ASSERT_TRUE(Until([&] { return ears.Asked > 0; }));
  }

  Network place;
  Sockets& net = place.Net;
  Ears ears{net};
  char byte = 0;
};

using Networks = testing::Types<RealNetwork, NetworkInMemory>;
TYPED_TEST_SUITE(SocketsContract, Networks);

TYPED_TEST(SocketsContract, AConnectionStandsSpeaksAndEnds) {
  EXPECT_FALSE(this->net.Connecting(1));
  ASSERT_EQ(this->Call(), 0);
  EXPECT_TRUE(this->net.Connecting(1));
  EXPECT_FALSE(this->net.Connected(1));
  EXPECT_EQ(this->ears.Told, "") << "events come from the loop alone";
  ASSERT_TRUE(this->Until([&] { return this->place.Accepted() && this->net.Connected(1); }));
  this->place.Send("one ");
  this->place.Send("two, longer than one read");
  ASSERT_TRUE(this->Tells("Cone two, longer than one read"));
  EXPECT_EQ(this->net.Read(1, &this->byte, 1), -1);
  this->place.Close();
  EXPECT_TRUE(this->Tells("Cone two, longer than one readD"));
  EXPECT_EQ(this->net.LastError(1), 0);
}

TYPED_TEST(SocketsContract, WhatIsWrittenArrivesWholeAndInItsOrder) {
  this->Connect();
  std::string heard;
  EXPECT_EQ(this->net.Write(1, "look\r\n"), 6);
  EXPECT_EQ(this->net.Write(1, ""), 0);
  EXPECT_EQ(this->net.Write(1, std::string("\0\xFF\xFD", 3)), 3);
  EXPECT_EQ(this->net.Write(1, std::string(100000, 'x')), 100000);
  this->Until([&] { return (heard += this->place.TakeWritten()).size() >= 100009; });
  EXPECT_EQ(heard, std::string("look\r\n\0\xFF\xFD", 9) + std::string(100000, 'x'));
}

TYPED_TEST(SocketsContract, RefusedIsAnError) {
  this->place.Refuse();
  ASSERT_EQ(this->Call(), 0);
  EXPECT_TRUE(this->Tells("E"));
  EXPECT_EQ(this->net.LastError(1), ECONNREFUSED);
  EXPECT_EQ(this->net.Read(1, &this->byte, 1), -1);
}

TYPED_TEST(SocketsContract, NoAnswerIsAnErrorToo) {
  this->place.AnswerNever();
  ASSERT_EQ(this->net.Connect(1, "127.0.0.1", this->place.Port(), 20), 0);
  EXPECT_TRUE(this->Tells("E"));
  EXPECT_EQ(this->net.LastError(1), ETIMEDOUT);
}

TYPED_TEST(SocketsContract, WhatIsNotConnectedTakesNothing) {
  const auto fails = [&] { return this->net.Write(1, "x") == -1 && this->net.LastError(1) == ENOTCONN; };
  EXPECT_TRUE(fails()) << "never connected";
  ASSERT_EQ(this->Call(), 0);
  EXPECT_EQ(this->net.LastError(1), 0) << "a new attempt forgets the old failure";
  EXPECT_TRUE(fails()) << "not yet";
  this->Until([&] { return this->place.Accepted() && this->net.Connected(1); });
  this->place.Close();
  ASSERT_TRUE(this->Tells("CD"));
  EXPECT_TRUE(fails()) << "closed by the server";
  this->Connect();
  EXPECT_EQ(this->net.Disconnect(1), 0);
  EXPECT_TRUE(fails()) << "closed by the player";
}

TYPED_TEST(SocketsContract, OwnDisconnectIsSilentAndFollowsWhatWasWritten) {
  this->Connect();
  this->SendUnread("unread");
  EXPECT_EQ(this->net.Write(1, "quit\r\n"), 6);
  std::string heard;
  ASSERT_TRUE(this->Until([&] { return (heard += this->place.TakeWritten()) == "quit\r\n"; }));
  EXPECT_EQ(this->net.Disconnect(1), 0);
  EXPECT_FALSE(this->net.Connected(1));
  EXPECT_EQ(this->net.Read(1, &this->byte, 1), -1);
  EXPECT_TRUE(this->Until([&] { return this->place.SawTheEnd(); }));
  EXPECT_EQ(this->net.Disconnect(1), 0) << "nothing to do is no error";
  this->Settle();
  EXPECT_EQ(this->ears.Told, "C");
}

TYPED_TEST(SocketsContract, AnAttemptThatIsGivenUpIsSilent) {
  ASSERT_EQ(this->Call(), 0);
  EXPECT_EQ(this->net.Disconnect(1), 0);
  EXPECT_FALSE(this->net.Connecting(1));
  this->Settle();
  EXPECT_EQ(this->ears.Told, "");
  EXPECT_FALSE(this->net.Connected(1));
}

TYPED_TEST(SocketsContract, TheEndWaitsUntilAllIsRead) {
  this->Connect();
  this->SendUnread("last words");
  this->place.Close();
  this->Settle();
  EXPECT_EQ(this->ears.Told, "C");
  EXPECT_TRUE(this->net.Connected(1));
  this->ears.Room = 4;
  EXPECT_TRUE(this->Tells("Clast wordsD"));
}

TYPED_TEST(SocketsContract, WhoHasGoneIsWrittenNothingThoughHisLastWordsWait) {
  this->Connect();
  this->SendUnread("last words");
  this->place.Close();
  this->Settle();
  EXPECT_TRUE(this->net.Connected(1)) << "until all is read";
  EXPECT_EQ(this->net.Write(1, "x"), -1);
  EXPECT_EQ(this->net.LastError(1), ENOTCONN);
  EXPECT_EQ(this->place.TakeWritten(), "");
  this->ears.Room = 8;
  EXPECT_TRUE(this->Tells("Clast wordsD"));
}

TYPED_TEST(SocketsContract, ABrokenConnectionIsClosed) {
  this->Connect();
  this->place.Break();
  EXPECT_TRUE(this->Tells("CD"));
  EXPECT_EQ(this->net.LastError(1), 0);
}

TYPED_TEST(SocketsContract, WhatCameBeforeTheBreakCanStillBeRead) {
  this->Connect();
  this->SendUnread("last words");
  this->place.Break();
  this->Settle();
  EXPECT_TRUE(this->net.Connected(1));
  EXPECT_EQ(this->net.Write(1, "x"), -1);
  this->ears.Room = 8;
  EXPECT_TRUE(this->Tells("Clast wordsD"));
}

TYPED_TEST(SocketsContract, AReadTakesNoMoreThanItIsAskedFor) {
  this->Connect();
  this->SendUnread("abcde");
  char bytes[4] = "---";
  for (const int none : {0, -1}) EXPECT_EQ(this->net.Read(1, bytes, none), -1) << none;
  ASSERT_EQ(this->net.Read(1, bytes, 2), 2);
  EXPECT_EQ(std::string(bytes), "ab-");
  this->ears.Room = 8;
  EXPECT_TRUE(this->Tells("Ccde"));
}

TYPED_TEST(SocketsContract, WhatComesAfterOwnDisconnectIsNotRead) {
  this->Connect();
  EXPECT_EQ(this->net.Disconnect(1), 0);
  this->place.Send("late");
  this->Settle();
  EXPECT_EQ(this->net.Read(1, &this->byte, 1), -1);
  EXPECT_EQ(this->ears.Told, "C");
}

TYPED_TEST(SocketsContract, ASecondAttemptTakesThePlaceOfTheFirst) {
  ASSERT_EQ(this->Call(), 0);
  this->Connect();
  this->Settle();
  EXPECT_EQ(this->ears.Told, "C");
}

TYPED_TEST(SocketsContract, AnAttemptThatCannotBeStillEndsWhatStood) {
  this->Connect();
  this->SendUnread("old");
  EXPECT_EQ(this->net.Connect(1, "127.0.0.1", "0", 1000), EINVAL);
  EXPECT_FALSE(this->net.Connected(1));
  EXPECT_EQ(this->net.Read(1, &this->byte, 1), -1);
  this->ears.Room = 8;
  this->Settle();
  EXPECT_EQ(this->ears.Told, "C") << "without an event";
}

TYPED_TEST(SocketsContract, AHandlerMayUseItsOwnConnection) {
  std::string heard;
  this->ears.OnStand = [&] { EXPECT_EQ(this->net.Write(1, "hello"), 5); };
  this->ears.Room = 1;
  this->ears.OnBytes = [&] { EXPECT_EQ(this->net.Disconnect(1), 0); };
  this->Connect();
  EXPECT_TRUE(this->Until([&] { return (heard += this->place.TakeWritten()) == "hello"; }));
  this->place.Send("xyz");
  ASSERT_TRUE(this->Tells("Cx"));
  this->Settle();
  EXPECT_EQ(this->ears.Told, "Cx") << "it closed the connection at the first byte";
}

TYPED_TEST(SocketsContract, AHandlerMayUseTheConnectionOfAnother) {
  this->net.Create(2);
  this->Connect();
  this->ears.OnBytes = [&] {
    EXPECT_EQ(this->net.Connect(2, "127.0.0.1", this->place.Port(), 60000), 0);
    EXPECT_TRUE(this->Until([&] { return this->net.Connected(2); }));
    EXPECT_EQ(this->net.Write(2, "x"), 1);
    EXPECT_EQ(this->net.Disconnect(2), 0);
  };
  this->place.Send("!");
  ASSERT_TRUE(this->Tells("C!C"));
  this->Settle();
  EXPECT_TRUE(this->net.Connected(1));
  EXPECT_FALSE(this->net.Connected(2));
}

TYPED_TEST(SocketsContract, AFailureMayBeAnsweredByTryingAgain) {
  this->place.Refuse();
  int left = 2;
  this->ears.OnFailure = [&] {
    if (left-- > 0) this->Call();
  };
  ASSERT_EQ(this->Call(), 0);
  EXPECT_TRUE(this->Tells("EEE"));
}

TYPED_TEST(SocketsContract, TheEndMayBeAnsweredByConnectingAgain) {
  this->Connect();
  this->ears.OnEnd = [&] { EXPECT_EQ(this->Call(), 0); };
  this->place.Close();
  EXPECT_TRUE(this->Tells("CDC"));
}

TYPED_TEST(SocketsContract, ConnectingAnewVoidsTheOldConnection) {
  this->Connect();
  this->SendUnread("old");
  this->ears.Room = 8;
  this->Connect();
  this->Settle();
  this->place.Accepted();
  this->place.Send("new");
  EXPECT_TRUE(this->Tells("CCnew"));
}

TYPED_TEST(SocketsContract, AHandlerThatWaitsHearsTheRestMeanwhile) {
  this->Connect();
  this->ears.Room = 1;
  int depth = 0, deepest = 0;
  this->ears.OnBytes = [&] {
    deepest = std::max(deepest, ++depth);
    if (this->ears.Told == "Cw") this->Tells("Cwxyz");
    --depth;
  };
  this->place.Send("wxyz");
  EXPECT_TRUE(this->Tells("Cwxyz"));
  EXPECT_EQ(deepest, 2);
}

TYPED_TEST(SocketsContract, AnAddressThatCannotBeIsToldAtOnce) {
  for (const char* port : {"1", "23", "65535"}) EXPECT_TRUE(this->net.PortKnown(port)) << port;
  // A small machine has no table of services.
  if (getservbyname("telnet", "tcp") != nullptr) {
    EXPECT_TRUE(this->net.PortKnown("telnet"));
  }
  for (const char* port : {"0", "65536", "-1", "+1", "1.5", "1e3", "23 ", "", "no such service"}) {
    EXPECT_FALSE(this->net.PortKnown(port)) << port;
    EXPECT_EQ(this->net.Connect(1, "127.0.0.1", port, 1000), EINVAL) << port;
    EXPECT_EQ(this->net.LastError(1), EINVAL) << port;
  }
  EXPECT_EQ(this->net.Connect(1, "", this->place.Port(), 1000), EINVAL);
  EXPECT_FALSE(this->net.Connecting(1));
  this->Settle();
  EXPECT_EQ(this->ears.Told, "");
}

TYPED_TEST(SocketsContract, ASlotThatWasNeverMadeIsHarmless) {
  const int16 beyond = MaxConnections + 1;
  for (const int16 Index : {int16{-1}, beyond, int16{-32768}, int16{32767}}) this->net.Create(Index);
  for (const int16 Index : {int16{7}, int16{-1}, beyond, int16{-32768}, int16{32767}}) {
    EXPECT_NE(this->net.Connect(Index, "127.0.0.1", this->place.Port(), 1000), 0) << Index;
    EXPECT_FALSE(this->net.Connected(Index)) << Index;
    EXPECT_FALSE(this->net.Connecting(Index)) << Index;
    EXPECT_EQ(this->net.Read(Index, &this->byte, 1), -1) << Index;
    EXPECT_EQ(this->net.Write(Index, "x"), -1) << Index;
    EXPECT_EQ(this->net.Disconnect(Index), 0) << Index;
    EXPECT_EQ(this->net.LastError(Index), 0) << Index;
  }
  this->Settle();
  EXPECT_EQ(this->ears.Told, "");
}

TYPED_TEST(SocketsContract, TheFirstAndTheLastSlotAreSlotsLikeAnother) {
  for (const int16 Index : {int16{0}, MaxConnections}) {
    this->net.Create(Index);
    EXPECT_EQ(this->net.Connect(Index, "127.0.0.1", this->place.Port(), 60000), 0) << Index;
    EXPECT_TRUE(this->Until([&] { return this->net.Connected(Index); })) << Index;
    EXPECT_EQ(this->net.Write(Index, "x"), 1) << Index;
  }
  EXPECT_FALSE(this->net.Connected(1));
}

TYPED_TEST(SocketsContract, ASlotIsMadeOnce) {
  this->Connect();
  this->net.Create(1);
  EXPECT_TRUE(this->net.Connected(1));
  this->place.Send("on");
  EXPECT_TRUE(this->Tells("Con"));
}

}  // namespace
}  // namespace corvid
