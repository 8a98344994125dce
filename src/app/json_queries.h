// SPDX-License-Identifier: GPL-3.0-or-later
// What the json face asks the program for.
#pragma once

#include "app/corvid.h"
#include "platform/qt/json_face.h"

namespace corvid {

class ProgramQueries : public JsonQueries {
 public:
  explicit ProgramQueries(Corvid& corvid) : corvid_(corvid) {}

  TextModel& OutputText() override { return corvid_.sessionState.OutputWindow(corvid_.scriptState.CurrentSocket); }
  std::vector<JsonSession> SessionList() const override;
  JsonMenu MenuShown() const override;
  bool BufferShown(int16 number, std::string& name, std::string& text) const override;

 private:
  Corvid& corvid_;
};

}  // namespace corvid
