// SPDX-License-Identifier: GPL-3.0-or-later
// Orca's own service, played by a small program on a session bus of the test's own.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "platform/speechd/orca_service.h"
#include "platform/speechd/speechd_reader.h"

namespace corvid {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

bool Until(const std::function<bool()>& condition) {
  const auto end = std::chrono::steady_clock::now() + 10s;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(5ms);
  }
  return true;
}

// Runs a check on a thread of its own, as the reader does. The bus library keeps some memory for each thread that it
// meets until that thread ends.
void OnThread(const std::function<void()>& check) {
  std::thread(check).join();
}

// Arguments: prefix ("Orca" or "Orca1"), file to write to. Both generations' ways to say and to stop.
constexpr const char* FakeOrca = R"(
import sys
from gi.repository import Gio, GLib
prefix, path = sys.argv[1], sys.argv[2]
name = 'org.gnome.' + prefix
root = '/org/gnome/' + prefix + '/Service'
legacy = prefix == 'Orca'
module = name + ('.Module' if legacy else '.SpeechManager')
stop = ('<method name="ExecuteCommand"><arg type="s" direction="in"/><arg type="b" direction="in"/>' if legacy else
        '<method name="InterruptSpeech"><arg type="b" direction="in"/>') + '<arg type="b" direction="out"/></method>'
xml = ('<node><interface name="' + name + '.Service"><method name="PresentMessage"><arg type="s" direction="in"/>'
       '<arg type="b" direction="out"/></method></interface><interface name="' + module + '">' + stop +
       '</interface></node>')
def write(line):
    with open(path, 'a') as file:
        file.write(line + '\n')
def called(connection, sender, where, interface, method, arguments, invocation):
    if method == 'PresentMessage':
        write('say ' + arguments.unpack()[0])
    elif method == 'ExecuteCommand':
        write('stop ' + arguments.unpack()[0])
    else:
        write('stop ' + method)
    invocation.return_value(GLib.Variant('(b)', (True,)))
info = Gio.DBusNodeInfo.new_for_xml(xml)
bus = Gio.bus_get_sync(Gio.BusType.SESSION)
bus.register_object(root, info.lookup_interface(name + '.Service'), called)
bus.register_object(root + '/SpeechManager', info.lookup_interface(module), called)
Gio.bus_own_name_on_connection(bus, name + '.Service', 0, lambda *a: write('ready'), None)
GLib.MainLoop().run()
)";

