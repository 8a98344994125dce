// SPDX-License-Identifier: GPL-3.0-or-later
// The two networks that are held to one contract, each with its far end.
#pragma once

#include <sys/socket.h>

#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>
#include <memory>
#include <string>

#include "deaf_server.h"
#include "platform/memory/memory_sockets.h"
#include "platform/qt/sockets.h"
#include "qt_program.h"

namespace corvid {

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
  QtProgram qt_;

 public:
  QtEventLoop& Loop = qt_.loop;
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

}  // namespace corvid
