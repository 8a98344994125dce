// SPDX-License-Identifier: GPL-3.0-or-later
#include "server.h"

#include <QHostAddress>
#include <QTextStream>
#include <algorithm>
#include <limits>
#include <vector>

namespace corvid::practice {

namespace {

constexpr qint64 ReadPiece = 512;                 // bytes that are handed to the game before what they cause is sent
constexpr qint64 ReadBuffer = qint64{64} * 1024;  // what waits beyond it stays with the sender
constexpr int FarewellTime = 5000;                // milliseconds until a connection that is being closed is cut
constexpr const char* Farewell = "\r\nThe practice game ends. Goodbye.\r\n";
constexpr std::size_t PourPiece = std::size_t{64} * 1024;

void Complain(const QString& text) {
  QTextStream(stderr) << "corvid-practice: " << text << "\n";
}

}  // namespace

Server::Server(std::uint64_t seed, QString recordFile) : game_(seed), recordFile_(std::move(recordFile)) {
  clock_.start();
  timer_.setSingleShot(true);
  connect(&timer_, &QTimer::timeout, this, [this] {
    game_.Advance(Now());
    SendAll();
  });
  connect(&listener_, &QTcpServer::newConnection, this, &Server::TakeConnections);
}

Server::~Server() {
  for (auto& [id, peer] : peers_) peer.Socket->disconnect(this);
}

bool Server::Listen(std::uint16_t port) {
  return listener_.listen(QHostAddress::LocalHost, port);
}

std::uint16_t Server::Port() const {
  return listener_.serverPort();
}

QString Server::ErrorText() const {
  return listener_.errorString();
}

void Server::TakeConnections() {
  while (QTcpSocket* socket = listener_.nextPendingConnection()) {
    if (peers_.size() >= static_cast<std::size_t>(MaxConnections)) {
      socket->write("The game is full. Try again later.\r\n");
      connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
      QTimer::singleShot(FarewellTime, socket, &QTcpSocket::abort);
      socket->disconnectFromHost();
      continue;
    }
    socket->setReadBufferSize(ReadBuffer);
    socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    const int id = game_.Connect(Now());
    Peer& peer = peers_[id];
    peer.Socket = socket;
    OpenRecord(id, peer);
    connect(
        socket, &QTcpSocket::readyRead, this, [this, id] { ReadFrom(id); }, Qt::QueuedConnection);
    connect(
        socket, &QTcpSocket::bytesWritten, this,
        [this, id] {
          PourInto(id);
          ReadFrom(id);
        },
        Qt::QueuedConnection);
    connect(
        socket, &QTcpSocket::disconnected, this, [this, id] { Drop(id); }, Qt::QueuedConnection);
    SendAll();
  }
}

void Server::OpenRecord(int id, Peer& peer) {
  if (recordFile_.isEmpty()) return;
  const QString name = id == 1 ? recordFile_ : recordFile_ + "." + QString::number(id);
  peer.Record = std::make_unique<QFile>(name);
  if (peer.Record->open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered)) return;
  Complain("cannot write " + name + ": " + peer.Record->errorString());
  peer.Record.reset();
}

void Server::ReadFrom(int id) {
  while (true) {
    const auto found = peers_.find(id);
    if (found == peers_.end() || game_.Leaving(id)) return;
    QTcpSocket* socket = found->second.Socket;
    if (socket->bytesToWrite() >= PauseAt) return;
    const QByteArray piece = socket->read(ReadPiece);
    if (piece.isEmpty()) return;
    game_.Input(id, std::string_view(piece.constData(), static_cast<std::size_t>(piece.size())), Now());
    SendAll();
    PourInto(id);
  }
}

void Server::PourInto(int id) {
  while (true) {
    const auto found = peers_.find(id);
    if (found == peers_.end() || found->second.Socket->bytesToWrite() >= PauseAt) return;
    if (!game_.Pour(id, PourPiece)) return;
    Send(id, found->second);
  }
}

void Server::Send(int id, Peer& peer) {
  const std::string out = game_.TakeOutput(id);
  if (out.empty() || peer.Socket->state() != QAbstractSocket::ConnectedState) return;
  const auto size = static_cast<qint64>(out.size());
  peer.Socket->write(out.data(), size);
  if (peer.Record != nullptr && peer.Record->write(out.data(), size) != size) {
    Complain("cannot write " + peer.Record->fileName() + ": " + peer.Record->errorString());
    peer.Record.reset();
  }
}

void Server::SendAll() {
  std::vector<int> slow;
  for (auto& [id, peer] : peers_) {
    Send(id, peer);
    if (peer.Socket->bytesToWrite() > DropAt) slow.push_back(id);
    if (game_.Leaving(id) && peer.Socket->state() == QAbstractSocket::ConnectedState) {
      // The last words are still sent, but not for ever.
      QTimer::singleShot(FarewellTime, peer.Socket, [this, gone = id] { Drop(gone); });
      peer.Socket->disconnectFromHost();
    }
  }
  for (int id : slow) {
    Complain("connection " + QString::number(id) + " does not read and is dropped");
    Drop(id);
  }
  const Millis due = game_.NextDue();
  if (due == Never) {
    timer_.stop();
  } else {
    timer_.start(static_cast<int>(std::clamp<Millis>(due - Now(), 0, std::numeric_limits<int>::max())));
  }
}

void Server::Drop(int id) {
  const auto found = peers_.find(id);
  if (found == peers_.end()) return;
  QTcpSocket* socket = found->second.Socket;
  peers_.erase(found);
  socket->disconnect(this);
  socket->abort();
  socket->deleteLater();
  game_.Disconnect(id);
  SendAll();
}

void Server::Close() {
  listener_.close();
  for (auto& [id, peer] : peers_) {
    peer.Socket->disconnect(this);
    peer.Socket->write(Farewell);
    if (peer.Record != nullptr) peer.Record->write(Farewell);
    peer.Socket->flush();
    peer.Socket->disconnectFromHost();
  }
}

}  // namespace corvid::practice
