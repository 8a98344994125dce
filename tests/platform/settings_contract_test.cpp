// SPDX-License-Identifier: GPL-3.0-or-later
// What every store of settings must do alike, the file and the one in memory, and every clock.
#include <gtest/gtest.h>

#include "platform/memory/memory_files.h"
#include "platform/memory/memory_loop.h"
#include "platform/qt/clock.h"
#include "platform/qt/settings.h"

namespace corvid {
namespace {

struct StoreInAFile {
  MemoryFiles Disk;
  FileSettings Store{Disk, "/config/corvid/settings"};
};

struct StoreInMemory {
  MemorySettings Store;
};

template <typename Place>
class SettingsContract : public testing::Test {
 protected:
  Place place;
  Settings& settings = place.Store;
};

using Stores = testing::Types<StoreInAFile, StoreInMemory>;
TYPED_TEST_SUITE(SettingsContract, Stores);

TYPED_TEST(SettingsContract, AValueIsKeptUntilItIsDeleted) {
  EXPECT_EQ(this->settings.Get("app", "part", "key"), "");
  EXPECT_NO_THROW(this->settings.Delete("app", "part", "key"));
  this->settings.Set("app", "part", "key", "one");
  this->settings.Set("app", "part", "other", "two");
  this->settings.Set("app", "part", "key", "three");
  EXPECT_EQ(this->settings.Get("app", "part", "key"), "three");
  this->settings.Delete("app", "part", "key");
  EXPECT_EQ(this->settings.Get("app", "part", "key"), "");
  EXPECT_EQ(this->settings.Get("app", "part", "other"), "two");
  this->settings.Set("app", "part", "other", "");
  EXPECT_EQ(this->settings.Get("app", "part", "other"), "");
}

TYPED_TEST(SettingsContract, NamesAreFoundInAnyCase) {
  this->settings.Set("App", "Part", "Key", "one");
  EXPECT_EQ(this->settings.Get("APP", "part", "kEY"), "one");
  this->settings.Set("app", "part", "key", "Two");
  EXPECT_EQ(this->settings.Get("App", "Part", "Key"), "Two");
  this->settings.Delete("APP", "PART", "KEY");
  EXPECT_EQ(this->settings.Get("App", "Part", "Key"), "");
}

TYPED_TEST(SettingsContract, EveryByteIsKeptApart) {
  const char* const parts[] = {"a/b", "a=b", "a%2Fb", "a b", "a\r\nb", "a", "b", ""};
  int number = 0;
  for (const char* section : parts)
    for (const char* key : parts) this->settings.Set("app", section, key, std::to_string(++number) + "/=%41\r\n\xE9 ");
  number = 0;
  for (const char* section : parts)
    for (const char* key : parts)
      EXPECT_EQ(this->settings.Get("app", section, key), std::to_string(++number) + "/=%41\r\n\xE9 ")
          << section << " " << key;
}

template <typename Source>
class ClockContract : public testing::Test {
 protected:
  Source source;
  Clock& clock = source;
};

using Clocks = testing::Types<SystemClock, MemoryClock>;
TYPED_TEST_SUITE(ClockContract, Clocks);

TYPED_TEST(ClockContract, TheDateAndTheSecondsOfTheDayAreOfOneTime) {
  const auto seconds = [](const DateTime& at) { return at.Hour * 3600 + at.Minute * 60 + at.Second; };
  DateTime before{}, after{};
  double between = -1;
  do {  // a second may end in the middle
    before = this->clock.Now();
    between = this->clock.SecondsSinceMidnight();
    after = this->clock.Now();
  } while (seconds(before) != seconds(after));
  EXPECT_EQ(static_cast<int>(between), seconds(before));
  EXPECT_GE(before.Year, 2026);
  EXPECT_TRUE(before.Month >= 1 && before.Month <= 12 && before.Day >= 1 && before.Day <= 31);
}

TYPED_TEST(ClockContract, MillisecondsNeverGoBack) {
  std::int64_t last = this->clock.MonotonicMilliseconds();
  for (int i = 0; i < 1000; ++i) {
    const std::int64_t now = this->clock.MonotonicMilliseconds();
    ASSERT_GE(now, last);
    last = now;
  }
}

}  // namespace
}  // namespace corvid
