// SPDX-License-Identifier: GPL-3.0-or-later
// The real sockets against a loopback server of the test's own.
#include "platform/qt/sockets.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>
#include <cerrno>
#include <functional>

#include "deaf_server.h"
#include "qt_program.h"

namespace corvid {
namespace {

class Recorder : public SocketEvents {
 public:
  void OnConnect(int16) override { log += "C"; }
  void OnDisconnect(int16) override {
    log += "D";
    if (connectedNow) log += connectedNow() ? "+" : "-";
  }
  void OnRead(int16 Index) override {
    ++reads;
    if (onRead) return onRead(Index);
    char bytes[4096];
    const int count = sockets->Read(Index, bytes, sizeof bytes);
    if (count > 0) text.append(bytes, static_cast<std::size_t>(count));
  }
  void OnError(int16) override { log += "E"; }

  QtSockets* sockets = nullptr;
  std::string log, text;
  int reads = 0;
  std::function<void(int16)> onRead;
  std::function<bool()> connectedNow;
};

class QtSocketsTest : public testing::Test {
 protected:
  QtSocketsTest() {
    recorder.sockets = &sockets;
    sockets.SetEvents(&recorder);
    sockets.Create(1);
    server.listen(QHostAddress::LocalHost, 0);
  }
  std::string Port() const { return std::to_string(server.serverPort()); }
  bool Until(const std::function<bool()>& done, int milliseconds = 5000) {
    QElapsedTimer time;
    time.start();
    while (!done()) {
      if (time.hasExpired(milliseconds)) return false;
      program.loop.WaitEvents(20);
    }
    return true;
  }
  QTcpSocket* ConnectOne() {
    EXPECT_EQ(sockets.Connect(1, "127.0.0.1", Port(), 5000), 0);
    EXPECT_TRUE(sockets.Connecting(1));
    QTcpSocket* peer = nullptr;
    EXPECT_TRUE(Until([&] {
      if (peer == nullptr) peer = server.nextPendingConnection();
      return peer != nullptr && sockets.Connected(1);
    }));
    return peer;
  }

