// SPDX-License-Identifier: GPL-3.0-or-later
// How the player learns that something went wrong: a spoken "error" or a box, the error log window, and "error.log" for
// what nobody expected.
#pragma once

#include <string>
#include <vector>

#include "core/upcalls.h"
#include "files/buffer_state.h"
#include "platform/platform.h"
#include "script/options_state.h"
#include "script/script_state.h"

namespace corvid {

// None of these throws: telling an error must not end the run, so a part of the telling that fails (no voice, a full
// disk) leaves the rest of it standing.
class Errors : public ErrorSink {
 public:
  Errors(BufferState& buffers, const ScriptState& script, const OptionsState& options, Platform& platform,
         Upcalls& upcalls);

  // flags with option::Interactive: a box; without it the word "error" and a beep. Both reach the error log window.
  // errorCode is the number of a pending fault, 0 for none. May pump events.
  void ErrorReport(const std::string& ErrorDescription, const std::string& line, int errorCode, int16 flags) override;
  // Adds to the error log in which script file the command that failed was defined.
  void DisplayErrorFile(const std::string& ErrorDescription, int16 bufno) override;
  void ShowError(const std::string& strError) override;
  void writeError(const std::string& ErrMes) override;
  void ErrorDisplay(const std::string& mes) override;
  void UnknownError(const std::string& error, const std::string& procedure,
                    const std::vector<std::string>& parameters) override;

 private:
  void SayShort(const std::string& words);
  void Box(const std::string& text, int16 flags, const std::string& title);
  void WriteErrorFile(const std::string& error, const std::string& procedure,
                      const std::vector<std::string>& parameters);

  BufferState& buffers_;
  const ScriptState& script_;
  const OptionsState& options_;
  Platform& platform_;
  Upcalls& upcalls_;
};

}  // namespace corvid
