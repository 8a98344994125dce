// SPDX-License-Identifier: GPL-3.0-or-later
// The screen reader's speech against the real service.
#include "speechd_rig.h"

namespace corvid {
namespace {

// The real service, in folders of its own, with a voice that writes what it is to say into a file.
class RealSpeechd : public PrivateFolders {
 protected:
  void SetUp() override {
    if (!fs::exists("/usr/bin/speech-dispatcher")) GTEST_SKIP() << "speech-dispatcher is not installed";
    const bool module = fs::exists("/usr/lib/speech-dispatcher-modules/sd_generic") ||
                        fs::exists("/usr/lib/x86_64-linux-gnu/speech-dispatcher-modules/sd_generic");
    if (!module) GTEST_SKIP() << "the generic module of speech-dispatcher is not installed";
    spoken = (folder / "spoken").string();
    std::ofstream(Config() / "speechd.conf")
        << "LogLevel 1\nCommunicationMethod \"unix_socket\"\nAudioOutputMethod \"alsa\"\n"
        << "AddModule \"log\" \"sd_generic\" \"log.conf\"\nDefaultModule log\nTimeout 20\n";
    std::ofstream(Config() / "modules" / "log.conf")
        << "GenericExecuteSynth \"printf '%s\\\\n' \\'$DATA\\' >> " << spoken << "\"\n"
        << "GenericCmdDependency \"printf\"\nAddVoice \"en\" \"male1\" \"any\"\n";
    std::ofstream(folder / "HOME" / ".asoundrc") << "pcm.!default { type null }\nctl.!default { type null }\n";
  }
  void TearDown() override { KillService(); }
  // The service that this test's reader has started, by the number it wrote down.
  int ServicePid() const {
    int pid = 0;
    std::ifstream(folder / "XDG_RUNTIME_DIR" / "speech-dispatcher" / "pid" / "speech-dispatcher.pid") >> pid;
    return pid;
  }
  void KillService() const {
    const int pid = ServicePid();
    if (pid <= 1) return;
    kill(pid, SIGTERM);
    EXPECT_TRUE(Until([pid] { return kill(pid, 0) != 0; }));
  }
  std::string Spoken() const {
    std::ostringstream text;
    text << std::ifstream(spoken).rdbuf();
    return text.str();
  }
  std::string spoken;
};

TEST_F(RealSpeechd, SpeaksEveryLineOfAFlood) {
  SpeechdReader reader(notices.Callback(), {.callLimit = 10s, .retryInterval = 1s});
  ASSERT_TRUE(reader.Start()) << reader.Problem();
  std::string expected;
  for (int i = 1; i <= 20; ++i) {
    reader.Say(static_cast<int16>(1 + i % 2), "line " + std::to_string(i), false);
    expected += "line " + std::to_string(i) + "\n";
  }
  EXPECT_TRUE(Until([&] { return Spoken().size() >= expected.size(); }, 30s));
  EXPECT_EQ(Spoken(), expected);
  EXPECT_EQ(notices.Count(), 0U) << notices.Last();
}

TEST_F(RealSpeechd, ADeadServiceIsStartedAgain) {
  SpeechdReader reader(notices.Callback(), {.callLimit = 10s, .retryInterval = 1s});
  ASSERT_TRUE(reader.Start()) << reader.Problem();
  reader.Say(1, "before", false);
  ASSERT_TRUE(Until([&] { return Spoken() == "before\n"; }, 30s));
  KillService();
  reader.Say(1, "after", false);
  EXPECT_TRUE(Until([&] { return Spoken() == "before\nafter\n"; }, 30s));
  EXPECT_EQ(notices.Count(), 0U) << notices.Last();
}

}  // namespace
}  // namespace corvid
