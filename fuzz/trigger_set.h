// SPDX-License-Identifier: GPL-3.0-or-later
// A player's triggers, one of each kind: those that only note, that gag, replace the line, look at colours, work once,
// belong to classes and switch them, follow a variable, wait while the game goes on, and remove others.
#pragma once

#include "house.h"

namespace corvid::fuzz {

inline constexpr const char* TriggerSet =
    "#VARIABLE friend {Bob}\r\n"
    "#TRIGGER {*shouts*} {#VARIABLE heard {%0};look}\r\n"
    "#TRIGGER {&who tells you '&what'} {#VARIABLE teller {@who};reply @what}\r\n"
    "#TRIGGER {&{first}, &{second}: *} {#VARIABLE last {@first;@second %3}}\r\n"
    "#GTRIGGER {<named>~[*~]*} {#VARIABLE named {%1}}\r\n"
    "#GTRIGGER {HP:*} {#GVARIABLE points {%1};#IF (@points < 10) {flee} {#MATH points @points-1}} {} AnyCase\r\n"
    "#TRIGGER {*@friend*} {#VARIABLE met {%1|%2}}\r\n"
    "#TRIGGER {*%len(@heard)*} {#VARIABLE long yes}\r\n"
    "#TRIGGER {number ##[0-9a-f]?*} {#VARIABLE number {%1}}\r\n"
    "#TRIGGER {*[z-a]*} {look}\r\n"
    "#TRIGGER {open [*} {look}\r\n"
    "#TRIGGER {} {look}\r\n"
    "#TRIGGER {*} {#VARIABLE lines {%1}} counting\r\n"
    "#TRIGGER {count on*} {#CLASS counting enable;#CLASS {fight} disable}\r\n"
    "#TRIGGER {count off*} {#CLASS counting disable;#CLASS fight enable}\r\n"
    "#TRIGGER {*hits*} {#VARIABLE blows {@blows+1};kick} {fight|counting} AnyCase\r\n"
    "#TRIGGER {end of class*} {#DELCLASS counting}\r\n"
    "#TRIGGER {a?c*} {#SUBSTITUTE {replaced %1}}\r\n"
    "#TRIGGER {long line*} {#SUBSTITUTE {%0 %0 %0 %0}}\r\n"
    "#TRIGGER {empty line*} {#SUBSTITUTE {%9}}\r\n"
    "#TRIGGER {dyed*} {#SUBSTITUTE {<RED>%1<NORMAL>}}\r\n"
    "#TRIGGER {two lines*} {#SUBSTITUTE {%1%char(13)%char(10)and %1}}\r\n"
    "#TRIGGER {gag one*} {#GAGLINE}\r\n"
    "#TRIGGER {gag voice*} {#GAGLINE 2 Voice}\r\n"
    "#TRIGGER {gag window*} {#GAGLINE 3 Display}\r\n"
    "#TRIGGER {gag many*} {#GAGLINE %1} {} AnyCase\r\n"
    "#TRIGGER {gag on*} {#GAGON}\r\n"
    "#TRIGGER {gag off*} {#UNGAGON;#UNGAGLINE}\r\n"
    "#TRIGGER {Red} {#VARIABLE colour red} {} Color\r\n"
    "#TRIGGER {Bright Green} {#GAGLINE} {} Colour\r\n"
    "#TRIGGER {Yellow On Blue} {#SUBSTITUTE {plain %1}} {counting} Color\r\n"
    "#TRIGGER {once*} {#UNTRIGGER {once*};#TRIGGER {again*} {#UNTRIGGER {again*};look}}\r\n"
    "#TRIGGER {fewer*} {#UNTRIGGER {*shouts*};#UNTRIGGER {a?c*} ;#GUNTRIGGER {<named>}}\r\n"
    "#TRIGGER {learn *} {#TRIGGER {*%1*} {#VARIABLE learned {%1}}}\r\n"
    "#TRIGGER {wait*} {#WAIT 0.12;#GAGLINE;look}\r\n"
    "#TRIGGER {pause*} {#WAIT 1 Text;#SUBSTITUTE {after the pause}}\r\n"
    "#TRIGGER {say *} {#SAY {%1} VoiceOnly;#QUIET {%1}}\r\n"
    "#TRIGGER {play *} {#PLAY {%1}}\r\n"
    "#TRIGGER {close*} {#IGNORE Trigger On;#ALARM 1 {#IGNORE Trigger Off}}\r\n"
    "#TRIGGER {other*} {#CHARACTER amy}\r\n"
    "#TRIGGER {colours *} {#CONFIGURE ColourDisplay %1}\r\n"
    "#CLASS fight enable\r\n";
inline constexpr int16 TriggersInSet = 40;

// Loads the set as the script of the session's character, which is "bob".
inline void LoadTriggers(House& house) {
  house.memory.files.Put("/data/Aard/triggers.set", TriggerSet);
  house.Do("#LOAD {Aard/triggers.set}");
  const corvid::BufferState& buffers = house.corvid.bufferState;
  if (house.corvid.scriptState.TriggerCount != TriggersInSet)
    std::cerr << house.corvid.scriptState.TriggerCount << '\n' << buffers.BufferText[buffer::ErrorLog] << '\n';
  Require(house.corvid.scriptState.TriggerCount == TriggersInSet, "the triggers are loaded");
}

}  // namespace corvid::fuzz
