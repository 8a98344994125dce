// SPDX-License-Identifier: GPL-3.0-or-later
// What every network must do alike: the real one, to a server on this machine, and the one in memory that the other
// tests trust.
#include <gtest/gtest.h>
#include <sys/socket.h>

#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>
#include <cerrno>
#include <functional>
#include <memory>

#include "deaf_server.h"
#include "platform/memory/memory_sockets.h"
#include "platform/qt/event_loop.h"
#include "platform/qt/sockets.h"

namespace corvid {
namespace {

// The far end serves one connection, the newest.
class RealNetwork {
 public:
  RealNetwork() {
    server_.listen(QHostAddress::LocalHost, 0);
    port_ = std::to_string(server_.serverPort());
  }
  std::string Port() const { return deaf_ ? deaf_->Port() : port_; }
  void Refuse() { server_.close(); }
  void AnswerNever() { deaf_ = std::make_unique<DeafServer>(); }
  bool Accepted() {
    if (server_.hasPendingConnections()) peer_ = server_.nextPendingConnection();
    return peer_ != nullptr;
  }
  void Send(const std::string& bytes) {
    peer_->write(bytes.data(), static_cast<qint64>(bytes.size()));
    peer_->flush();
  }
  void Close() { peer_->disconnectFromHost(); }
  void Break() {
    const linger atOnce{1, 0};
    setsockopt(static_cast<int>(peer_->socketDescriptor()), SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
    peer_->abort();
  }
  std::string TakeWritten() { return peer_->readAll().toStdString(); }
  bool SawTheEnd() const { return peer_->state() == QAbstractSocket::UnconnectedState; }

 private:
  int argc_ = 1;
  char name_[5] = "test";
  char* argv_[2] = {name_, nullptr};

 public:
  QtEventLoop Loop{argc_, argv_};
  QtSockets Net;

 private:
  QTcpServer server_;
  std::string port_;
  QTcpSocket* peer_ = nullptr;
  std::unique_ptr<DeafServer> deaf_;
};

class NetworkInMemory {
 public:
  std::string Port() const { return "4000"; }
  void Refuse() { Net.OnConnectAnswer = MemorySockets::Answer::Refuse; }
  void AnswerNever() { Net.OnConnectAnswer = MemorySockets::Answer::Never; }
  bool Accepted() const { return Net.Connected(1); }
  void Send(const std::string& bytes) { Net.Receive(1, bytes); }
  void Close() { Net.CloseByPeer(1); }
  void Break() { Net.Reset(1); }
  std::string TakeWritten() { return Net.TakeWritten(1); }
  bool SawTheEnd() const { return !effects_.Of("disconnect").empty(); }

 private:
  EffectLog effects_;
  MemoryClock clock_;

 public:
  MemoryLoop Loop{clock_};
  MemorySockets Net{Loop, effects_};
};

// What the program was told, in order: "C" connected, "D" closed by the server, "E" error, and each byte itself.
class Ears : public SocketEvents {
 public:
  explicit Ears(Sockets& net) : net_(net) {}
  void OnConnect(int16 Index) override { Note("C", Index, true); }
  void OnDisconnect(int16 Index) override {
    Note("D", Index, false);
    if (OnEnd) OnEnd();
  }
  void OnError(int16 Index) override { Note("E", Index, false); }
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
  std::function<void()> OnBytes, OnEnd;

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
  this->ears.Room = 0;
  this->place.Send("unread");
  ASSERT_TRUE(this->Until([&] { return this->ears.Asked > 0; }));
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
  this->ears.Room = 0;
  this->place.Send("last words");
  ASSERT_TRUE(this->Until([&] { return this->ears.Asked > 0; }));
  this->place.Close();
  this->Settle();
  EXPECT_EQ(this->ears.Told, "C");
  EXPECT_TRUE(this->net.Connected(1));
  this->ears.Room = 4;
  EXPECT_TRUE(this->Tells("Clast wordsD"));
}

TYPED_TEST(SocketsContract, ABrokenConnectionIsClosed) {
  this->Connect();
  this->place.Break();
  EXPECT_TRUE(this->Tells("CD"));
}

TYPED_TEST(SocketsContract, TheEndMayBeAnsweredByConnectingAgain) {
  this->Connect();
  this->ears.OnEnd = [&] { EXPECT_EQ(this->Call(), 0); };
  this->place.Close();
  EXPECT_TRUE(this->Tells("CDC"));
}

TYPED_TEST(SocketsContract, ConnectingAnewVoidsTheOldConnection) {
  this->Connect();
  this->ears.Room = 0;
  this->place.Send("old");
  ASSERT_TRUE(this->Until([&] { return this->ears.Asked > 0; }));
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
  EXPECT_NE(this->net.Connect(7, "127.0.0.1", this->place.Port(), 1000), 0);
  EXPECT_FALSE(this->net.Connected(7));
  EXPECT_FALSE(this->net.Connecting(7));
  EXPECT_EQ(this->net.Read(7, &this->byte, 1), -1);
  EXPECT_EQ(this->net.Write(7, "x"), -1);
  EXPECT_EQ(this->net.Disconnect(7), 0);
  EXPECT_EQ(this->net.LastError(7), 0);
}

}  // namespace
}  // namespace corvid
