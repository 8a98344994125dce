// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/files.h"

namespace corvid {

// Wire: construct it once the application object exists.
class QtPlaces : public Places {
 public:
  QtPlaces();
  // For tests: as if the program were the file program.
  explicit QtPlaces(const std::string& program);

  // "share/" of the source tree for a program that was just built, the installed share folder otherwise.
  std::string AppFolder() const override { return appFolder_; }
  std::string DocumentsFolder() const override;
  std::string HomeFolder() const override;
  std::string TempFolder() const override;

 private:
  std::string appFolder_;
};

// Where the settings store lies: $XDG_CONFIG_HOME/corvid/settings, or below ~/.config.
std::string SettingsFile(const Places& places);
// What is kept of runs that bring no data folder of their own: $XDG_STATE_HOME/corvid/, or below ~/.local/state.
std::string StateFolder(const Places& places);

}  // namespace corvid
