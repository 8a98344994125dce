// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/json_speech.h"

#include <algorithm>

namespace corvid {

namespace {

constexpr int ScreenReaderType = 1;
constexpr int EngineType = 3;

void PrintSpeech(JsonOutput& output, int16 channel, const std::string& text, int type) {
  if (text.empty() || !output.Wants("speech")) return;
  output.Print("speech", JsonObject().Number("channel", channel).Text("text", text).Number("type", type));
}

void PrintSilence(JsonOutput& output, int16 channel) {
  if (output.Wants("silence")) output.Print("silence", JsonObject().Number("channel", channel));
}

}  // namespace

std::vector<std::string> JsonEngine::Voices() {
  return {"Voice 1", "Voice 2", "Voice 3"};
}

void JsonEngine::Speak(int16 voice, const std::string& text) {
  PrintSpeech(output_, voice, text, EngineType);
}

void JsonEngine::Purge(int16 voice) {
  PrintSilence(output_, voice);
}

void JsonEngine::SetRate(int16 voice, int16 rate) {
  rates_.at(Place(voice)) = std::clamp<int16>(rate, -10, 21);
}

void JsonEngine::SetVolume(int16 voice, int16 volume) {
  volumes_.at(Place(voice)) = std::clamp<int16>(volume, 0, 100);
}

int16 JsonEngine::Rate(int16 voice) const {
  return rates_.at(Place(voice));
}

int16 JsonEngine::Volume(int16 voice) const {
  return volumes_.at(Place(voice));
}

void JsonReader::Say(int16 channel, const std::string& text, bool interrupt) {
  if (interrupt) PrintSilence(output_, channel);
  PrintSpeech(output_, channel, text, ScreenReaderType);
}

}  // namespace corvid
