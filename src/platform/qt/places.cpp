// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/places.h"

#include <pwd.h>
#include <unistd.h>

#include <QStandardPaths>
#include <QString>
#include <cstdlib>
#include <filesystem>

namespace corvid {

namespace fs = std::filesystem;

namespace {

std::string Environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? std::string() : value;
}

std::string AsFolder(std::string path) {
  if (!path.empty() && path.back() != '/') path += '/';
  return path;
}

// An XDG variable that is not absolute counts as missing.
std::string XdgFolder(const char* variable, const Places& places, const char* below) {
  const std::string value = Environment(variable);
  return !value.empty() && value.front() == '/' ? AsFolder(value) : places.HomeFolder() + below;
}

// What was installed with the program comes first, wherever that is: somebody may install into a build folder.
std::string FindAppFolder(const fs::path& program) {
  std::error_code ignored;
  const fs::path folder = program.parent_path();
  const fs::path installed = folder.parent_path() / "share" / "corvid";
  if (fs::is_directory(installed, ignored)) return AsFolder(installed.string());
  bool built = false;
  for (fs::path at = folder; at.has_relative_path(); at = at.parent_path()) {
    built = built || fs::exists(at / "CMakeCache.txt", ignored);
    if (built && fs::exists(at / "CMakePresets.json", ignored) && fs::is_directory(at / "share", ignored))
      return AsFolder((at / "share").string());
  }
  return AsFolder(installed.string());
}

}  // namespace

QtPlaces::QtPlaces() {
  std::error_code error;
  const fs::path program = fs::read_symlink("/proc/self/exe", error);
  appFolder_ = FindAppFolder(error ? fs::path("/usr/bin/corvid") : program);
}

QtPlaces::QtPlaces(const std::string& program) : appFolder_(FindAppFolder(program)) {}

std::string QtPlaces::DocumentsFolder() const {
  const QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  return folder.isEmpty() ? HomeFolder() + "Documents/" : AsFolder(folder.toStdString());
}

std::string QtPlaces::HomeFolder() const {
  const std::string home = Environment("HOME");
  if (!home.empty()) return AsFolder(home);
  const passwd* user = getpwuid(getuid());
  return user == nullptr ? "/" : AsFolder(user->pw_dir);
}

std::string QtPlaces::TempFolder() const {
  return AsFolder(Environment("TMPDIR"));
}

std::string SettingsFile(const Places& places) {
  return XdgFolder("XDG_CONFIG_HOME", places, ".config/") + "corvid/settings";
}

std::string StateFolder(const Places& places) {
  return XdgFolder("XDG_STATE_HOME", places, ".local/state/") + "corvid/";
}

}  // namespace corvid
