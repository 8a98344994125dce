// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/json_sounds.h"

#include <filesystem>
#include <fstream>
#include <system_error>

#include "platform/sound_length.h"

namespace corvid {

namespace {

std::optional<SoundLength> Read(const std::string& path, std::string& error) {
  constexpr std::size_t headSize = std::size_t{64} * 1024;
  std::error_code problem;
  const auto size = std::filesystem::file_size(path, problem);
  std::ifstream file(path, std::ios::binary);
  if (problem || !file) {
    error = path + " cannot be opened";
    return std::nullopt;
  }
  std::string head(headSize, '\0');
  file.read(head.data(), static_cast<std::streamsize>(head.size()));
  head.resize(static_cast<std::size_t>(file.gcount()));
  const std::optional<SoundLength> length = LengthOfSound(head, static_cast<int64>(size));
  if (!length) error = path + " is no sound file";
  return length;
}

}  // namespace

void JsonSounds::Print(const char* op, const TimedPlayer& player) {
  if (finished_ || !output_.Wants("sound")) return;
  output_.Print("sound", JsonObject()
                             .Text("op", op)
                             .Text("file", player.Label().file)
                             .Number("handle", player.Label().handle)
                             .Number("volume", player.Volume())
                             .Number("pan", player.Pan())
                             .Number("frequency", player.Frequency())
                             .Flag("loop", player.Loop()));
}

std::unique_ptr<SoundPlayer> JsonSounds::Create(const SoundLength& length, bool inBackground, const SoundLabel& label) {
  return std::make_unique<TimedPlayer>(clock_, length, inBackground, label,
                                       [this](const char* op, const TimedPlayer& player) { Print(op, player); });
}

std::shared_ptr<const SoundData> JsonSounds::Load(const std::string& path, std::string& error) {
  const std::optional<SoundLength> length = Read(path, error);
  if (!length) return nullptr;
  return std::make_shared<TimedData>(*length);
}

std::unique_ptr<SoundPlayer> JsonSounds::CreatePlayer(const std::shared_ptr<const SoundData>& data, bool inBackground,
                                                      const SoundLabel& label) {
  return Create({data->Bytes(), data->Channels(), data->Frequency()}, inBackground, label);
}

std::unique_ptr<SoundPlayer> JsonSounds::CreateStreamed(const std::string& path, bool inBackground,
                                                        const SoundLabel& label, std::string& error) {
  const std::optional<SoundLength> length = Read(path, error);
  if (!length) return nullptr;
  return Create(*length, inBackground, label);
}

}  // namespace corvid
