// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/speechd/orca_service.h"

#include <sys/stat.h>

#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>
#include <algorithm>
#include <cstdint>
#include <cstdlib>

namespace corvid {

namespace {

constexpr int CallLimit = 500;  // milliseconds
constexpr std::chrono::seconds LookInterval{5};
constexpr std::chrono::milliseconds TimeOfText{500};       // what a text takes at least ...
constexpr std::chrono::milliseconds TimeOfCharacter{150};  // ... and in addition for each byte

// A way to silence Orca. Versions differ; the first that works is the right one.
struct StopCall {
  const char* path;
  const char* interface;
  const char* method;
  bool named;  // the command's name is the first argument
};

// How one generation of Orca is spoken to.
struct Dialect {
  const char* service;  // also the interface
  const char* path;
  std::array<StopCall, 2> stops;
};

constexpr std::array<Dialect, 2> Dialects{
    {{"org.gnome.Orca1.Service",
      "/org/gnome/Orca1/Service",
      {{{"/org/gnome/Orca1/Service/SpeechManager", "org.gnome.Orca1.SpeechManager", "InterruptSpeech", false},
        {"/org/gnome/Orca1/Service/SpeechAndVerbosityManager", "org.gnome.Orca1.SpeechAndVerbosityManager",
         "InterruptSpeech", false}}}},
     {"org.gnome.Orca.Service",
      "/org/gnome/Orca/Service",
      {{{"/org/gnome/Orca/Service/SpeechManager", "org.gnome.Orca.Module", "ExecuteCommand", true},
        {"/org/gnome/Orca/Service/SpeechAndVerbosityManager", "org.gnome.Orca.Module", "ExecuteCommand", true}}}}}};

// A session without a bus is left alone: the library would try to start one.
bool SessionHasBus() {
  if (getenv("DBUS_SESSION_BUS_ADDRESS") != nullptr) return true;
  const char* folder = getenv("XDG_RUNTIME_DIR");
  struct stat status {};
  return folder != nullptr && stat((std::string(folder) + "/bus").c_str(), &status) == 0;
}

}  // namespace

struct OrcaService::Bus {
  QString name;
  QDBusConnection connection;
  const Dialect* dialect = nullptr;  // nullptr while no Orca has been found

  explicit Bus(const QString& name_)
      : name(name_), connection(QDBusConnection::connectToBus(QDBusConnection::SessionBus, name_)) {}
  ~Bus() { QDBusConnection::disconnectFromBus(name); }
  Bus(const Bus&) = delete;
  Bus& operator=(const Bus&) = delete;

  QDBusMessage Call(const char* service, const char* path, const char* interface, const char* method,
                    const QVariantList& arguments) const {
    QDBusMessage message = QDBusMessage::createMethodCall(service, path, interface, method);
    message.setArguments(arguments);
    message.setAutoStartService(false);
    return connection.call(message, QDBus::Block, CallLimit);
  }
  bool Succeeds(const char* service, const char* path, const char* interface, const char* method,
                const QVariantList& arguments) const {
    const QDBusMessage reply = Call(service, path, interface, method, arguments);
    return reply.type() == QDBusMessage::ReplyMessage && reply.arguments().value(0).toBool();
  }
};

OrcaService::OrcaService() = default;

OrcaService::~OrcaService() = default;

bool OrcaService::Present() {
  if (bus_ != nullptr && bus_->dialect != nullptr) return true;
  const auto now = Clock::now();
  if (now < nextLook_) return false;
  nextLook_ = now + LookInterval;
  return SessionHasBus() && FindDialect();
}

bool OrcaService::FindDialect() {
  if (bus_ == nullptr || !bus_->connection.isConnected()) {
    bus_ = nullptr;  // first, since the new one may bear the same name
    bus_ = std::make_unique<Bus>("corvid-orca-" + QString::number(reinterpret_cast<std::uintptr_t>(this)));
  }
  if (!bus_->connection.isConnected()) return false;
  for (const Dialect& dialect : Dialects) {
    constexpr const char* bus = "org.freedesktop.DBus";
    if (!bus_->Succeeds(bus, "/org/freedesktop/DBus", bus, "NameHasOwner", {dialect.service})) continue;
    bus_->dialect = &dialect;
    return true;
  }
  return false;
}

bool OrcaService::Say(std::size_t channel, const std::string& utf8) {
  if (!Present()) return false;
  const Dialect& dialect = *bus_->dialect;
  if (!bus_->Succeeds(dialect.service, dialect.path, dialect.service, "PresentMessage",
                      {QString::fromStdString(utf8)})) {
    bus_->dialect = nullptr;
    saidUntil_ = {};
    return false;
  }
  const auto start = std::max(Clock::now(), *std::max_element(saidUntil_.begin(), saidUntil_.end()));
  saidUntil_[channel] = start + TimeOfText + TimeOfCharacter * utf8.size();
  return true;
}

void OrcaService::Stop(std::size_t channel) {
  if (bus_ == nullptr || bus_->dialect == nullptr) return;
  const auto now = Clock::now();
  const bool hadWords = saidUntil_[channel] > now;
  saidUntil_[channel] = {};
  const bool othersHave =
      std::any_of(saidUntil_.begin(), saidUntil_.end(), [now](Clock::time_point until) { return until > now; });
  if (!hadWords || othersHave) return;
  for (const StopCall& stop : bus_->dialect->stops) {
    const QVariantList arguments = stop.named ? QVariantList{"InterruptSpeech", false} : QVariantList{false};
    if (bus_->Succeeds(bus_->dialect->service, stop.path, stop.interface, stop.method, arguments)) return;
    if (!stop.named && bus_->Succeeds(bus_->dialect->service, stop.path, stop.interface, stop.method, {})) return;
  }
}

}  // namespace corvid
