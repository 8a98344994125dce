// SPDX-License-Identifier: GPL-3.0-or-later
#include "sessions/sound_lines.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/number.h"
#include "core/text.h"
#include "platform/platform.h"
#include "sound/sound.h"

namespace corvid {

namespace {

constexpr std::size_t HeadLength = 8;  // "!!SOUND("
constexpr std::string_view AnyEnding = ".*";

// The number at the start of a word, held in a range in which nothing overflows. A server may write anything.
double SmallNumber(std::string_view text) {
  constexpr double most = 1000000;
  constexpr std::size_t longest = 12;
  const std::size_t end = text.find_first_not_of("+-.0123456789");
  return std::clamp(Val(text.substr(0, std::min(end, longest))), -most, most);
}

bool HasWildcard(std::string_view name) {
  return name.find_first_of("*?") != std::string_view::npos;
}

// "*" for any run and "?" for one character, without regard to case, in time that grows with the product of the lengths
// at most.
bool Matches(std::string_view name, std::string_view pattern) {
  std::size_t n = 0;
  std::size_t p = 0;
  std::size_t star = std::string_view::npos;
  std::size_t resume = 0;
  while (n < name.size()) {
    if (p < pattern.size() && pattern[p] == '*') {
      star = p++;
      resume = n;
    } else if (p < pattern.size() && (pattern[p] == '?' || UpperChar(pattern[p]) == UpperChar(name[n]))) {
      ++p;
      ++n;
    } else if (star != std::string_view::npos) {
      p = star + 1;
      n = ++resume;
    } else {
      return false;
    }
  }
  while (p < pattern.size() && pattern[p] == '*') ++p;
  return p == pattern.size();
}

// A server must not be able to end the program, and a streamed OGG does. Any ".ogg" of the whole path makes it one,
// also that of a folder or of "x.ogg.wav".
bool EndsTheProgram(std::string_view path) {
  std::string upper = Upper(path);
  return KindOfSound(upper) == SoundKind::StreamedOgg;
}

// Parts that name no folder or file of their own could lead elsewhere.
bool IsPlainPart(std::string_view part) {
  return !part.empty() && part != "." && part != ".." && part.find_first_of(std::string_view("/:\0", 3)) == part.npos;
}

}  // namespace

SoundLines::SoundLines(OptionsState& options, Sound& sound, Platform& platform, RandomNumber random)
    : options_(options), sound_(sound), platform_(platform), random_(random ? std::move(random) : Chance()) {}

bool SoundLines::IsSoundLine(std::string_view line) {
  return SameText(line.substr(0, 7), "!!SOUND") || line.substr(0, 7) == "!!MUSIC";
}

void SoundLines::msp(std::string_view l) {
  l = TrimView(l);
  if (l.size() < HeadLength) return;
  const bool isSound = UpperChar(l[2]) == 'S';
  Request request = Read(l);
  if (SameText(request.Name, "OFF")) return StopAll();
  if (busy_) return;
  struct Busy {
    bool& flag;
    explicit Busy(bool& f) : flag(f) { flag = true; }
    ~Busy() { flag = false; }
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;
  } const busy(busy_);
  Play(isSound, std::move(request));  // PUMP
}

// Kept: the last character is taken for the bracket and goes, whatever it is; a blank in front leaves no name; unknown
// words are passed over.
SoundLines::Request SoundLines::Read(std::string_view l) {
  Request request;
  std::string text(l.substr(HeadLength));
  if (!text.empty()) text.pop_back();
  const std::vector<std::string> words = Split(Replace(text, "/", "\\"), " ");
  if (words.empty()) return request;
  request.Name = words.front();
  for (std::size_t i = 1; i < words.size(); ++i) {
    const std::string_view word = words[i];
    if (StartsWithText(word, "V=")) request.Volume = ToInt32(-(100 - SmallNumber(word.substr(2))) * 30);
    if (StartsWithText(word, "L=")) request.Flags = SmallNumber(word.substr(2)) < 0 ? playflag::Loop : int16{0};
  }
  return request;
}

void SoundLines::Play(bool isSound, Request request) {
  if (request.Name.empty()) return;
  const bool known =
      EndsWithText(request.Name, ".WAV") || EndsWithText(request.Name, ".MP3") || EndsWithText(request.Name, ".MID");
  if (!known) request.Name += AnyEnding;
  Place place;
  if (!Find(request.Name, place)) return;
  if (isSound) SettleEnding(place);
  const std::string path = Choose(place);
  if (path.empty() || EndsTheProgram(path) || !Inside(path)) return;
  if (options_.PlaySoundsOutsideCorvid) request.Flags |= playflag::InBackground;
  constexpr int32 ownFrequency = -1;
  const int16 handle = sound_.PlaySound(path, request.Volume, ownFrequency, 0, 0, request.Flags);  // PUMP
  if (handle != 0) Remember(handle);
}

// The name as it stands, else what follows its last separator. False when neither matches a file.
bool SoundLines::Find(const std::string& name, Place& place) const {
  if (FindIn(name, place)) return true;
  const std::size_t last = name.rfind('\\');
  return last != std::string::npos && FindIn(name.substr(last + 1), place);
}

bool SoundLines::FindIn(const std::string& name, Place& place) const {
  place.Folder = options_.SoundsFolder;
  std::vector<std::string> parts = Split(name, "\\");
  if (!std::all_of(parts.begin(), parts.end(), [](const std::string& part) { return IsPlainPart(part); })) return false;
  place.Name = parts.back();
  parts.pop_back();
  for (const std::string& part : parts) place.Folder += part + "/";
  return !Matches(place).empty();
}

// Which files of a place there are, as the disk spells them. Sorted.
std::vector<std::string> SoundLines::Matches(const Place& place) const {
  const Files& files = platform_.files;
  if (!HasWildcard(place.Name)) {
    if (!files.FileExists(place.Folder + place.Name)) return {};
    const std::string path = files.Absolute(place.Folder + place.Name);
    return {path.substr(path.rfind('/') + 1)};
  }
  if (!files.FolderExists(place.Folder)) return {};
  std::vector<std::string> names;
  for (std::string& name : platform_.files.FileNames(place.Folder)) {
    if (corvid::Matches(name, place.Name) && !EndsTheProgram(name)) names.push_back(std::move(name));
  }
  return names;
}

// Kept: a sound is ".wav", whatever else it is called: "X.MP3" is looked for as "X.MP3.WAV". Only a name without an
// ending may be an MP3.
void SoundLines::SettleEnding(Place& place) const {
  if (!place.Name.ends_with(AnyEnding)) {
    if (!EndsWithText(place.Name, ".WAV")) place.Name += ".WAV";
    return;
  }
  place.Name.pop_back();
  for (const char* ending : {"wav", "mp3"}) {
    if (Matches({place.Folder, place.Name + ending}).empty()) continue;
    place.Name += ending;
    return;
  }
}

// One of the files that match, each with equal chance; empty when there is none.
std::string SoundLines::Choose(const Place& place) const {
  const std::vector<std::string> names = Matches(place);
  if (names.empty()) return {};
  constexpr std::size_t most = 30000;  // that a random number reaches
  const auto count = static_cast<int16>(std::min(most, names.size()));
  const auto chosen = static_cast<std::size_t>(count > 1 ? random_(count) - 1 : 0);
  return platform_.files.Absolute(place.Folder + names[chosen]);
}

// Links do not lead out of the folder either. The folder itself may be one: that is the player's doing.
bool SoundLines::Inside(const std::string& path) const {
  const std::string real = platform_.files.RealPath(path);
  std::string folder = platform_.files.RealPath(options_.SoundsFolder);
  while (folder.ends_with('/')) folder.pop_back();
  return !folder.empty() && real.starts_with(folder + "/");
}

void SoundLines::Remember(int16 handle) {
  std::erase_if(started_, [&](const auto& sound) { return sound.first == handle; });
  started_.emplace_back(handle, sound_.StartOf(handle));
}

// What has since been started by somebody else under the same handle goes on.
void SoundLines::StopAll() {
  for (auto [handle, start] : started_)
    if (sound_.StartOf(handle) == start) sound_.DeleteSound(handle);
  started_.clear();
}

}  // namespace corvid