class Orca : public ::testing::TestWithParam<const char*> {
 protected:
  void SetUp() override {
    if (!fs::exists("/usr/bin/dbus-daemon")) GTEST_SKIP() << "dbus-daemon is not installed";
    if (std::system("/usr/bin/python3 -c 'from gi.repository import Gio' 2>/dev/null") != 0) {
      GTEST_SKIP() << "python3-gi is not installed";
    }
    folder = fs::temp_directory_path() / ("corvid-orca-" + std::to_string(getpid()));
    fs::create_directories(folder / "speech-dispatcher");
    std::ofstream(folder / "speech-dispatcher" / "speechd.conf") << "DisableAutoSpawn\n";
    for (const char* name : {"DBUS_SESSION_BUS_ADDRESS", "SPEECHD_ADDRESS", "XDG_CONFIG_HOME"}) {
      if (const char* value = getenv(name)) before[name] = value;
    }
    const std::string address = "unix:path=" + (folder / "bus").string();
    setenv("DBUS_SESSION_BUS_ADDRESS", address.c_str(), 1);
    // No way back to the speech service: what arrives has gone through Orca.
    setenv("SPEECHD_ADDRESS", ("unix_socket:" + (folder / "nothing").string()).c_str(), 1);
    setenv("XDG_CONFIG_HOME", folder.c_str(), 1);
    Start({"/usr/bin/dbus-daemon", "--session", "--nofork", "--nopidfile", "--address=" + address});
    ASSERT_TRUE(Until([&] { return fs::exists(folder / "bus"); }));
  }
  void TearDown() override {
    for (const pid_t pid : children) {
      if (pid != stopped) Stop(pid);
    }
    for (const char* name : {"DBUS_SESSION_BUS_ADDRESS", "SPEECHD_ADDRESS", "XDG_CONFIG_HOME"}) {
      if (before.contains(name)) {
        setenv(name, before[name].c_str(), 1);
      } else {
        unsetenv(name);
      }
    }
    if (!folder.empty()) fs::remove_all(folder);
  }
  pid_t Start(const std::vector<std::string>& command) {
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (const std::string& part : command) arguments.push_back(const_cast<char*>(part.c_str()));
    arguments.push_back(nullptr);
    const pid_t pid = fork();
    if (pid == 0) {
      execv(arguments[0], arguments.data());
      _exit(127);
    }
    children.push_back(pid);
    return pid;
  }
  void Stop(pid_t pid) {
    kill(pid, SIGKILL);
    waitpid(pid, nullptr, 0);
    stopped = pid;
  }
  void StartOrca() {
    orca = Start({"/usr/bin/python3", "-c", FakeOrca, GetParam(), (folder / "log").string()});
    ASSERT_TRUE(Until([&] { return Log() == "ready\n"; }));
  }
  std::string Log() const {
    std::ostringstream text;
    text << std::ifstream(folder / "log").rdbuf();
    return text.str();
  }
  fs::path folder;
  std::map<std::string, std::string> before;
  std::vector<pid_t> children;
  pid_t orca = 0;
  pid_t stopped = 0;  // never ended twice: its number may be a stranger's by then
};

TEST_P(Orca, IsToldWhatToSay) {
  StartOrca();
  std::string notice;
  SpeechdReader reader([&](std::string text) { notice = std::move(text); });
  ASSERT_TRUE(reader.Start()) << reader.Problem();
  reader.Say(1, "first caf\xE9", false);
  reader.Say(5, "second", false);
  EXPECT_TRUE(Until([&] { return Log() == "ready\nsay first caf\xC3\xA9\nsay second\n"; })) << Log();
  EXPECT_EQ(notice, "");
}

TEST_P(Orca, AStopNeverDropsTheWordsOfAnotherChannel) {
  StartOrca();
  OnThread([&] {
    OrcaService service;
    EXPECT_TRUE(service.Say(1, "a long line of the game"));
    EXPECT_TRUE(service.Say(2, "x"));
    service.Stop(2);
    service.Stop(3);
    EXPECT_EQ(Log(), "ready\nsay a long line of the game\nsay x\n");
    service.Stop(1);  // now everybody has stopped
    service.Stop(1);
    EXPECT_EQ(Log(), "ready\nsay a long line of the game\nsay x\nstop InterruptSpeech\n");
  });
}

TEST_P(Orca, ThatEndsIsNoticed) {
  StartOrca();
  OnThread([&] {
    OrcaService service;
    EXPECT_TRUE(service.Say(1, "said"));
    Stop(orca);
    EXPECT_FALSE(service.Say(1, "not said"));
    EXPECT_FALSE(service.Present());
    service.Stop(1);
  });
}

INSTANTIATE_TEST_SUITE_P(Generations, Orca, ::testing::Values("Orca1", "Orca"));

TEST(OrcaWithoutBus, IsAbsentAtNoCost) {
  std::map<std::string, std::string> before;
  for (const char* name : {"DBUS_SESSION_BUS_ADDRESS", "XDG_RUNTIME_DIR"}) {
    if (const char* value = getenv(name)) before[name] = value;
    unsetenv(name);
  }
  OrcaService service;
  EXPECT_FALSE(service.Present());
  EXPECT_FALSE(service.Say(1, "nobody"));
  service.Stop(1);
  for (const auto& [name, value] : before) setenv(name.c_str(), value.c_str(), 1);
}

}  // namespace
}  // namespace corvid
