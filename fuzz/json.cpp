// SPDX-License-Identifier: GPL-3.0-or-later
// Any line as a request of the json face: one of the kinds that there are, with values in their ranges.
#include "fuzz.h"
#include "platform/qt/json_request.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using corvid::fuzz::Require;
  using Kind = corvid::JsonRequest::Kind;
  const corvid::JsonRequest request = corvid::ParseJsonRequest(corvid::fuzz::Text(data, size));
  Require(request.What >= Kind::Error && request.What <= Kind::Close, "the kind is known");
  if (request.What == Kind::Error) Require(!request.Text.empty(), "an error says what is wrong");
  Require(request.Seconds >= 0 && request.Seconds <= 3600, "a wait is bounded");
  Require(request.Number >= 0 && request.Start >= 0 && request.Length >= 0, "numbers are not negative");
  const bool key = request.What == Kind::Key || request.What == Kind::Down || request.What == Kind::Up;
  if (key) Require(request.KeyCode > 0 && request.Shift >= 0 && request.Shift <= 7, "a key is a key");
  return 0;
}
