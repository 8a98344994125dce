// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/memory/memory_sockets.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <utility>

#include "core/fault.h"

namespace corvid {

void MemorySockets::Create(int16 Index) {
  if (FailCreate) throw Fault(FaultKind::Internal, "No socket in this test");
  if (Possible(Index)) At(Index).created = true;
}

bool MemorySockets::PortKnown(const std::string& port) const {
  if (port == "telnet") return true;
  int number = 0;
  const char* end = port.data() + port.size();
  const auto [rest, error] = std::from_chars(port.data(), end, number);
  return error == std::errc{} && rest == end && number >= 1 && number <= 65535;
}

int MemorySockets::Connect(int16 Index, const std::string& host, const std::string& port, int timeoutMilliseconds) {
  if (!Made(Index)) return ENOTSOCK;
  Slot& slot = At(Index);
  const unsigned attempt = slot.attempt + 1;
  slot = Slot{};
  slot.created = true;
  slot.attempt = attempt;
  slot.host = host;
  slot.port = port;
  slot.lastError = host.empty() || !PortKnown(port) ? EINVAL : ConnectError;
  if (slot.lastError != 0) return slot.lastError;
  slot.connecting = true;
  const int delay = OnConnectAnswer == Answer::Never ? timeoutMilliseconds : ConnectDelay;
  const std::size_t place = delays_.size();
  delays_.push_back(loop_.Create([this, place, Index, attempt] {
    delays_[place]->SetEnabled(false);  // one answer: a timer without delay would be due for ever
    Complete(Index, attempt);
  }));
  delays_.back()->SetInterval(delay);
  delays_.back()->SetEnabled(true);
  return 0;
}

void MemorySockets::Complete(int16 Index, unsigned attempt) {
  Slot& slot = At(Index);
  if (slot.attempt != attempt || !slot.connecting) return;
  slot.connecting = false;
  slot.connected = OnConnectAnswer == Answer::Accept;
  if (!slot.connected) slot.lastError = OnConnectAnswer == Answer::Never ? ETIMEDOUT : ECONNREFUSED;
  if (events_ == nullptr) return;
  if (slot.connected) {
    events_->OnConnect(Index);
  } else {
    events_->OnError(Index);
  }
}

int MemorySockets::Disconnect(int16 Index) {
  if (!Made(Index)) return 0;
  Slot& slot = At(Index);
  if (slot.connected) effects_.Add("disconnect", std::to_string(Index));
  slot.connected = slot.connecting = false;
  slot.incoming.clear();
  slot.waiting.clear();
  return DisconnectError;
}

int MemorySockets::Read(int16 Index, char* buffer, int length) {
  if (!Made(Index)) return -1;
  Slot& slot = At(Index);
  if (slot.incoming.empty() || length <= 0) return -1;
  const std::size_t count = std::min(slot.incoming.size(), static_cast<std::size_t>(length));
  slot.incoming.copy(buffer, count);
  slot.incoming.erase(0, count);
  return static_cast<int>(count);
}

int MemorySockets::Write(int16 Index, std::string_view bytes) {
  if (!Made(Index)) return -1;
  Slot& slot = At(Index);
  const auto fail = [&](int error) {
    slot.lastError = error;
    return -1;
  };
  if (!slot.connected || slot.peerGone) return fail(ENOTCONN);
  if (FailWrites) return fail(EPIPE);
  if (bytes.size() > WriteRoom) return fail(ENOBUFS);
  if (WriteRoom != std::string::npos) WriteRoom -= bytes.size();
  if (HalfOpen) return static_cast<int>(bytes.size());
  slot.waiting += bytes;
  Flow(Index);
  return static_cast<int>(bytes.size());
}

// Lets pass what the network takes.
void MemorySockets::Flow(int16 Index) {
  Slot& slot = At(Index);
  const std::string passes = slot.waiting.substr(0, slot.room);
  if (passes.empty()) return;
  slot.waiting.erase(0, passes.size());
  if (slot.room != std::string::npos) slot.room -= passes.size();
  slot.written += passes;
  effects_.Add("wire", std::to_string(Index) + " " + passes);
}

void MemorySockets::Congest(int16 Index, std::size_t room) {
  At(Index).room = room;
}

void MemorySockets::Drain(int16 Index, std::size_t bytes) {
  At(Index).room = bytes;
  Flow(Index);
}

void MemorySockets::Receive(int16 Index, std::string_view bytes) {
  if (!At(Index).connected || At(Index).peerGone) return;
  At(Index).incoming += bytes;
  Deliver(Index);
}

void MemorySockets::Deliver(int16 Index) {
  auto& retry = retries_.at(static_cast<std::size_t>(Index));
  if (!retry)
    retry = loop_.Create([this, Index] {
      retries_.at(static_cast<std::size_t>(Index))->SetEnabled(false);
      Deliver(Index);
    });
  const auto again = [&](int milliseconds) {
    retry->SetInterval(milliseconds);
    retry->SetEnabled(true);
  };
  while (events_ != nullptr && !At(Index).incoming.empty() && At(Index).connected) {
    const std::size_t waits = At(Index).incoming.size();
    again(0);  // a handler that waits gets the rest while it waits
    events_->OnRead(Index);
    retry->SetEnabled(false);
    if (At(Index).incoming.size() == waits) return again(RetryMilliseconds);
  }
}

void MemorySockets::CloseByPeer(int16 Index) {
  Slot& slot = At(Index);
  if (!slot.connected) return;
  slot.peerGone = true;
  slot.waiting.clear();
  if (!slot.incoming.empty() && events_ != nullptr) {
    // The end is behind the bytes that still wait to be read.
    const std::size_t place = delays_.size();
    delays_.push_back(loop_.Create([this, place, Index, attempt = slot.attempt] {
      const bool stands = At(Index).attempt == attempt && At(Index).connected;
      if (stands && !At(Index).incoming.empty()) return;
      delays_[place]->SetEnabled(false);
      if (stands) CloseByPeer(Index);
    }));
    delays_.back()->SetInterval(RetryMilliseconds);
    delays_.back()->SetEnabled(true);
    return;
  }
  slot.connected = false;
  if (events_ != nullptr) events_->OnDisconnect(Index);
}

void MemorySockets::Reset(int16 Index, int error) {
  At(Index).lastError = error;
  CloseByPeer(Index);
}

std::string MemorySockets::TakeWritten(int16 Index) {
  return std::exchange(At(Index).written, {});
}

}  // namespace corvid
