// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/desktop/start_program.h"

#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

#include "core/fault.h"
#include "core/text.h"

namespace corvid {

namespace {

constexpr const char* Terminal = "x-terminal-emulator";

bool NeedsTerminal(const QString& editor) {
  static const QStringList consoleEditors{"vi",   "vim",    "nvim", "nano", "pico",  "micro", "joe",
                                          "jove", "mcedit", "ne",   "ed",   "helix", "hx",    "kak"};
  return consoleEditors.contains(QFileInfo(editor).fileName());
}

QStringList SystemEditor() {
  for (const char* variable : {"VISUAL", "EDITOR"}) {
    QStringList words = QProcess::splitCommand(qEnvironmentVariable(variable));
    if (words.isEmpty()) continue;
    if (!NeedsTerminal(words.front())) return words;
    if (!QStandardPaths::findExecutable(Terminal).isEmpty()) return QStringList{Terminal, "-e"} + words;
  }
  return {"xdg-open"};
}

}  // namespace

std::vector<std::string> ProgramCommand(const std::string& program, const std::string& file) {
  const std::string named = Trim(program);
  QStringList words =
      SameText(named, "Notepad.exe") ? SystemEditor() : QProcess::splitCommand(QString::fromStdString(named));
  if (words.isEmpty()) return {};
  if (!file.empty()) words << QString::fromStdString(file);
  std::vector<std::string> command;
  for (const QString& word : words) command.push_back(word.toStdString());
  return command;
}

void StartDetached(const std::string& program, const std::string& file) {
  const std::vector<std::string> command = ProgramCommand(program, file);
  if (command.empty()) throw Fault(FaultKind::FileNotFound, "No program is named");
  const QString found = QStandardPaths::findExecutable(QString::fromStdString(command.front()));
  if (found.isEmpty()) throw Fault(FaultKind::FileNotFound, "Program not found: " + command.front());
  QStringList arguments;
  for (std::size_t i = 1; i < command.size(); ++i) arguments << QString::fromStdString(command[i]);
  if (!QProcess::startDetached(found, arguments))
    throw Fault(FaultKind::FileIo, "Program could not be started: " + command.front());
}

}  // namespace corvid
