// SPDX-License-Identifier: GPL-3.0-or-later
#include "commands/errors.h"

#include <exception>
#include <utility>

#include "core/fault.h"
#include "core/text.h"

namespace corvid {

namespace {

constexpr std::size_t KeptParameters = 5;

// An error told while another error is told would go round for ever: what fails here is dropped.
template <typename Work>
bool Quietly(Work&& work) {
  try {
    std::forward<Work>(work)();
    return true;
  } catch (const std::exception&) {
    return false;
  }
}

}  // namespace

Errors::Errors(BufferState& buffers, const ScriptState& script, const OptionsState& options, Platform& platform,
               Upcalls& upcalls)
    : buffers_(buffers), script_(script), options_(options), platform_(platform), upcalls_(upcalls) {}

void Errors::SayShort(const std::string& words) {
  Quietly([&] { upcalls_.speaker.Answer(words, Incoming); });
  Quietly([&] { platform_.face.Beep(); });
}

void Errors::Box(const std::string& text, int16 flags, const std::string& title) {
  Quietly([&] { upcalls_.prompter.MsgBox(text, flags, title); });
}

void Errors::ErrorReport(const std::string& ErrorDescription, const std::string& line, int errorCode, int16 flags) {
  std::string message = ErrorDescription + " in command: " + line;
  if (errorCode != 0) message += "- Error " + std::to_string(errorCode);
  if ((flags & option::Interactive) != 0) {
    Box(message, box::OkOnly, "Error! ");
  } else {
    SayShort("error");
  }
  Quietly([&] { AppendErrorLog(buffers_, "\r\n" + message); });
}

void Errors::DisplayErrorFile(const std::string& ErrorDescription, int16 bufno) {
  if (IsBlank(ErrorDescription)) return;
  try {
    const std::string file = buffers_.BufferFile[bufno];
    AppendErrorLog(buffers_, "-- Error found in file " + file + "\r\n===============");
  } catch (const std::exception& fault) {
    UnknownError(fault.what(), "displayErrorFile", {ErrorDescription, std::to_string(bufno)});
  }
}

void Errors::ShowError(const std::string& strError) {
  Box(strError, box::OkOnly, "Corvid");
}

void Errors::writeError(const std::string& ErrMes) {
  Box(ErrMes, box::OkOnly, "Error! ");
}

void Errors::ErrorDisplay(const std::string& mes) {
  Box(mes, box::Exclamation, "Error!");
}

void Errors::UnknownError(const std::string& error, const std::string& procedure,
                          const std::vector<std::string>& parameters) {
  SayShort("Error logged.");
  const bool written = Quietly([&] { WriteErrorFile(error, procedure, parameters); });
  // The window is the last place left: the text must not be lost with the disk.
  if (!written) {
    Quietly([&] {
      AppendErrorLog(buffers_, "\r\nThe file error.log could not be written. Error: " + error + " in " + procedure);
    });
  }
}

void Errors::WriteErrorFile(const std::string& error, const std::string& procedure,
                            const std::vector<std::string>& parameters) {
  // Before the start has settled the folder a file would lie wherever the program was called from.
  if (options_.UserDataFolder.empty()) throw Fault(FaultKind::PathNotFound, "There is no user data folder yet");
  std::string text = "==============\r\nG Error =" + std::to_string(script_.CurrentSocket) + "\r\nError: " + error +
                     "\r\nProcedure: " + procedure + "\r\n";
  for (std::size_t i = 0; i < KeptParameters; ++i)
    text += "Parameter " + std::to_string(i + 1) + ": " + (i < parameters.size() ? parameters[i] : "") + "\r\n";
  const auto file = platform_.files.OpenAppend(options_.UserDataFolder + "error.log", Privacy::Private);
  file->Write(text);
  file->Flush();
}

}  // namespace corvid
