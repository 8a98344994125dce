// SPDX-License-Identifier: GPL-3.0-or-later
// WAIT and OK: how a script lets time pass while the rest of the program runs inside it.
#include <algorithm>
#include <cmath>

#include "commands/command_call.h"
#include "commands/control_state.h"
#include "commands/handlers.h"
#include "commands/walks.h"
#include "core/number.h"
#include "core/text.h"

namespace corvid {

namespace {

constexpr double LongestNap = 60000;  // milliseconds; the clock may be set while a script sleeps

class Waiting {
 public:
  Waiting(CommandHouse& house, int16 session, const std::string& keyword)
      : house_(house),
        session_(session),
        listensForOk_(keyword == "OK"),
        listensForText_(keyword == "TEXT"),
        frozen_(keyword == "NOEVENTS") {}

  void Forget() {
    if (listensForOk_) Ok() = false;
    if (listensForText_) house_.sessions.TextArrived[session_] = 0;
  }

  // Kept: the deadline does not wrap. A wait over midnight ends when the clock reads the same number again.
  void Until(float deadline) {
    do {
      if (!frozen_) house_.platform.events.DoEvents();  // PUMP
      if (Heard() || house_.platform.events.Ending()) return;
      const double left = (static_cast<double>(deadline) - static_cast<double>(Now())) * 1000;
      if (left <= 0) return;
      const int nap = static_cast<int>(std::ceil(std::min(left, LongestNap)));
      if (frozen_) {
        house_.platform.events.Freeze(nap);
      } else {
        house_.platform.events.WaitEvents(nap);  // PUMP
      }
      if (Heard()) return;
    } while (Now() < deadline);
  }

  float Now() const { return static_cast<float>(house_.platform.clock.SecondsSinceMidnight()); }

 private:
  bool& Ok() { return house_.control.OkFlag.at(static_cast<std::size_t>(session_)); }

  // Whether what the wait listens for has come; it is taken.
  bool Heard() {
    if (listensForOk_ && Ok()) {
      Ok() = false;
      return true;
    }
    if (listensForText_ && house_.sessions.TextArrived[session_] != 0) {
      house_.sessions.TextArrived[session_] = 0;
      return true;
    }
    return false;
  }

  CommandHouse& house_;
  int16 session_;
  bool listensForOk_;
  bool listensForText_;
  bool frozen_;
};

}  // namespace

void handler::Wait(CommandCall& call) {
  if (call.checkOnly() || !ExpandParameters(call)) return;
  if (!IsNumeric(call.P[2])) return call.fail("Bad wait timer value");
  const std::string keyword = Upper(call.P[3]);
  Waiting waiting(call.house, call.outchannel, keyword);
  waiting.Forget();
  // Kept: the word is searched as a piece of text, so a few odd ones pass and mean no keyword.
  if (std::string_view("--OK-NOEVENTS-TEXT-").find("-" + keyword + "-") == std::string_view::npos)
    return call.fail("If included, parameter 2 must be NoEVENTS, OK, or TEXT");
  waiting.Until(waiting.Now() + ToFloat(Val(call.P[2])));
  if (call.house.platform.events.Ending()) call.next = Flow::Leave;
}

void handler::Ok(CommandCall& call) {
  if (call.checkOnly()) return;
  call.house.control.OkFlag.at(static_cast<std::size_t>(call.outchannel)) = true;
  WalkOn(call);
}

}  // namespace corvid
