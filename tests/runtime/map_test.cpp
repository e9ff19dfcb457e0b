// Maps and records.
#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <random>
#include <string>

#include "runtime/map.h"
#include "runtime/record.h"
#include "tests/runtime/values.h"
#include "tests/support/rounds.h"

namespace {

using namespace std::string_literals;
using kavo::test::take;

struct FreeMap {
  void operator()(QorMap* map) const { qor_map_free(map); }
};
struct FreeRecord {
  void operator()(QorRecord* record) const { qor_udt_free(record); }
};
using Map = std::unique_ptr<QorMap, FreeMap>;
using Record = std::unique_ptr<QorRecord, FreeRecord>;

Map new_map() {
  return Map(qor_map_new());
}

TEST(MapEntries, StartWithoutRoom) {
  const auto map = new_map();
  EXPECT_EQ(map->count, 0);
  EXPECT_EQ(map->capacity, 0);
}

TEST(MapEntries, AreReplacedByASecondSetting) {
  const auto map = new_map();
  qor_map_set_f64(map.get(), "x", 1);
  qor_map_set_f64(map.get(), "x", 2);
  EXPECT_EQ(map->count, 1);
  EXPECT_EQ(qor_map_get_f64(map.get(), "x"), 2);
}

TEST(MapEntries, ChangeTheirKindWhenReplaced) {
  const auto map = new_map();
  qor_map_set_str(map.get(), "x", "text");
  qor_map_set_f64(map.get(), "x", 2);
  EXPECT_EQ(map->tags[0], QOR_TAG_FLOAT64);
  qor_map_set_str(map.get(), "x", "more");
  EXPECT_EQ(map->tags[0], QOR_TAG_STRING);
  EXPECT_EQ(take(qor_map_get_str(map.get(), "x")), "more");
}

TEST(MapEntries, GrowFromEightToSixteenOnTheNinthInsertion) {
  const auto map = new_map();
  for (int i = 0; i < 8; ++i)
    qor_map_set_f64(map.get(), std::to_string(i).c_str(), i);
  EXPECT_EQ(map->capacity, 8);
  qor_map_set_f64(map.get(), "8", 8);
  EXPECT_EQ(map->capacity, 16);
  EXPECT_EQ(map->count, 9);
  EXPECT_EQ(qor_map_get_f64(map.get(), "3"), 3);
}

TEST(MapEntries, KeepInsertionOrderAndTellCasesApart) {
  const auto map = new_map();
  for (const char* key : {"b", "a", "B"})
    qor_map_set_f64(map.get(), key, 0);
  EXPECT_EQ(map->keys[0], "b"s);
  EXPECT_EQ(map->keys[1], "a"s);
  EXPECT_EQ(map->keys[2], "B"s);
}

TEST(MapEntries, OwnCopiesOfKeysAndStrings) {
  const auto map = new_map();
  std::string key = "key";
  std::string value = "value";
  qor_map_set_str(map.get(), key.c_str(), value.c_str());
  key[0] = value[0] = 'x';
  EXPECT_EQ(take(qor_map_get_str(map.get(), "key")), "value");
}

TEST(MapEntries, MayBeSetToThemselves) {
  const auto map = new_map();
  qor_map_set_str(map.get(), "x", "text");
  qor_map_set_str(map.get(), "x", map->values[0].str);
  EXPECT_EQ(take(qor_map_get_str(map.get(), "x")), "text");
}

TEST(MapReading, ANumberOfAStringIsZero) {
  const auto map = new_map();
  qor_map_set_str(map.get(), "x", "2.5");
  EXPECT_EQ(qor_map_get_f64(map.get(), "x"), 0.0);
}

TEST(MapReading, ATextOfANumberHasSixSignificantDigits) {
  const auto map = new_map();
  qor_map_set_f64(map.get(), "x", 2.5);
  EXPECT_EQ(take(qor_map_get_str(map.get(), "x")), "2.5");
  qor_map_set_f64(map.get(), "x", 1e20);
  EXPECT_EQ(take(qor_map_get_str(map.get(), "x")), "1e+20");
}

TEST(MapReading, AnAbsentKeyGivesTheEmptyResult) {
  const auto map = new_map();
  qor_slot value{.i64 = 99};
  EXPECT_EQ(qor_map_get_f64(map.get(), "x"), 0.0);
  EXPECT_EQ(take(qor_map_get_str(map.get(), "x")), "");
  EXPECT_EQ(qor_map_get_obj(map.get(), "x"), nullptr);
  EXPECT_EQ(qor_map_get_tagged(map.get(), "x", &value), 0U);
  EXPECT_EQ(value.i64, 0);
  EXPECT_EQ(qor_map_has(map.get(), "x"), 0);
}

TEST(MapReading, ReferencesComeBackAsTheyAre) {
  const auto map = new_map();
  const auto array = kavo::test::numbers({1});
  for (const uint32_t tag : {QOR_TAG_ARRAY, QOR_TAG_OBJECT, QOR_TAG_HOST}) {
    qor_slot value{};
    qor_map_set_tagged(map.get(), "x", tag, {.arr = array.get()});
    EXPECT_EQ(qor_map_get_obj(map.get(), "x"), array.get());
    EXPECT_EQ(qor_map_get_tagged(map.get(), "x", &value), tag);
    EXPECT_EQ(value.arr, array.get());
    EXPECT_EQ(qor_map_get_f64(map.get(), "x"), 0.0);
    EXPECT_EQ(take(qor_map_get_str(map.get(), "x")), "");
  }
}

TEST(MapReading, TaggedStringsAreCopies) {
  const auto map = new_map();
  qor_map_set_tagged(map.get(), "x", QOR_TAG_STRING, {.str = "text"});
  qor_slot value{};
  EXPECT_EQ(qor_map_get_tagged(map.get(), "x", &value), QOR_TAG_STRING);
  EXPECT_NE(value.str, map->values[0].str);
  EXPECT_EQ(take(const_cast<char*>(value.str)), "text");
  EXPECT_EQ(qor_map_get_tagged(map.get(), "x", nullptr), QOR_TAG_STRING);
}

TEST(MapReading, OtherTagsAreNumbers) {
  const auto map = new_map();
  qor_slot value{};
  qor_map_set_tagged(map.get(), "x", QOR_TAG_INT64, {.i64 = -7});
  EXPECT_EQ(qor_map_get_f64(map.get(), "x"), -7.0);
  EXPECT_EQ(take(qor_map_get_str(map.get(), "x")), "-7");
  EXPECT_EQ(qor_map_get_tagged(map.get(), "x", &value), QOR_TAG_FLOAT64);
  EXPECT_EQ(value.f64, -7.0);
  qor_map_set_tagged(map.get(), "x", QOR_TAG_FLOAT64, {.f64 = 2.5});
  EXPECT_EQ(qor_map_get_tagged(map.get(), "x", &value), QOR_TAG_FLOAT64);
  EXPECT_EQ(value.f64, 2.5);
}

TEST(MapReading, AReferenceIsTheRawSlot) {
  const auto map = new_map();
  qor_map_set_f64(map.get(), "number", 2.5);
  qor_map_set_str(map.get(), "text", "Ada");
  EXPECT_EQ(qor_map_get_obj(map.get(), "number"), qor_reference_in({.f64 = 2.5}));
  EXPECT_EQ(qor_map_get_obj(map.get(), "text"), map->values[1].str);
}

TEST(MapReading, KeepsByteStringsWhole) {
  const auto map = new_map();
  auto* zero = qor_chr(0);
  qor_map_set_str(map.get(), "x", zero);
  EXPECT_EQ(take(qor_map_get_str(map.get(), "x")), "\0"s);
  qor_str_free(zero);
}

TEST(MapNulls, DoNothing) {
  const auto map = new_map();
  qor_map_set_f64(map.get(), nullptr, 1);
  qor_map_set_str(map.get(), nullptr, "x");
  qor_map_set_tagged(map.get(), nullptr, QOR_TAG_FLOAT64, {.f64 = 1});
  EXPECT_EQ(map->count, 0);
  qor_map_set_f64(nullptr, "x", 1);
  qor_map_set_str(nullptr, "x", "x");
  qor_map_set_tagged(nullptr, "x", QOR_TAG_STRING, {.str = "x"});
  EXPECT_EQ(qor_map_get_f64(nullptr, "x"), 0.0);
  EXPECT_EQ(take(qor_map_get_str(map.get(), nullptr)), "");
  EXPECT_EQ(qor_map_has(nullptr, "x"), 0);
  EXPECT_EQ(take(qor_map_str(nullptr)), "{}");
  qor_map_free(nullptr);
  qor_map_set_str(map.get(), "x", nullptr);
  EXPECT_EQ(take(qor_map_get_str(map.get(), "x")), "");
  EXPECT_EQ(qor_map_has(map.get(), "x"), 1);
}

TEST(MapText, ListsEntriesInOrder) {
  const auto map = new_map();
  qor_map_set_str(map.get(), "name", "Ada \"A\" \\ \n\x01");
  qor_map_set_f64(map.get(), "age", 36.5);
  qor_map_set_tagged(map.get(), "n", QOR_TAG_INT64, {.i64 = INT64_MAX});
  qor_map_set_tagged(map.get(), "list", QOR_TAG_ARRAY, {.ptr = nullptr});
  EXPECT_EQ(take(qor_map_str(map.get())),
            R"({"name": "Ada \"A\" \\ \n\u0001", "age": 36.5, "n": 9223372036854775807, )"
            R"("list": ARRAY})");
}

