// Memory used up inside what the C++ library allocates: no exception reaches a caller in C.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <new>
#include <string>

#include "runtime/qor.h"
#include "tests/runtime/values.h"

namespace {

bool is_used_up = false;

} // namespace

// The program's own operators, which the standard lets a program bring.
void* operator new(size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return is_used_up ? nullptr : std::malloc(size == 0 ? 1 : size);
}
void* operator new(size_t size) {
  void* block = operator new(size, std::nothrow);
  if (block == nullptr)
    throw std::bad_alloc();
  return block;
}
void operator delete(void* block) noexcept {
  std::free(block);
}
void operator delete(void* block, size_t /*size*/) noexcept {
  std::free(block);
}

namespace {

using kavo::test::numbers;
using kavo::test::own;
using kavo::test::own_deep;
using kavo::test::strings;
using kavo::test::take;
using kavo::test::to_strings;
using kavo::test::to_vector;

// What `work` returns when the operators give no memory.
template<typename Work>
auto without_memory(Work work) {
  is_used_up = true;
  auto result = work();
  is_used_up = false;
  return result;
}

TEST(Exhaustion, SortingDoesWithout) {
  const auto array = numbers({3, 1, 2});
  const auto texts = strings({"b", "a"});
  const auto sorted = own(without_memory([&] { return qor_array_sort(array.get()); }));
  const auto order = own(without_memory([&] { return qor_grade(texts.get()); }));
  const auto unique = own(without_memory([&] { return qor_array_unique(array.get()); }));
  EXPECT_EQ(to_vector(sorted.get()), (kavo::test::Numbers{1, 2, 3}));
  EXPECT_EQ(to_vector(order.get()), (kavo::test::Numbers{1, 0}));
  EXPECT_EQ(qor_array_len(unique.get()), 3);
  EXPECT_EQ(without_memory([&] { return qor_array_median(array.get()); }), 2);
}

TEST(Exhaustion, FormattingDoesWithout) {
  const auto format = [](const char* text) {
    return take(without_memory([=] { return qor_format2(text, 1.5, 2.5); }));
  };
  EXPECT_EQ(format("a format text that is longer than short ones {:>40.3f} and {}"),
            "a format text that is longer than short ones " + std::string(35, ' ') +
                "1.500 and 2.5");
  EXPECT_EQ(take(without_memory([] {
              return qor_format_date("2024-01-02", "a long format of some forty bytes: %Y", NAN);
            })),
            "a long format of some forty bytes: 2024");
}

TEST(Exhaustion, MapsAndRecordsDoWithout) {
  const auto shown = take(without_memory([] {
    auto* map = qor_map_new();
    for (const char* key : {"a key that is not short", "b", "c", "d", "e", "f", "g", "h", "i"})
      qor_map_set_f64(map, key, 1);
    auto* text = qor_map_str(map);
    qor_map_free(map);
    return text;
  }));
  EXPECT_TRUE(shown.starts_with("{\"a key that is not short\": 1, ")) << shown;
  const auto name = take(without_memory([] {
    auto* record = qor_udt_new("a type with a name that is not short");
    qor_udt_set_str(record, "a field with a name that is not short", "Ada");
    auto* text = qor_udt_get_str(record, "a field with a name that is not short");
    qor_udt_free(record);
    return text;
  }));
  EXPECT_EQ(name, "Ada");
}

TEST(ExhaustionDeathTest, RegularExpressionsEndTheProgramWithTheLibrarysMessage) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const auto use = [](auto work) {
    is_used_up = true;
    work();
  };
  EXPECT_DEATH(use([] { qor_regex_match("(a|b)*", "abab"); }), "^Out of memory\n");
  EXPECT_DEATH(use([] { qor_regex_replace("(a|b)*", "abab", ""); }), "^Out of memory\n");
  EXPECT_DEATH(use([] { qor_regex_findall("(a|b)*", "abab"); }), "^Out of memory\n");
}

TEST(ExhaustionDeathTest, FilesEndTheProgramWithTheLibrarysMessage) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_DEATH(
      {
        is_used_up = true;
        qor_txtwriter_enc("/dev/null", "a text that is no short one, whatever short is", 0,
                          "utf16");
      },
      "^Out of memory\n");
}

} // namespace
