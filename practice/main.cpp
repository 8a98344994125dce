// SPDX-License-Identifier: GPL-3.0-or-later
// corvid-practice: a small game to learn the client with.
#include <sys/socket.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QFile>
#include <QSocketNotifier>
#include <array>
#include <csignal>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

#include "game/arguments.h"
#include "server.h"

namespace {

// A signal handler can only write to a socket; the event loop reads its other end. It has no way to get at an object,
// which is why these two numbers stand here.
std::array<int, 2> signalSockets{-1, -1};

extern "C" void OnSignal(int) {
  const char byte = 1;
  const ssize_t ignored = write(signalSockets[0], &byte, 1);
  static_cast<void>(ignored);
}

bool CatchSignals() {
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, signalSockets.data()) != 0) return false;
  struct sigaction action {};
  action.sa_handler = OnSignal;
  action.sa_flags = SA_RESTART;
  struct sigaction ignore {};
  ignore.sa_handler = SIG_IGN;
  return sigaction(SIGTERM, &action, nullptr) == 0 && sigaction(SIGINT, &action, nullptr) == 0 &&
         sigaction(SIGHUP, &action, nullptr) == 0 && sigaction(SIGPIPE, &ignore, nullptr) == 0;
}

int Fail(const std::string& text, int code) {
  std::fprintf(stderr, "corvid-practice: %s\n", text.c_str());
  return code;
}

bool CanWrite(const std::string& name) {
  QFile file(QString::fromLocal8Bit(name.c_str()));
  return file.open(QIODevice::WriteOnly | QIODevice::Append);
}

std::uint64_t AnySeed() {
  std::random_device device;
  return (static_cast<std::uint64_t>(device()) << 32U) | device();
}

int Run(const corvid::practice::Arguments& arguments) {
  corvid::practice::Server server(arguments.Seed.value_or(AnySeed()), QString::fromLocal8Bit(arguments.Record.c_str()));
  if (!server.Listen(arguments.Port)) {
    return Fail("cannot listen on port " + std::to_string(arguments.Port) + ": " + server.ErrorText().toStdString(), 1);
  }
  const auto stop = [&] {
    server.Close();
    QCoreApplication::quit();
  };
  QSocketNotifier signalled(signalSockets[1], QSocketNotifier::Read);
  QObject::connect(&signalled, &QSocketNotifier::activated, &server, stop);
  QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
  input.setEnabled(arguments.ParentExits);
  QObject::connect(&input, &QSocketNotifier::activated, &server, [&] {
    std::array<char, 4096> ignored{};
    if (read(STDIN_FILENO, ignored.data(), ignored.size()) > 0) return;
    input.setEnabled(false);
    stop();
  });
  std::printf("port %u\n", static_cast<unsigned>(server.Port()));
  std::fflush(stdout);
  return QCoreApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
  const corvid::practice::Arguments arguments =
      corvid::practice::ParseArguments(std::vector<std::string>(argv + std::min(argc, 1), argv + argc));
  if (!arguments.Error.empty()) {
    return Fail(arguments.Error + "\n" + corvid::practice::UsageText(), 2);
  }
  if (arguments.Help) {
    std::fputs(corvid::practice::UsageText().c_str(), stdout);
    return 0;
  }
  if (!arguments.Record.empty() && !CanWrite(arguments.Record)) {
    return Fail("cannot write the file " + arguments.Record + " for --record", 2);
  }
  if (!CatchSignals()) return Fail("cannot set up signals", 1);
  const QCoreApplication app(argc, argv);
  return Run(arguments);
}