TEST(MapEntries, AreFoundAmongAMillion) {
  const auto map = new_map();
  constexpr int keys = 1'000'000;
  for (int i = 0; i < keys; ++i)
    qor_map_set_f64(map.get(), std::to_string(i).c_str(), i);
  EXPECT_EQ(map->count, keys);
  EXPECT_EQ(map->capacity, 1 << 20);
  EXPECT_EQ(map->keys[keys - 1], std::to_string(keys - 1));
  for (int i = 0; i < keys; i += 997)
    ASSERT_EQ(qor_map_get_f64(map.get(), std::to_string(i).c_str()), i);
  EXPECT_EQ(qor_map_has(map.get(), "-1"), 0);
}

TEST(MapProperty, BehavesLikeAReferenceMapUnderRandomOperations) {
  std::mt19937 random(1); // the same operations every time
  const auto map = new_map();
  std::map<std::string, std::string> reference;
  for (int i = kavo::test::rounds(20000); i > 0; --i) {
    const auto key = "k" + std::to_string(random() % 600);
    const auto number = static_cast<double>(random() % 1000);
    const auto text = std::to_string(random() % 1000);
    if (random() % 2 == 0) {
      qor_map_set_f64(map.get(), key.c_str(), number);
      reference[key] = std::to_string(static_cast<int>(number));
    } else {
      qor_map_set_str(map.get(), key.c_str(), text.c_str());
      reference[key] = text;
    }
    const auto asked = "k" + std::to_string(random() % 700);
    const auto known = reference.find(asked);
    ASSERT_EQ(qor_map_has(map.get(), asked.c_str()), known == reference.end() ? 0 : 1);
    ASSERT_EQ(take(qor_map_get_str(map.get(), asked.c_str())),
              known == reference.end() ? "" : known->second);
    ASSERT_EQ(map->count, std::ssize(reference));
  }
}

