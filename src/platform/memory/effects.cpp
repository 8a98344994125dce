// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/memory/effects.h"

#include <algorithm>

namespace corvid {

std::vector<std::string> EffectLog::Of(const std::string& kind) const {
  std::vector<std::string> texts;
  for (const Effect& effect : effects_)
    if (effect.Kind == kind) texts.push_back(effect.Text);
  return texts;
}

std::string EffectLog::Transcript(const std::vector<std::string>& leaveOut) const {
  std::string all;
  for (const Effect& effect : effects_) {
    if (std::find(leaveOut.begin(), leaveOut.end(), effect.Kind) != leaveOut.end()) continue;
    all += effect.Text.empty() ? effect.Kind + "\n" : effect.Kind + " " + effect.Text + "\n";
  }
  return all;
}

}  // namespace corvid
