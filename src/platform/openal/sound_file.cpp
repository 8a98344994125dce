// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/openal/sound_file.h"

#include <dlfcn.h>
#include <sndfile.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <fstream>

// The sound library decodes MP3 through another one, which writes whatever it notices about a file to the terminal; a
// player at a text console would have to listen to that. The library has no way to ask it for silence, so its door is
// answered here: the decoder is made as always, and told to be quiet.
extern "C" void* mpg123_new(const char* decoder, int* error) {
  using New = void* (*)(const char*, int*);
  using Param = int (*)(void*, int, long, double);
  const auto make = reinterpret_cast<New>(dlsym(RTLD_NEXT, "mpg123_new"));
  const auto set = reinterpret_cast<Param>(dlsym(RTLD_NEXT, "mpg123_param"));
  void* handle = make == nullptr ? nullptr : make(decoder, error);
  constexpr int AddFlags = 2;
  constexpr long Quiet = 0x20;
  if (handle != nullptr && set != nullptr) set(handle, AddFlags, Quiet, 0);
  return handle;
}

namespace corvid {

namespace {

constexpr std::size_t PieceFrames = 16384;
constexpr int LowestFrequency = 100;
constexpr int HighestFrequency = 384'000;

// A file that lies in memory, as the library reads it.
struct Bytes {
  std::string_view all;
  sf_count_t at = 0;
};

sf_count_t BytesLength(void* data) {
  return static_cast<sf_count_t>(static_cast<Bytes*>(data)->all.size());
}
sf_count_t BytesSeek(sf_count_t offset, int whence, void* data) {
  Bytes& bytes = *static_cast<Bytes*>(data);
  const sf_count_t length = BytesLength(data);
  const sf_count_t from = whence == SEEK_CUR ? bytes.at : whence == SEEK_END ? length : 0;
  if (offset < -from || offset > length - from) return -1;
  bytes.at = from + offset;
  return bytes.at;
}
sf_count_t BytesRead(void* target, sf_count_t count, void* data) {
  Bytes& bytes = *static_cast<Bytes*>(data);
  const sf_count_t taken = std::clamp<sf_count_t>(count, 0, BytesLength(data) - bytes.at);
  std::memcpy(target, bytes.all.data() + bytes.at, static_cast<std::size_t>(taken));
  bytes.at += taken;
  return taken;
}
sf_count_t BytesWrite(const void* /*source*/, sf_count_t /*count*/, void* /*data*/) {
  return 0;
}
sf_count_t BytesTell(void* data) {
  return static_cast<Bytes*>(data)->at;
}

// Whether the first bytes, after those that are zero, are those of a sound. What else the library knows is nothing
// that players have, and it looks for music in anything, noisily.
bool LooksLikeSound(std::string_view bytes) {
  constexpr std::array<std::string_view, 9> Starts{"RIFF", "RIFX", "RF64", "riff", "OggS",
                                                   "fLaC", "FORM", ".snd", "ID3"};
  const std::size_t first = std::min(bytes.find_first_not_of('\0'), bytes.size());
  bytes.remove_prefix(first);
  if (std::any_of(Starts.begin(), Starts.end(), [bytes](std::string_view start) { return bytes.starts_with(start); })) {
    return true;
  }
  return bytes.size() > 1 && bytes[0] == '\xFF' && (static_cast<unsigned char>(bytes[1]) & 0xE0) == 0xE0;
}

std::string FirstBytes(const std::string& path) {
  std::string bytes(4096, '\0');
  std::ifstream file(path, std::ios::binary);
  file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  bytes.resize(static_cast<std::size_t>(file.gcount()));
  return bytes;
}

constexpr const char* NoSound = "It is no WAV, OGG, FLAC or MP3 file.";

int16 Code(float sample) {
  if (!(sample > -1.0F)) return sample == sample ? -32768 : 0;  // what is no number is silent
  return static_cast<int16>(std::lround(std::min(sample * 32768.0F, 32767.0F)));
}

// Shares of left and right by the place of a channel: front left, front right, centre, low frequencies (with six and
// more), then the rear, left and right in turn.
std::array<float, 2> Shares(int channel, int channels) {
  constexpr float Half = 0.7071068F;
  if (channel < 2) return channel == 0 ? std::array{1.0F, 0.0F} : std::array{0.0F, 1.0F};
  const bool hasCentre = channels != 4;
  if (hasCentre && channel == 2) return {Half, Half};
  if (channels == 7 && channel == 4) return {Half, Half};  // behind, in the middle
  if (channels >= 6 && channel == 3) return {0.0F, 0.0F};
  const bool left = (channels - channel) % 2 == 0;
  return left ? std::array{Half, 0.0F} : std::array{0.0F, Half};
}

std::array<float, 2> MixDown(const float* frame, int channels) {
  std::array<float, 2> sum{};
  std::array<float, 2> whole{};
  for (int channel = 0; channel < channels; ++channel) {
    const std::array<float, 2> shares = Shares(channel, channels);
    for (std::size_t side = 0; side < 2; ++side) {
      sum[side] += shares[side] * frame[channel];
      whole[side] += shares[side];
    }
  }
  return {sum[0] / whole[0], sum[1] / whole[1]};
}

}  // namespace

struct SoundFile::Library {
  SNDFILE* file = nullptr;
  SF_INFO info{};
  Bytes bytes{};

