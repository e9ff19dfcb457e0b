#include "game/highscores/table.h"

#include <string>

#include "game/commands.h"
#include "game/state.h"

namespace kavo {

namespace {

constexpr const char* path = "tmp/kavo_high.txt";
constexpr int64_t entries = 5;
constexpr int64_t line_feed = 10;

void set_entry(int64_t slot, const char* name, double score) {
  put_text(HS_NAME.get(), slot, name);
  qor_array_set(HS_SCORE.get(), slot, score);
}

const char* name_at(int64_t slot) {
  return qor_array_get_str(HS_NAME.get(), slot);
}
double score_at(int64_t slot) {
  return number_at(HS_SCORE.get(), slot);
}

Out<> read_entry(int64_t slot, const char* line) {
  const Array fields = TRY(command::split(line, ";"));
  if (qor_array_len(fields.get()) <= 1)
    return {};
  // Without what a damaged file may hold behind a NUL byte: there a saved line would end.
  const std::string name = qor_array_get_str(fields.get(), 0);
  DO(set_entry(slot, name.c_str(), qor_val(qor_array_get_str(fields.get(), 1))));
  return {};
}

Text line_at(int64_t slot) {
  const Text name = concat(name_at(slot), ";");
  const Text score(qor_double_to_str(score_at(slot)));
  return concat(chars(name), chars(score));
}

} // namespace

Out<> LOADHIGH() {
  ENTER();
  const Array listing = TRY(command::dir(path));
  if (qor_array_len(listing.get()) == 0)
    return {};
  const Text content(qor_txtreader(path));
  const Text separator(qor_chr(line_feed));
  const Array lines = TRY(command::split(chars(content), chars(separator)));
  for (int64_t slot = 0; slot < entries; ++slot)
    if (slot < qor_array_len(lines.get()))
      DO(read_entry(slot, qor_array_get_str(lines.get(), slot)));
  return {};
}

Out<> SAVEHIGH() {
  ENTER();
  const Array lines = texts(entries, "");
  for (int64_t slot = 0; slot < entries; ++slot) {
    const Text line = line_at(slot);
    DO(put_text(lines.get(), slot, chars(line)));
  }
  const Text separator(qor_chr(line_feed));
  const Text content(qor_join_arr(lines.get(), chars(separator)));
  DO(command::binwriter(path, chars(content)));
  return {};
}

Out<double> HS_RANK(double score) {
  ENTER();
  for (int64_t slot = 0; slot < entries; ++slot)
    if (TRY(score_at(slot) < score))
      return static_cast<double>(slot);
  return -1.0;
}

Out<> HS_INSERT(const char* name, double rank, double score) {
  ENTER();
  const int64_t slot = qor_int(rank);
  const Text inserted = copy(name); // the name may stand in the table itself
  for (int64_t worse = entries - 1; worse > slot; --worse)
    DO(set_entry(worse, name_at(worse - 1), score_at(worse - 1)));
  DO(set_entry(slot, chars(inserted), score));
  DO(SAVEHIGH());
  return {};
}

} // namespace kavo
