// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/settings.h"

#include <charconv>
#include <utility>

#include "core/text.h"

namespace corvid {

namespace {

std::string Escaped(std::string_view text, std::string_view special) {
  constexpr std::string_view Digits = "0123456789ABCDEF";
  std::string result;
  for (const char c : text) {
    const auto code = static_cast<unsigned char>(c);
    if (special.find(c) == std::string_view::npos) {
      result += c;
    } else {
      result += {'%', Digits[code / 16], Digits[code % 16]};
    }
  }
  return result;
}

std::string Unescaped(std::string_view text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    int code = 0;
    const char* digits = text.data() + i + 1;
    if (text[i] == '%' && i + 2 < text.size() && std::from_chars(digits, digits + 2, code, 16).ptr == digits + 2) {
      result += static_cast<char>(code);
      i += 2;
    } else {
      result += text[i];
    }
  }
  return result;
}

std::string StartOfLine(const std::string& application, const std::string& section, const std::string& key) {
  constexpr std::string_view Special = "%/=\r\n";
  return Escaped(application, Special) + "/" + Escaped(section, Special) + "/" + Escaped(key, Special) + "=";
}

}  // namespace

FileSettings::FileSettings(Files& files, std::string path) : files_(files), path_(std::move(path)) {}

std::vector<std::string> FileSettings::Lines() const {
  if (!files_.FileExists(path_)) return {};
  std::vector<std::string> lines = Split(files_.ReadWhole(path_), "\n");
  if (!lines.empty() && lines.back().empty()) lines.pop_back();
  return lines;
}

std::string FileSettings::Get(const std::string& application, const std::string& section,
                              const std::string& key) const {
  const std::string start = StartOfLine(application, section, key);
  for (const std::string& line : Lines())
    if (StartsWithText(line, start)) return Unescaped(std::string_view(line).substr(start.size()));
  return {};
}

void FileSettings::Change(const std::string& start, const std::string& line) {
  std::string text;
  bool changed = false;
  for (const std::string& old : Lines()) {
    if (!StartsWithText(old, start)) {
      text += old + "\n";
    } else if (!std::exchange(changed, true) && !line.empty()) {
      text += line + "\n";
    }
  }
  if (!changed && line.empty()) return;
  if (!changed) text += line + "\n";
  files_.CreateFolder(path_.substr(0, path_.rfind('/') + 1));
  files_.WriteWhole(path_, text, Privacy::Private);
}

void FileSettings::Set(const std::string& application, const std::string& section, const std::string& key,
                       const std::string& value) {
  const std::string start = StartOfLine(application, section, key);
  Change(start, start + Escaped(value, "%\r\n"));
}

void FileSettings::Delete(const std::string& application, const std::string& section, const std::string& key) {
  Change(StartOfLine(application, section, key), {});
}

}  // namespace corvid
