// SPDX-License-Identifier: GPL-3.0-or-later
// The controls of a dialog as widgets.
#pragma once

#include <QString>
#include <string>

#include "platform/dialog_view.h"

class QWidget;

namespace corvid {

// A new widget for the control, of the role that a screen reader expects, named by its caption and still without its
// value.
QWidget* MakeControl(const DialogControl& control, QWidget* parent);
// Brings the widget's value up to date; rows of a list only when they differ.
void ShowControl(const DialogControl& control, QWidget* widget);

QString Shown(const std::string& text);           // with LF for each line break
std::string WithLineBreaks(const QString& text);  // the other way: UTF-8 with CR LF

}  // namespace corvid
