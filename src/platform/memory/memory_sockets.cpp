// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/memory/memory_sockets.h"

#include <algorithm>

#include "core/fault.h"
#include "core/number.h"

namespace corvid {

void MemorySockets::Create(int16 Index) {
  if (FailCreate) throw Fault(FaultKind::Internal, "No socket in this test");
  At(Index).created = true;
}

bool MemorySockets::PortKnown(const std::string& port) const {
  if (port == "telnet") return true;
  return IsNumeric(port) && Val(port) >= 1 && Val(port) <= 65535;
}

int MemorySockets::Connect(int16 Index, const std::string& host, const std::string& port, int timeoutMilliseconds) {
  Slot& slot = At(Index);
  const unsigned attempt = slot.attempt + 1;
  const bool created = slot.created;
  slot = Slot{};
  slot.created = created;
  slot.attempt = attempt;
  slot.host = host;
  slot.port = port;
  if (ConnectError != 0) {
    slot.lastError = ConnectError;
    return ConnectError;
  }
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
  if (events_ == nullptr) return;
  if (slot.connected) {
    events_->OnConnect(Index);
  } else {
    slot.lastError = 111;
    events_->OnError(Index);
  }
}

int MemorySockets::Disconnect(int16 Index) {
  Slot& slot = At(Index);
  if (slot.connected) effects_.Add("disconnect", std::to_string(Index));
  slot.connected = slot.connecting = false;
  slot.incoming.clear();
  slot.waiting.clear();
  return DisconnectError;
}

int MemorySockets::Read(int16 Index, char* buffer, int length) {
  Slot& slot = At(Index);
  if (slot.incoming.empty()) return -1;
  const std::size_t count = std::min(slot.incoming.size(), static_cast<std::size_t>(length));
  slot.incoming.copy(buffer, count);
  slot.incoming.erase(0, count);
  return static_cast<int>(count);
}

int MemorySockets::Write(int16 Index, std::string_view bytes) {
  Slot& slot = At(Index);
  if (FailWrites || !slot.connected) {
    slot.lastError = 32;
    return -1;
  }
  if (bytes.size() > WriteRoom) {
    slot.lastError = 105;
    return -1;
  }
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
  At(Index).incoming += bytes;
  Deliver(Index);
}

void MemorySockets::Deliver(int16 Index) {
  while (events_ != nullptr && !At(Index).incoming.empty() && At(Index).connected) {
    const std::size_t waits = At(Index).incoming.size();
    events_->OnRead(Index);
    if (At(Index).incoming.size() != waits) continue;
    auto& retry = retries_.at(static_cast<std::size_t>(Index));
    if (!retry)
      retry = loop_.Create([this, Index] {
        retries_.at(static_cast<std::size_t>(Index))->SetEnabled(false);
        Deliver(Index);
      });
    retry->SetInterval(RetryMilliseconds);
    retry->SetEnabled(true);
    return;
  }
}

void MemorySockets::CloseByPeer(int16 Index) {
  At(Index).connected = false;
  At(Index).waiting.clear();
  if (events_ != nullptr) events_->OnDisconnect(Index);
}

void MemorySockets::Reset(int16 Index, int error) {
  At(Index).incoming.clear();
  At(Index).lastError = error;
  CloseByPeer(Index);
}

std::string MemorySockets::TakeWritten(int16 Index) {
  return std::exchange(At(Index).written, {});
}

}  // namespace corvid
