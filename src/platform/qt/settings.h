// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/files.h"

namespace corvid {

// The settings store as a text file, one value a line: "application/section/key=value". In the names "%", "/" and "="
// are written as "%" and two hexadecimal digits, and so are line ends and "%" in the value. A line of another form is
// kept as it stands. The file is read at each call, so that two running programs see each other's values, and private.
// Wire: FileSettings settings(files, SettingsFile(places));
class FileSettings : public Settings {
 public:
  FileSettings(Files& files, std::string path);

  std::string Get(const std::string& application, const std::string& section, const std::string& key) const override;
  void Set(const std::string& application, const std::string& section, const std::string& key,
           const std::string& value) override;
  void Delete(const std::string& application, const std::string& section, const std::string& key) override;

 private:
  std::vector<std::string> Lines() const;
  void Change(const std::string& start, const std::string& line);

  Files& files_;
  std::string path_;
};

}  // namespace corvid
