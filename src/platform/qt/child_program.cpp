// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/child_program.h"

#include <QDeadlineTimer>
#include <QProcess>

namespace corvid {

ChildProgram::ChildProgram() : process_(std::make_unique<QProcess>()) {}

ChildProgram::~ChildProgram() {
  if (process_->state() == QProcess::NotRunning) return;
  process_->closeWriteChannel();
  constexpr int Patience = 1000;  // milliseconds
  if (!process_->waitForFinished(Patience)) process_->kill();
  process_->waitForFinished(Patience);
}

std::string ChildProgram::Start(const std::string& program, const std::vector<std::string>& arguments,
                                int milliseconds) {
  QStringList list;
  for (const std::string& argument : arguments) list << QString::fromStdString(argument);
  process_->setProcessChannelMode(QProcess::SeparateChannels);
  process_->start(QString::fromStdString(program), list);
  QDeadlineTimer deadline(milliseconds);
  if (!process_->waitForStarted(static_cast<int>(deadline.remainingTime())))
    return program + " could not be started: " + process_->errorString().toStdString();
  while (!process_->canReadLine()) {
    if (deadline.hasExpired()) return program + " did not answer in time";
    if (!process_->waitForReadyRead(static_cast<int>(deadline.remainingTime())) &&
        process_->state() == QProcess::NotRunning)
      return program + " ended at once: " + process_->readAllStandardError().trimmed().toStdString();
  }
  firstLine_ = process_->readLine().trimmed().toStdString();
  return {};
}

}  // namespace corvid