  QtProgram program;
  QTcpServer server;
  QtSockets sockets;
  Recorder recorder;
};

TEST_F(QtSocketsTest, BytesGoBothWays) {
  QTcpSocket* peer = ConnectOne();
  EXPECT_EQ(recorder.log, "C");
  EXPECT_FALSE(sockets.Connecting(1));
  EXPECT_EQ(sockets.Write(1, "look\r\n"), 6);
  ASSERT_TRUE(Until([&] { return peer->bytesAvailable() >= 6; }));
  EXPECT_EQ(peer->readAll(), "look\r\n");
  peer->write("A room.\r\n");
  ASSERT_TRUE(Until([&] { return recorder.text.size() >= 9; }));
  EXPECT_EQ(recorder.text, "A room.\r\n");
  char byte = 0;
  EXPECT_EQ(sockets.Read(1, &byte, 1), -1);
}

TEST_F(QtSocketsTest, PeerCloseComesAfterItsLastByte) {
  QTcpSocket* peer = ConnectOne();
  recorder.connectedNow = [&] { return sockets.Connected(1); };
  const QByteArray last(1'000'000, 'x');
  peer->write(last);
  peer->disconnectFromHost();
  ASSERT_TRUE(Until([&] { return recorder.log.find('D') != std::string::npos; }));
  EXPECT_EQ(recorder.text.size(), 1'000'000U);
  EXPECT_EQ(recorder.log, "CD-");
  EXPECT_EQ(sockets.Write(1, "x"), -1);
  EXPECT_EQ(sockets.LastError(1), ENOTCONN);
}

TEST_F(QtSocketsTest, OwnDisconnectIsSilent) {
  QTcpSocket* peer = ConnectOne();
  EXPECT_EQ(sockets.Disconnect(1), 0);
  EXPECT_FALSE(sockets.Connected(1));
  ASSERT_TRUE(Until([&] { return peer->state() == QAbstractSocket::UnconnectedState; }));
  EXPECT_EQ(recorder.log, "C");
  EXPECT_EQ(sockets.Disconnect(1), 0);
}

TEST_F(QtSocketsTest, RefusalIsAnErrorEvent) {
  const std::string port = Port();
  server.close();
  ASSERT_EQ(sockets.Connect(1, "127.0.0.1", port, 5000), 0);
  ASSERT_TRUE(Until([&] { return !recorder.log.empty(); }));
  EXPECT_EQ(recorder.log, "E");
  EXPECT_EQ(sockets.LastError(1), ECONNREFUSED);
  EXPECT_FALSE(sockets.Connecting(1));
}

TEST_F(QtSocketsTest, ConnectingHasATimeLimit) {
  const DeafServer deaf;
  ASSERT_EQ(sockets.Connect(1, "127.0.0.1", deaf.Port(), 40), 0);
  ASSERT_TRUE(Until([&] { return !recorder.log.empty(); }));
  EXPECT_EQ(recorder.log, "E");
  EXPECT_EQ(sockets.LastError(1), ETIMEDOUT);
}

TEST_F(QtSocketsTest, AHandlerThatWaitsHearsItsOwnSocket) {
  QTcpSocket* peer = ConnectOne();
  int depth = 0;
  int deepest = 0;
  recorder.onRead = [&](int16 Index) {
    char byte = 0;
    sockets.Read(Index, &byte, 1);
    recorder.text += byte;
    deepest = std::max(deepest, ++depth);
    if (byte == 'w') Until([&] { return recorder.text.find('z') != std::string::npos; });
    --depth;
  };
  peer->write("wxyz");
  ASSERT_TRUE(Until([&] { return recorder.text.size() == 4; }));
  EXPECT_EQ(recorder.text, "wxyz");
  EXPECT_EQ(deepest, 2);
}

TEST_F(QtSocketsTest, AFloodLeavesRoomForTimers) {
  QTcpSocket* peer = ConnectOne();
  recorder.onRead = [&](int16 Index) {
    char bytes[16];
    sockets.Read(Index, bytes, sizeof bytes);
  };
  int readsAtTick = -1;
  QtTimers timers;
  const auto timer = timers.Create([&] { readsAtTick = recorder.reads; });
  peer->write(QByteArray(200'000, 'x'));
  peer->flush();
  ASSERT_TRUE(Until([&] { return recorder.reads > 0; }));
  timer->SetInterval(1);
  timer->SetEnabled(true);
  ASSERT_TRUE(Until([&] { return readsAtTick >= 0; }));
  EXPECT_LT(readsAtTick, 200'000 / 16);
}

// A server that reads nothing for a while: the system takes a part of what is sent, the rest waits here, and what is
// too much is refused whole. Whatever was accepted arrives once, in its order, and no part of anything else.
TEST_F(QtSocketsTest, WhatIsTakenInPiecesArrivesOnceAndInOrder) {
  QTcpSocket* peer = ConnectOne();
  peer->setReadBufferSize(1);  // reads no more than that by itself
  std::string accepted;
  int number = 0;
  bool refused = false;
  for (; number < 10'000 && !refused; ++number) {
    std::string line = "line " + std::to_string(number) + " ";
    line.resize(1000, static_cast<char>('a' + number % 26));
    refused = sockets.Write(1, line) < 0;
    if (!refused) accepted += line;
  }
  ASSERT_TRUE(refused) << "after " << number << " lines";
  EXPECT_EQ(sockets.LastError(1), ENOBUFS);
  EXPECT_TRUE(sockets.Connected(1)) << "the caller decides what becomes of it";
  EXPECT_GT(accepted.size(), 100'000U);
  peer->setReadBufferSize(0);
  std::string arrived;
  const auto take = [&] {
    arrived += peer->readAll().toStdString();
    return arrived.size() >= accepted.size();
  };
  ASSERT_TRUE(Until(take, 20'000)) << arrived.size() << " of " << accepted.size();
  EXPECT_EQ(sockets.Write(1, "and on"), 6);
  accepted += "and on";
  ASSERT_TRUE(Until(take));
  EXPECT_TRUE(arrived == accepted);
}

TEST_F(QtSocketsTest, WhatWaitsWhenTheServerGoesIsNotSentToTheNextOne) {
  QTcpSocket* first = ConnectOne();
  first->setReadBufferSize(1);
  while (sockets.Write(1, std::string(1000, 'o')) > 0) {
  }
  first->abort();
  ASSERT_TRUE(Until([&] { return recorder.log.find('D') != std::string::npos; }));
  EXPECT_EQ(sockets.Write(1, "x"), -1);
  QTcpSocket* second = ConnectOne();
  EXPECT_EQ(sockets.Write(1, "look\r\n"), 6);
  ASSERT_TRUE(Until([&] { return second->bytesAvailable() >= 6; }));
  EXPECT_EQ(second->readAll(), "look\r\n");
}

TEST_F(QtSocketsTest, AHandlerThatReadsNothingDoesNotSpin) {
  QTcpSocket* peer = ConnectOne();
  recorder.onRead = [](int16) {};
  peer->write("x");
  ASSERT_TRUE(Until([&] { return recorder.reads > 0; }));
  program.loop.DoEvents();
  program.loop.DoEvents();
  EXPECT_LE(recorder.reads, 2);
  recorder.onRead = nullptr;
  ASSERT_TRUE(Until([&] { return recorder.text == "x"; }));
}

// A flood must not fill the memory while a script or the player keeps the session waiting.
TEST_F(QtSocketsTest, WhatIsNotReadWaitsAtTheServer) {
  QTcpSocket* peer = ConnectOne();
  recorder.onRead = [](int16) {};
  const QByteArray flood(32 << 20, 'x');  // far more than the system keeps under way
  peer->write(flood);
  qint64 before = -1;
  int still = 0;  // turns without a byte on its way
  ASSERT_TRUE(Until(
      [&] {
        still = before == peer->bytesToWrite() ? still + 1 : 0;
        before = peer->bytesToWrite();
        return still == 20;
      },
      20000));
  EXPECT_GT(peer->bytesToWrite(), 0);
  recorder.onRead = nullptr;
  ASSERT_TRUE(Until([&] { return recorder.text.size() == static_cast<std::size_t>(flood.size()); }, 60000));
}

TEST_F(QtSocketsTest, ConnectingAnewVoidsTheOldConnection) {
  QTcpSocket* first = ConnectOne();
  first->write("old");
  first->flush();
  QTcpSocket* second = ConnectOne();
  ASSERT_NE(first, second);
  second->write("new");
  ASSERT_TRUE(Until([&] { return recorder.text.size() >= 3; }));
  EXPECT_EQ(recorder.text, "new");
  EXPECT_EQ(recorder.log, "CC");
}

TEST_F(QtSocketsTest, PortsAreNumbersOrServiceNames) {
  EXPECT_TRUE(sockets.PortKnown("1"));
  EXPECT_TRUE(sockets.PortKnown("65535"));
  EXPECT_FALSE(sockets.PortKnown("0"));
  EXPECT_FALSE(sockets.PortKnown("65536"));
  EXPECT_FALSE(sockets.PortKnown(""));
  EXPECT_FALSE(sockets.PortKnown("no such service"));
  EXPECT_FALSE(sockets.PortKnown("23 "));
  EXPECT_NE(sockets.Connect(1, "127.0.0.1", "none", 100), 0);
  EXPECT_EQ(sockets.LastError(1), EINVAL);
}

TEST_F(QtSocketsTest, ASlotThatWasNeverMadeIsHarmless) {
  char byte = 0;
  EXPECT_FALSE(sockets.Connected(7));
  EXPECT_EQ(sockets.Read(7, &byte, 1), -1);
  EXPECT_EQ(sockets.Write(7, "x"), -1);
  EXPECT_NE(sockets.Connect(7, "127.0.0.1", Port(), 100), 0);
  EXPECT_EQ(sockets.Disconnect(-3), 0);
  EXPECT_EQ(sockets.LastError(99), 0);
}

}  // namespace
}  // namespace corvid
