// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/sockets.h"

#include <netdb.h>
#include <netinet/in.h>

#include <QNetworkProxy>
#include <QTcpSocket>
#include <QTimer>
#include <array>
#include <cerrno>
#include <charconv>
#include <optional>
#include <utility>

namespace corvid {

namespace {

enum class State { Closed, Connecting, Open, PeerClosed };  // PeerClosed: bytes that came before are still to be read

std::optional<quint16> PortNumber(const std::string& port) {
  int number = 0;
  const char* end = port.data() + port.size();
  const auto [rest, error] = std::from_chars(port.data(), end, number);
  if (error == std::errc{} && rest == end) {
    if (number < 1 || number > 65535) return std::nullopt;
    return static_cast<quint16>(number);
  }
  if (port.empty()) return std::nullopt;
  servent entry{};
  servent* found = nullptr;
  std::array<char, 4096> space{};
  getservbyname_r(port.c_str(), "tcp", &entry, space.data(), space.size(), &found);
  if (found == nullptr) return std::nullopt;
  return ntohs(static_cast<std::uint16_t>(found->s_port));
}

// Qt keeps the system's number to itself; this gives the one that it stands for.
int SystemError(QAbstractSocket::SocketError error) {
  switch (error) {
    case QAbstractSocket::ConnectionRefusedError:
      return ECONNREFUSED;
    case QAbstractSocket::RemoteHostClosedError:
      return ECONNRESET;
    case QAbstractSocket::HostNotFoundError:
      return EHOSTUNREACH;
    case QAbstractSocket::SocketAccessError:
      return EACCES;
    case QAbstractSocket::SocketResourceError:
      return EMFILE;
    case QAbstractSocket::SocketTimeoutError:
      return ETIMEDOUT;
    case QAbstractSocket::NetworkError:
      return ENETUNREACH;
    case QAbstractSocket::AddressInUseError:
      return EADDRINUSE;
    case QAbstractSocket::SocketAddressNotAvailableError:
      return EADDRNOTAVAIL;
    default:
      return EIO;
  }
}

}  // namespace

struct QtSockets::Slot {
  explicit Slot(int16 index) : Index(index) {
    Limit.setSingleShot(true);
    Retry.setSingleShot(true);
    Retry.setInterval(10);
  }
  bool BytesWait() const { return Socket && Socket->bytesAvailable() > 0; }

  const int16 Index;
  std::unique_ptr<QTcpSocket> Socket;  // anew for each connection
  State Now = State::Closed;
  int Error = 0;
  std::uint64_t Connection = 0;  // counts connections and resets: what was queued for an older one is void
  std::uint64_t BytesTaken = 0;
  bool Scheduled = false;
  bool Resting = false;  // the handler left everything unread
  QTimer Limit;          // for the connection to stand
  QTimer Retry;          // ends a rest
  QObject Receiver;      // declared last: its queued calls die before the rest
};

QtSockets::QtSockets() = default;
QtSockets::~QtSockets() = default;

QtSockets::Slot* QtSockets::Find(int16 Index) const {
  if (Index < 0 || Index > MaxConnections) return nullptr;
  return slots_[static_cast<std::size_t>(Index)].get();
}

void QtSockets::Create(int16 Index) {
  if (Index < 0 || Index > MaxConnections || Find(Index) != nullptr) return;
  auto& slot = slots_[static_cast<std::size_t>(Index)];
  slot = std::make_unique<Slot>(Index);
  Slot* made = slot.get();
  QObject::connect(&made->Limit, &QTimer::timeout, &made->Receiver, [this, made] { Failed(*made, ETIMEDOUT); });
  QObject::connect(&made->Retry, &QTimer::timeout, &made->Receiver, [this, made] { Wake(*made); });
}

bool QtSockets::Connected(int16 Index) const {
  const Slot* slot = Find(Index);
  return slot != nullptr && (slot->Now == State::Open || slot->Now == State::PeerClosed);
}

bool QtSockets::Connecting(int16 Index) const {
  const Slot* slot = Find(Index);
  return slot != nullptr && slot->Now == State::Connecting;
}

bool QtSockets::PortKnown(const std::string& port) const {
  return PortNumber(port).has_value();
}

int QtSockets::Connect(int16 Index, const std::string& host, const std::string& port, int timeoutMilliseconds) {
  Slot* slot = Find(Index);
  if (slot == nullptr) return ENOTSOCK;
  Reset(*slot);
  const auto number = PortNumber(port);
  if (!number || host.empty()) return slot->Error = EINVAL;
  slot->Error = 0;
  slot->Now = State::Connecting;
  slot->Socket = std::make_unique<QTcpSocket>();
  slot->Socket->setProxy(QNetworkProxy::NoProxy);
  slot->Socket->setReadBufferSize(ReadBufferSize);
  Listen(*slot);
  slot->Limit.start(timeoutMilliseconds);
  slot->Socket->connectToHost(QString::fromStdString(host), *number);
  return 0;
}

// All of it queued, so that no handler runs inside the socket's own code and a waiting handler hears its own socket.
void QtSockets::Listen(Slot& slot) {
  const auto current = [slotp = &slot, connection = slot.Connection] { return slotp->Connection == connection; };
  QTcpSocket* socket = slot.Socket.get();
  const auto on = [&](auto signal, auto action) {
    QObject::connect(
        socket, signal, &slot.Receiver,
        [this, slotp = &slot, current, action] {
          if (current()) action(*this, *slotp);
        },
        Qt::QueuedConnection);
  };
  on(&QTcpSocket::connected, [](QtSockets& all, Slot& s) { all.Stands(s); });
  on(&QTcpSocket::readyRead, [](QtSockets& all, Slot& s) { all.Wake(s); });
  on(&QTcpSocket::errorOccurred, [](QtSockets& all, Slot& s) {
    if (s.Now == State::Connecting) all.Failed(s, SystemError(s.Socket->error()));
  });
  on(&QTcpSocket::disconnected, [](QtSockets& all, Slot& s) {
    if (s.Now != State::Open) return;
    s.Error = s.Socket->error() == QAbstractSocket::RemoteHostClosedError ? 0 : SystemError(s.Socket->error());
    s.Now = State::PeerClosed;
    all.Schedule(s);
  });
}

void QtSockets::Reset(Slot& slot) {
  ++slot.Connection;
  slot.Limit.stop();
  slot.Retry.stop();
  slot.Scheduled = false;
  slot.Resting = false;
  slot.Socket.reset();
  slot.Now = State::Closed;
}

void QtSockets::Stands(Slot& slot) {
  if (slot.Now != State::Connecting) return;
  slot.Limit.stop();
  slot.Now = State::Open;
  slot.Socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);  // a typed line leaves at once
  const auto connection = slot.Connection;
  if (events_ != nullptr) events_->OnConnect(slot.Index);
  if (connection == slot.Connection) Schedule(slot);
}

