// SPDX-License-Identifier: GPL-3.0-or-later
// A program that runs as long as this object lives: its standard input is ours, and closing that tells it to end.
#pragma once

#include <memory>
#include <string>
#include <vector>

class QProcess;

namespace corvid {

class ChildProgram {
 public:
  ChildProgram();
  ~ChildProgram();  // closes the child's input, waits at most a second, then ends it
  ChildProgram(const ChildProgram&) = delete;
  ChildProgram& operator=(const ChildProgram&) = delete;

  // Starts the program and waits for its first line of output, at most milliseconds. Empty when the line came, else
  // what went wrong, for the player.
  std::string Start(const std::string& program, const std::vector<std::string>& arguments, int milliseconds);
  const std::string& FirstLine() const { return firstLine_; }

 private:
  std::unique_ptr<QProcess> process_;
  std::string firstLine_;
};

}  // namespace corvid
