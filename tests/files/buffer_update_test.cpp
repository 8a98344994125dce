// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/buffers.h"

#include <gtest/gtest.h>

#include "files_house.h"

namespace corvid {
namespace {

using testing_files::FilesHouse;
using testing_files::Texts;

struct Update {
  const char* About;
  const char* Text;
  UpdateAction Action;
  OldDefinition Old;
  const char* NewLine;
  const char* Result;
};

const Update Updates[] = {
    {"replaces the line",
     "#alias {a} {b}\r\n#alias {c} {d}\r\n",
     UpdateAction::Write,
     {"Alias", "a", "b", ""},
     "#alias {a} {new}",
     "#alias {a} {new}\r\n#alias {c} {d}\r\n"},
    {"finds any case and short forms",
     "#ALI A b\r\n",
     UpdateAction::Write,
     {"#alias", "a", "b", ""},
     "#alias {a} {x}",
     "#alias {a} {x}\r\n"},
    {"keeps apart what is tested before",
     "#al a b\r\n",
     UpdateAction::Write,
     {"alias", "a", "b", ""},
     "#alias {a} {x}",
     "#al a b\r\n#alias {a} {x}\r\n"},
    {"keeps apart everybody's and one's own",
     "#galias {a} {b}\r\n#alias {a} {b}\r\n",
     UpdateAction::Delete,
     {"alias", "a", "b", ""},
     "",
     "#galias {a} {b}\r\n"},
    {"finds everybody's",
     "#alias {a} {b}\r\n#GTr {a} {b}\r\n",
     UpdateAction::Delete,
     {"GTrigger", "a", "b", ""},
     "",
     "#alias {a} {b}\r\n"},
    {"needs the same commands",
     "#alias {a} {other}\r\n",
     UpdateAction::Delete,
     {"alias", "a", "b", ""},
     "",
     "#alias {a} {other}\r\n"},
    {"takes any commands when none are given",
     "#alias {a} {other}\r\n",
     UpdateAction::Delete,
     {"alias", "a", "", ""},
     "",
     ""},
    {"needs a class of the list",
     "#alias {a} {b} {c1}\r\n#alias {a} {b} {c2}\r\n",
     UpdateAction::Delete,
     {"alias", "a", "b", "x|C2"},
     "",
     "#alias {a} {b} {c1}\r\n"},
    {"finds keys by what they are",
     "#key control-shift-f1 {look}\r\n",
     UpdateAction::Delete,
     {"Key", "Shift-Control-F1", "look", ""},
     "",
     ""},
    {"replaces all lines of a statement",
     "; top\r\n#trigger {hi} {\r\n  wave // friendly\r\n}\r\n#key F1 x\r\n",
     UpdateAction::Write,
     {"Trigger", "hi", "\r\n  wave\r\n", ""},
     "#Trigger {hi} {bow}",
     "; top\r\n#Trigger {hi} {bow}\r\n#key F1 x\r\n"},
    {"leaves the other commands of the line",
     "#alias a b;#alias c d;#alias e f\r\n",
     UpdateAction::Write,
     {"alias", "c", "d", ""},
     "#alias {c} {x}",
     "#alias a b;#alias {c} {x};#alias e f\r\n"},
    {"takes a command out of a line",
     "#alias a b;#alias c d\r\n",
     UpdateAction::Delete,
     {"alias", "c", "d", ""},
     "",
     "#alias a b\r\n"},
    {"takes the first command out of a line",
     "#alias a b;#alias c d\r\n",
     UpdateAction::Delete,
     {"alias", "a", "b", ""},
     "",
     "#alias c d\r\n"},
    {"keeps the comment",
     "#alias {a} {b} // mine\r\n",
     UpdateAction::Write,
     {"alias", "a", "b", ""},
     "#alias {a} {x}",
     "#alias {a} {x} // mine\r\n"},
    {"finds nothing in comments",
     "; #alias {a} {b}\r\n// #alias {a} {b}\r\n",
     UpdateAction::Delete,
     {"alias", "a", "b", ""},
     "",
     "; #alias {a} {b}\r\n// #alias {a} {b}\r\n"},
    {"appends behind a text without line end",
     "#alias c d",
     UpdateAction::Write,
     {"alias", "a", "b", ""},
     "#alias {a} {x}",
     "#alias c d\r\n#alias {a} {x}\r\n"},
    {"appends to an empty text",
     "",
     UpdateAction::Write,
     {"alias", "a", "b", ""},
     "#alias {a} {x}",
     "#alias {a} {x}\r\n"},
    {"appends whatever is there",
     "#alias {a} {b}\r\n",
     UpdateAction::Append,
     {"alias", "a", "b", ""},
     "#alias {a} {x}",
     "#alias {a} {b}\r\n#alias {a} {x}\r\n"},
    {"deletes nothing that is not there",
     "#alias {c} {d}\r\n",
     UpdateAction::Delete,
     {"alias", "a", "b", ""},
     "",
     "#alias {c} {d}\r\n"},
    {"passes unbalanced text",
     "#alias {a} {b\r\n#alias {c} {d}\r\n",
     UpdateAction::Write,
     {"alias", "z", "", ""},
     "#alias {z} {x}",
     "#alias {a} {b\r\n#alias {c} {d}\r\n#alias {z} {x}\r\n"},
};

TEST(UpdateBuffer, ChangesTheLineOfADefinition) {
  for (const Update& update : Updates) {
    SCOPED_TRACE(update.About);
    FilesHouse house;
    house.buffers.OpenBuffers("/data/a.set", buffer::Script);
    house.state.BufferLoaded[4] = update.Text;
    house.buffers.SetBufferText(4, update.Text);
    const bool changed = house.buffers.UpdateBuffer(4, update.Action, update.NewLine, "", update.Old);
    EXPECT_EQ(house.state.BufferText[4], update.Result);
    EXPECT_EQ(changed, std::string(update.Text) != update.Result);
    EXPECT_EQ((house.state.BufferFlags[4] & buffer::Modified) != 0, changed);
  }
}

TEST(UpdateBuffer, ChangesWhatTheEntryBoxShows) {
  FilesHouse house;
  house.Put("#alias {a} {b}\r\n");
  house.Load("/data/a.set");
  house.buffers.MoveBuffers(4);
  house.state.EntryBox.SetText("#alias {a} {b}\r\n#alias {n} {typed}\r\n");
  house.buffers.UpdateBuffer(0, UpdateAction::Write, "#alias {a} {x}", "/data/a.set", {"alias", "a", "b", ""});
  EXPECT_EQ(house.state.EntryBox.Text(), "#alias {a} {x}\r\n#alias {n} {typed}\r\n");
  EXPECT_EQ(house.state.BufferText[4], house.state.EntryBox.Text());
}

TEST(UpdateBuffer, NeedsABufferInUse) {
  FilesHouse house;
  EXPECT_FALSE(house.buffers.UpdateBuffer(0, UpdateAction::Write, "x", "/data/none.set", {}));
  EXPECT_FALSE(house.buffers.UpdateBuffer(9, UpdateAction::Write, "x", "", {}));
  EXPECT_TRUE(house.buffers.UpdateBuffer(3, UpdateAction::Append, "#alias {a} {b}", "", {}));
  EXPECT_EQ(house.state.BufferText[3], "#alias {a} {b}\r\n");
}

}  // namespace
}  // namespace corvid
