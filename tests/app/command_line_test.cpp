// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/command_line.h"

#include <gtest/gtest.h>

namespace corvid {
namespace {

using Words = std::vector<std::string>;

TEST(CommandLineTest, WithoutAWordItIsTheWindow) {
  const CommandLine line = ParseCommandLine({});
  EXPECT_EQ(line.Problem, "");
  EXPECT_EQ(line.Ui, FaceKind::Desktop);
  EXPECT_FALSE(line.UiGiven) << "a console takes over where there is no display";
  EXPECT_FALSE(line.Practice || line.Version || line.Help || line.JsonEventsGiven);
  EXPECT_EQ(line.DataFolder + line.Connect, "");
}

TEST(CommandLineTest, EachOptionIsReadWithABlankOrAnEqualsSign) {
  for (const Words& words :
       {Words{"--ui", "json", "--data", "/my files", "--connect", "bob", "--practice", "--events", "speech,send"},
        Words{"--events=speech,send", "--practice", "--connect=bob", "--data=/my files", "--ui=json"}}) {
    const CommandLine line = ParseCommandLine(words);
    EXPECT_EQ(line.Problem, "");
    EXPECT_EQ(line.Ui, FaceKind::Json);
    EXPECT_TRUE(line.UiGiven);
    EXPECT_EQ(line.DataFolder, "/my files");
    EXPECT_EQ(line.Connect, "bob");
    EXPECT_TRUE(line.Practice);
    EXPECT_EQ(line.JsonEvents, (Words{"speech", "send"}));
    EXPECT_TRUE(line.JsonEventsGiven);
  }
  EXPECT_EQ(ParseCommandLine({"--ui", "console"}).Ui, FaceKind::Console);
  EXPECT_EQ(ParseCommandLine({"--ui", "desktop"}).Ui, FaceKind::Desktop);
  EXPECT_TRUE(ParseCommandLine({"--ui", "desktop"}).UiGiven);
  EXPECT_TRUE(ParseCommandLine({"--version"}).Version);
  EXPECT_TRUE(ParseCommandLine({"--help"}).Help);
  EXPECT_TRUE(ParseCommandLine({"-h"}).Help);
  EXPECT_EQ(ParseCommandLine({"--data", "a=b"}).DataFolder, "a=b");
}

TEST(CommandLineTest, WhatIsWrongIsTold) {
  const std::pair<Words, const char*> wrong[] = {
      {{"--loud"}, "There is no option \"--loud\"."},
      {{"bob"}, "There is no option \"bob\"."},
      {{"--practice", "-x", "--loud"}, "There is no option \"-x\"."},
      {{"--ui", "window"}, "--ui takes desktop, console or json, not \"window\"."},
      {{"--ui"}, "--ui needs a value."},
      {{"--data"}, "--data needs a value."},
      {{"--data="}, "--data needs a value."},
      {{"--connect", ""}, "--connect needs a value."},
      {{"--practice", "--events"}, "--events needs a value."},
  };
  for (const auto& [words, problem] : wrong) EXPECT_EQ(ParseCommandLine(words).Problem, problem);
}

}  // namespace
}  // namespace corvid