void QtSockets::Failed(Slot& slot, int error) {
  if (slot.Now != State::Connecting) return;
  Reset(slot);
  slot.Error = error;
  if (events_ != nullptr) events_->OnError(slot.Index);
}

int QtSockets::Disconnect(int16 Index) {
  Slot* slot = Find(Index);
  if (slot != nullptr) Reset(*slot);
  return 0;
}

int QtSockets::Read(int16 Index, char* buffer, int length) {
  Slot* slot = Find(Index);
  if (slot == nullptr || length <= 0 || !slot->BytesWait()) return -1;
  const auto count = slot->Socket->read(buffer, length);
  if (count <= 0) return -1;
  slot->BytesTaken += static_cast<std::uint64_t>(count);
  return static_cast<int>(count);
}

int QtSockets::Write(int16 Index, std::string_view bytes) {
  Slot* slot = Find(Index);
  if (slot == nullptr) return -1;
  const auto fail = [&](int error) {
    slot->Error = error;
    return -1;
  };
  if (slot->Now != State::Open || slot->Socket->state() != QAbstractSocket::ConnectedState) return fail(ENOTCONN);
  const auto size = static_cast<qint64>(bytes.size());
  if (slot->Socket->bytesToWrite() + size > WriteBufferLimit) return fail(ENOBUFS);
  if (slot->Socket->write(bytes.data(), size) != size) return fail(SystemError(slot->Socket->error()));
  slot->Socket->flush();  // now, not when the loop comes round
  return static_cast<int>(size);
}

int QtSockets::LastError(int16 Index) const {
  const Slot* slot = Find(Index);
  return slot == nullptr ? 0 : slot->Error;
}

void QtSockets::Schedule(Slot& slot) {
  if (slot.Scheduled || slot.Now == State::Closed || slot.Now == State::Connecting) return;
  slot.Scheduled = true;
  QMetaObject::invokeMethod(
      &slot.Receiver,
      [this, slotp = &slot, connection = slot.Connection] {
        if (slotp->Connection == connection) Pump(*slotp);
      },
      Qt::QueuedConnection);
}

void QtSockets::Wake(Slot& slot) {
  slot.Resting = false;
  Schedule(slot);
}

void QtSockets::Pump(Slot& slot) {
  slot.Scheduled = false;
  if (events_ == nullptr || slot.Resting) return;
  if (!slot.BytesWait()) return FinishClose(slot);
  const auto connection = slot.Connection;
  Schedule(slot);  // before the handlers: one that waits must get the rest while it waits
  for (int i = 0; i < ReadsPerTurn && slot.BytesWait(); ++i) {
    const auto taken = slot.BytesTaken;
    events_->OnRead(slot.Index);
    if (slot.Connection != connection) return;
    if (slot.BytesTaken != taken) continue;
    slot.Resting = true;  // the handler wants nothing now, and asking at once would only burn the processor
    slot.Retry.start();
    return;
  }
}

void QtSockets::FinishClose(Slot& slot) {
  if (slot.Now != State::PeerClosed) return;
  const int error = slot.Error;
  Reset(slot);
  slot.Error = error;
  events_->OnDisconnect(slot.Index);
}

}  // namespace corvid