  Library() = default;
  ~Library() {
    if (file != nullptr) sf_close(file);
  }
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;
};

SoundFile::SoundFile(std::unique_ptr<Library> library) : library_(std::move(library)) {}

SoundFile::~SoundFile() = default;

std::unique_ptr<SoundFile> SoundFile::Open(const std::string& path, std::string& error) {
  // A pipe or a terminal would never come to an end, and its opening might wait for somebody.
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) {
    error = "The file does not exist or cannot be read.";
    return nullptr;
  }
  if (!S_ISREG(status.st_mode)) {
    error = "This is not a file.";
    return nullptr;
  }
  if (status.st_size == 0) {
    error = "The file is empty.";
    return nullptr;
  }
  if (!LooksLikeSound(FirstBytes(path))) {
    error = NoSound;
    return nullptr;
  }
  auto library = std::make_unique<Library>();
  library->file = sf_open(path.c_str(), SFM_READ, &library->info);
  return Check(std::move(library), error);
}

std::unique_ptr<SoundFile> SoundFile::OpenBytes(std::string_view bytes, std::string& error) {
  if (!LooksLikeSound(bytes.substr(0, 4096))) {
    error = NoSound;
    return nullptr;
  }
  auto library = std::make_unique<Library>();
  library->bytes.all = bytes;
  SF_VIRTUAL_IO calls{BytesLength, BytesSeek, BytesRead, BytesWrite, BytesTell};
  library->file = sf_open_virtual(&calls, SFM_READ, &library->info, &library->bytes);
  return Check(std::move(library), error);
}

std::unique_ptr<SoundFile> SoundFile::Check(std::unique_ptr<Library> library, std::string& error) {
  if (library->file == nullptr) {
    error = "It cannot be read: " + std::string(sf_strerror(nullptr));
    return nullptr;
  }
  if (library->info.channels < 1 || library->info.channels > MostFileChannels) {
    error = "It has " + std::to_string(library->info.channels) + " channels; up to " +
            std::to_string(MostFileChannels) + " can be played.";
    return nullptr;
  }
  if (library->info.samplerate < LowestFrequency || library->info.samplerate > HighestFrequency) {
    error = "Its sampling rate of " + std::to_string(library->info.samplerate) + " hertz cannot be played.";
    return nullptr;
  }
  error.clear();
  return std::unique_ptr<SoundFile>(new SoundFile(std::move(library)));
}

int16 SoundFile::Channels() const {
  return library_->info.channels == 1 ? 1 : 2;
}

int32 SoundFile::Frequency() const {
  return library_->info.samplerate;
}

std::size_t SoundFile::Read(std::size_t frames, std::vector<int16>& samples) {
  const auto channels = static_cast<std::size_t>(library_->info.channels);
  std::size_t done = 0;
  while (done < frames) {
    const std::size_t piece = std::min(frames - done, PieceFrames);
    read_.resize(PieceFrames * channels);
    const sf_count_t count = sf_readf_float(library_->file, read_.data(), static_cast<sf_count_t>(piece));
    if (count <= 0) break;
    const std::size_t got = std::min(static_cast<std::size_t>(count), piece);
    std::size_t at = samples.size();
    samples.resize(at + got * static_cast<std::size_t>(Channels()));
    if (channels <= 2) {
      for (std::size_t i = 0; i < got * channels; ++i) samples[at++] = Code(read_[i]);
    } else {
      for (std::size_t i = 0; i < got; ++i) {
        for (const float side : MixDown(&read_[i * channels], library_->info.channels)) samples[at++] = Code(side);
      }
    }
    done += got;
  }
  return done;
}

bool SoundFile::Seek(int64 frame) {
  return frame >= 0 && frame <= library_->info.frames && sf_seek(library_->file, frame, SEEK_SET) == frame;
}

bool ReadAll(SoundFile& file, SoundSamples& sound, std::string& error, std::size_t most) {
  sound.channels = file.Channels();
  sound.frequency = file.Frequency();
  while (file.Read(PieceFrames, sound.samples) > 0) {
    if (sound.samples.size() * sizeof(int16) <= most) continue;
    error = "It is too long to be loaded: " + std::to_string(most >> 20U) +
            " megabytes of samples at most, six minutes of stereo.";
    return false;
  }
  if (!sound.samples.empty()) return true;
  error = "It holds no sound that can be read.";
  return false;
}

}  // namespace corvid
