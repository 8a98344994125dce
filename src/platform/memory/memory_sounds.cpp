// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/memory/memory_sounds.h"

namespace corvid {

namespace {

std::string Line(const std::string& op, const TimedPlayer& player) {
  std::string line = op + " " + std::to_string(player.Label().handle) + " " + player.Label().file;
  const std::string volume = " " + std::to_string(player.Volume());
  const std::string pan = " " + std::to_string(player.Pan());
  const std::string frequency = " " + std::to_string(player.Frequency());
  if (op == "volume") return line + volume;
  if (op == "pan") return line + pan;
  if (op == "frequency") return line + frequency;
  if (op == "stop") return line;
  line += volume + pan + frequency;
  return line + (player.Loop() ? " loop" : " once") + (player.InBackground() ? " background" : "");
}

}  // namespace

void MemorySounds::SetPlugged(bool plugged) {
  if (plugged_ && !plugged && Lost)
    Lost("The sound device is gone. Voices and sounds are heard again as soon as there is one.");
  plugged_ = plugged;
}

std::shared_ptr<const SoundData> MemorySounds::Load(const std::string& path, std::string& error) {
  ++Loads;
  const auto found = lengths_.find(path);
  if (found != lengths_.end()) return std::make_shared<TimedData>(found->second);
  error = path + " is no sound";
  return nullptr;
}

std::unique_ptr<SoundPlayer> MemorySounds::Create(const SoundLength& length, bool inBackground,
                                                  const SoundLabel& label) {
  if (PlayersLeft <= 0 || (PlayersToFail > 0 && PlayersToFail-- > 0)) return nullptr;
  --PlayersLeft;
  return std::make_unique<TimedPlayer>(clock_, length, inBackground, label,
                                       [this](const char* op, const TimedPlayer& player) {
                                         if (plugged_ && Works) effects_.Add("sound", Line(op, player));
                                       });
}

std::unique_ptr<SoundPlayer> MemorySounds::CreatePlayer(const std::shared_ptr<const SoundData>& data, bool inBackground,
                                                        const SoundLabel& label) {
  return Create({data->Bytes(), data->Channels(), data->Frequency()}, inBackground, label);
}

std::unique_ptr<SoundPlayer> MemorySounds::CreateStreamed(const std::string& path, bool inBackground,
                                                          const SoundLabel& label, std::string& error) {
  const auto found = lengths_.find(path);
  if (found != lengths_.end()) return Create(found->second, inBackground, label);
  error = path + " is no sound";
  return nullptr;
}

}  // namespace corvid
