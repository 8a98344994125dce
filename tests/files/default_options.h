// SPDX-License-Identifier: GPL-3.0-or-later
// The file of the options of a player who has changed none.
#pragma once

namespace corvid::testing_files {

inline constexpr const char* DefaultOptions =
    "#Configure CommandChar {~#}\r\n"
    "#Configure EscapeChar {~~}\r\n"
    "#Configure CommandSeparator {~;}\r\n"
    "#Configure SwitchSession {~:}\r\n"
    "#Configure PassThruChar {~>}\r\n"
    "#Configure CommentChar {~;}\r\n"
    "#Configure VariableChar {~@}\r\n"
    "#Configure EndOfLineCommentChar {~//}\r\n"
    "#Configure LineTerminator   %crlf\r\n"
    "#Configure OutputWindowPercent 90\r\n"
    "#Configure SlowWalk False\r\n"
    "#Configure PlaySoundsOutsideCorvid True\r\n"
    "#Configure SpeakIndent True\r\n"
    "#Configure ExpandCommandLineVars False\r\n"
    "#Configure Explicit False\r\n"
    "#Configure ScriptReadOnly  0 \r\n"
    "#Configure AutoLogin True\r\n"
    "#Configure OutputLog  True\r\n"
    "#Configure LogRetentionDays 30\r\n"
    "#Configure MarginBell 74\r\n"
    "#Configure LogBySession True\r\n"
    "#Configure Editor {Notepad.exe }\r\n"
    "#Configure AutoSave True\r\n"
    "#Configure ColourDisplay False\r\n"
    "#Configure ColourTextTags False\r\n"
    "#Configure BackgroundColour STANDARD\r\n"
    "#Configure Foregroundcolour STANDARD\r\n"
    "#Configure CompressOutput True\r\n"
    "#Configure RemoveAsciiArt  1 \r\n"
    "#Configure DisplayCommandsInOutput True\r\n"
    "#Configure OutputWindowSize  32\r\n"
    "#Configure EntryByLine -1 \r\n"
    "#Configure BatchSpeech  0 \r\n";

}  // namespace corvid::testing_files