TEST(Records, KeepNumbersAndStringsApart) {
  const Record record(qor_udt_new("PLAYER"));
  qor_udt_set_f64(record.get(), "x", 2.5);
  qor_udt_set_str(record.get(), "x", "text");
  qor_udt_set_f64(record.get(), "x", 3.5);
  EXPECT_EQ(qor_udt_get_f64(record.get(), "x"), 3.5);
  EXPECT_EQ(take(qor_udt_get_str(record.get(), "x")), "text");
  EXPECT_EQ(take(qor_udt_type(record.get())), "PLAYER");
}

TEST(Records, GiveTheEmptyResultForAbsentFields) {
  const Record record(qor_udt_new(nullptr));
  EXPECT_EQ(take(qor_udt_type(record.get())), "");
  EXPECT_EQ(qor_udt_get_f64(record.get(), "x"), 0.0);
  EXPECT_EQ(take(qor_udt_get_str(record.get(), "x")), "");
}

TEST(Records, AcceptNull) {
  const Record record(qor_udt_new("T"));
  qor_udt_set_f64(nullptr, "x", 1);
  qor_udt_set_f64(record.get(), nullptr, 1);
  qor_udt_set_str(nullptr, "x", "x");
  qor_udt_set_str(record.get(), nullptr, "x");
  qor_udt_set_str(record.get(), "x", nullptr);
  EXPECT_EQ(qor_udt_get_f64(nullptr, "x"), 0.0);
  EXPECT_EQ(qor_udt_get_f64(record.get(), nullptr), 0.0);
  EXPECT_EQ(take(qor_udt_get_str(nullptr, "x")), "");
  EXPECT_EQ(take(qor_udt_get_str(record.get(), nullptr)), "");
  EXPECT_EQ(take(qor_udt_type(nullptr)), "");
  qor_udt_free(nullptr);
}

} // namespace
