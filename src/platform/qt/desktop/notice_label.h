// SPDX-License-Identifier: GPL-3.0-or-later
// Rare words to a player whom speech cannot reach, as a line of the window that a screen reader reads out when it
// appears.
#pragma once

#include <QLabel>
#include <string>

namespace corvid {

class NoticeLabel : public QLabel {
 public:
  explicit NoticeLabel(QWidget* parent);
  // Adds a line below those that are shown already; the same line twice in a row is one.
  void Add(const std::string& text);
};

}  // namespace corvid
