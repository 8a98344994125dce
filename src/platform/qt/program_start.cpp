// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/program_start.h"

#include <QProcess>
#include <QStandardPaths>
#include <algorithm>
#include <array>
#include <string_view>

#include "core/fault.h"
#include "core/text.h"

namespace corvid {

namespace {

using Words = std::vector<std::string>;

constexpr std::array<std::string_view, 16> TerminalEditors{"vi",  "vim",   "nvim",     "nano", "pico",  "joe",
                                                           "jed", "jmacs", "jpico",    "ne",   "micro", "mcedit",
                                                           "ed",  "ex",    "edbrowse", "tilde"};

Words SplitWords(const std::string& command) {
  Words words;
  for (const QString& word : QProcess::splitCommand(QString::fromStdString(command)))
    words.push_back(word.toStdString());
  return words;
}

bool NeedsTerminal(const Words& command) {
  const std::string name = command.front().substr(command.front().rfind('/') + 1);
  return std::find(TerminalEditors.begin(), TerminalEditors.end(), name) != TerminalEditors.end();
}

}  // namespace

Words ProgramCommand(const std::string& program, const std::string& file, Terminal terminal,
                     const std::function<std::string(const std::string&)>& environment,
                     const std::function<bool(const std::string&)>& exists) {
  const bool byDefault = IsBlank(program) || SameText(Trim(program), "Notepad.exe");
  const Words choices = byDefault ? Words{environment("VISUAL"), environment("EDITOR"), "xdg-open"} : Words{program};
  const std::string window = "x-terminal-emulator";
  for (const std::string& choice : choices) {
    Words command = SplitWords(choice);
    if (command.empty() || !exists(command.front())) continue;
    if (command.front() == "xdg-open" && terminal == Terminal::None) continue;
    if (NeedsTerminal(command)) {
      if (terminal == Terminal::None || !exists(window)) continue;
      command.insert(command.begin(), {window, "-e"});
    }
    if (!file.empty()) command.push_back(file);
    return command;
  }
  return {};
}

void StartDetachedProgram(const std::string& program, const std::string& file, Terminal terminal) {
  const auto environment = [](const std::string& name) { return qEnvironmentVariable(name.c_str()).toStdString(); };
  const auto exists = [](const std::string& name) {
    return !QStandardPaths::findExecutable(QString::fromStdString(name)).isEmpty();
  };
  const Words command = ProgramCommand(program, file, terminal, environment, exists);
  if (command.empty())
    throw Fault(FaultKind::FileNotFound,
                "No program was found that can open " + file +
                    " in a window of its own; #CONFIGURE Editor names one, and the file may be edited from outside");
  QStringList arguments;
  for (std::size_t i = 1; i < command.size(); ++i) arguments << QString::fromStdString(command[i]);
  if (!QProcess::startDetached(QString::fromStdString(command.front()), arguments))
    throw Fault(FaultKind::FileIo, command.front() + " could not be started");
}

}  // namespace corvid
