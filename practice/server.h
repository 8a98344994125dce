// SPDX-License-Identifier: GPL-3.0-or-later
// The sockets of the practice game.
#pragma once

#include <QElapsedTimer>
#include <QFile>
#include <QObject>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>
#include <cstdint>
#include <map>
#include <memory>

#include "game/game.h"

namespace corvid::practice {

// Listens on 127.0.0.1 alone and carries bytes between the players and the game. A player that does not read is neither
// read nor flooded meanwhile, and is dropped when what others cause to be sent to it grows beyond all measure.
class Server : public QObject {
  Q_OBJECT

 public:
  static constexpr int MaxConnections = 100;
  static constexpr qint64 PauseAt = qint64{128} * 1024;      // unsent bytes from which nothing more is read or poured
  static constexpr qint64 DropAt = qint64{2} * 1024 * 1024;  // unsent bytes that end a connection

  // recordFile: what is sent to the first connection goes there, to the others with ".2", ".3" behind; empty: nowhere.
  Server(std::uint64_t seed, QString recordFile);
  ~Server() override;

  bool Listen(std::uint16_t port);  // 0 takes a free one; false: see ErrorText
  std::uint16_t Port() const;
  QString ErrorText() const;
  void Close();  // says goodbye to all and closes

 private:
  struct Peer {
    QTcpSocket* Socket = nullptr;  // owned by the server object
    std::unique_ptr<QFile> Record;
  };

  void TakeConnections();
  void ReadFrom(int id);
  void Send(int id, Peer& peer);
  void SendAll();  // to everybody what the game has for them, and sets the clock to its next event
  void PourInto(int id);
  void Drop(int id);
  void OpenRecord(int id, Peer& peer);
  Millis Now() const { return clock_.elapsed(); }

  Game game_;
  QString recordFile_;
  QTcpServer listener_;
  QTimer timer_;
  QElapsedTimer clock_;
  std::map<int, Peer> peers_;
};

}  // namespace corvid::practice
