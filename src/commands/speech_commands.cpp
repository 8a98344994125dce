// SPDX-License-Identifier: GPL-3.0-or-later
// SAY and SETSPEECH: what a script tells the player, and how its channel sounds.
#include <algorithm>
#include <array>
#include <string_view>

#include "commands/command_call.h"
#include "commands/control_state.h"
#include "commands/handlers.h"
#include "core/number.h"
#include "core/text.h"
#include "script/values.h"
#include "sessions/output.h"
#include "speech/speech.h"
#include "speech/speech_state.h"

namespace corvid {

namespace {

struct NamedChannel {
  std::string_view Name;
  int16 Number;
};

constexpr std::array<NamedChannel, 6> NamedChannels{{{"INCOMING", Channel::Incoming},
                                                     {"OUTPUT", Channel::Output},
                                                     {"EDIT", Channel::Edit},
                                                     {"ENTRY", Channel::Entry},
                                                     {"SYSTEM", Channel::System},
                                                     {"VOICEONLY", Channel::User}}};

// 0 for a word that names none.
int16 ChannelNamed(std::string_view word) {
  for (const NamedChannel& channel : NamedChannels)
    if (SameText(channel.Name, word)) return channel.Number;
  return 0;
}

// ---- SAY ----

namespace sayflag {
constexpr int16 None = 0, NoVoice = 1, NoDisplay = 2, NoReturn = 4, Current = 8;
}

struct SayKeywords {
  int16 Channel = Channel::Incoming;
  int16 Flag = sayflag::None;
};

int16 FlagNamed(std::string_view word) {
  struct NamedFlag {
    std::string_view Name;
    int16 Flag;
  };
  static constexpr std::array<NamedFlag, 4> flags{{{"NOVOICE", sayflag::NoVoice},
                                                   {"NODISPLAY", sayflag::NoDisplay},
                                                   {"NORETURN", sayflag::NoReturn},
                                                   {"CURRENT", sayflag::Current}}};
  for (const NamedFlag& flag : flags)
    if (SameText(flag.Name, word)) return flag.Flag;
  return sayflag::None;
}

bool ReadSayKeywords(CommandCall& call, SayKeywords& keywords) {
  for (const std::string& word : Split(call.P[3], "|")) {
    if (word.empty()) continue;
    if (const int16 channel = ChannelNamed(word); channel != 0) {
      keywords.Channel = channel;
    } else if (const int16 flag = FlagNamed(word); flag != sayflag::None) {
      keywords.Flag = flag;  // Kept: the last flag stands alone.
    } else {
      call.fail(
          "Only the keywords Output, Entry, System, Edit, or Incoming and NoVoice or NoDisplay and NoReturn and "
          "CURRENT are allowed as the second parameter");
      return false;
    }
  }
  return true;
}

// Nothing of what the player has typed or selected is lost to it.
void InsertAtCaret(TextModel& box, const std::string& text) {
  if (box.Locked()) return;
  box.SetSelStart(box.Caret());
  box.SetSelText(text);
}

void Display(CommandHouse& house, const std::string& text, int16 channel, int16 session) {
  switch (channel) {
    case Channel::Incoming:
    case Channel::Output:
      house.windows.Queue(session, text);
      house.windows.DisplayOutputBuffer(session);
      break;
    case Channel::Entry:
    case Channel::Edit:  // one box shows both: what stands in it gets the text
      InsertAtCaret(house.buffers.EntryBox, text);
      break;
    case Channel::System:
      house.upcalls.prompter.MsgBox(text, box::OkOnly, "User Note");  // PUMP
      break;
    default:
      break;  // the player's own channel is for the ear alone
  }
}

}  // namespace

void handler::Say(CommandCall& call) {
  if (call.checkOnly() || !ExpandParameters(call)) return;
  SayKeywords keywords;
  if (!ReadSayKeywords(call, keywords)) return;
  const std::string text = keywords.Flag == sayflag::NoReturn ? call.P[2] : call.P[2] + "\r\n";
  CommandHouse& house = call.house;
  if (keywords.Flag != sayflag::NoDisplay) Display(house, text, keywords.Channel, call.outchannel);  // PUMP
  const bool heard = keywords.Flag != sayflag::NoVoice && call.outchannel == house.script.CurrentSocket;
  if (heard || keywords.Flag == sayflag::Current) house.upcalls.speaker.SpeakOut(text, keywords.Channel, 0);
}

// ---- SETSPEECH ----

namespace {

constexpr int16 SapiParameters = 5, OtherParameters = 2;

// A rate of 1 to 100 on the engine's scale, about -10 to 21.
int16 EngineRate(int32 rate) {
  constexpr double step = 3.2;
  constexpr int16 below = 11;
  return AddInt16(ToInt16(rate / step + 0.5), -below);
}

void SetVoice(CommandCall& call, int16 channel) {
  SpeechState& speech = call.house.speechSettings;
  speech.SpeechType[static_cast<std::size_t>(channel)] = speechtype::Engine;
  constexpr int32 most = 100;
  std::string& problem = call.ErrorDescription;
  const int32 voice = ValidValue(call.P[4], 4, 0, most, problem);
  const int32 volume = ValidValue(call.P[5], 5, 0, most, problem);
  const int32 rate = ValidValue(call.P[6], 6, 1, most, problem);
  if (!problem.empty()) {
    call.next = Flow::Report;
    return;
  }
  const auto slot = static_cast<std::size_t>(channel);
  speech.VoiceIndex[slot] = static_cast<int16>(voice);
  speech.VoiceVolume[slot] = static_cast<int16>(volume);
  speech.VoiceRate[slot] = EngineRate(rate);
  call.house.speech.SetSapiValues(speech.VoiceIndex[slot], speech.VoiceRate[slot], speech.VoiceVolume[slot],
                                  speech.VoicePriority[slot], channel);
}

bool IsScreenReader(std::string_view setting) {
  constexpr std::array<std::string_view, 4> names{"JAWS", "WINDOWEYES", "SYSTEMACCESS", "SCREENREADER"};
  return std::find(names.begin(), names.end(), setting) != names.end();
}

void Apply(CommandCall& call, const std::string& setting, int16 channel) {
  SpeechState& speech = call.house.speechSettings;
  Speaker& speaker = call.house.upcalls.speaker;
  const auto slot = static_cast<std::size_t>(channel);
  if (setting == "NONE") {
    speech.SpeechType[slot] = speechtype::None;
  } else if (setting == "STOP") {
    speaker.StopSpeaking(channel);
  } else if (setting == "ON") {
    speech.ChannelMuted[slot] = 0;
  } else if (setting == "OFF") {
    speech.ChannelMuted[slot] = 1;
    speaker.StopSpeaking(channel);
  } else if (IsScreenReader(setting)) {
    speech.SpeechType[slot] = speechtype::ScreenReader;
  } else if (setting == "SAPI") {
    SetVoice(call, channel);
  } else {
    call.fail("Parameter 2 must be either On, Off, Stop, None, Sapi, or ScreenReader ");
  }
}

}  // namespace

void handler::SetSpeech(CommandCall& call) {
  if (call.checkOnly() || !ExpandParameters(call)) return;
  const std::string setting = Upper(call.P[3]);
  if (call.count() != (setting == "SAPI" ? SapiParameters : OtherParameters))
    return call.fail("Wrong number of parameters");
  if (SameText(call.P[2], "ALL") && setting == "STOP") return call.house.upcalls.speaker.StopSpeech();
  int16& channel = call.house.control.SetSpeechChannel;
  if (const int16 named = ChannelNamed(call.P[2]); named != 0) {
    channel = named;
  } else {
    // Kept: after a wrong name the setting still goes to the channel that was named last.
    ReportAndGoOn(call, "First parameter must be either Incoming, Output, Edit, Entry, System, or VoiceOnly");
  }
  Apply(call, setting, channel);
}

}  // namespace corvid
