#include "host/data_commands.h"

#include "host/arrays.h"
#include "host/files.h"
#include "host/host.h"

namespace kavo::host {

double random_number(Host& host, const Arguments& arguments) {
  const bool is_to_seed = arguments.number(0) < 0;
  if (is_to_seed || !host.random)
    host.random.emplace(fresh_seed());
  return is_to_seed ? 0.0 : host.random->next_fraction();
}

double write_binary_file(Host& host, const Arguments& arguments) {
  if (!host.scores.drops(arguments.text(0)))
    write_whole_file(arguments.text(0), arguments.text(1));
  return 0;
}

QorArray* transpose_matrix(Host&, const Arguments& arguments) {
  return transposed(arguments.array(0)).release();
}

QorArray* reshape_values(Host&, const Arguments& arguments) {
  return reshaped(arguments.array(0), arguments.array(1)).release();
}

QorArray* insert_row(Host&, const Arguments& arguments) {
  return with_row_inserted(arguments.array(0), arguments.number(1), arguments.number(2),
                           arguments.array(3))
      .release();
}

QorArray* split_text(Host&, const Arguments& arguments) {
  return split(arguments.text(0), arguments.text(1)).release();
}

QorArray* list_directory(Host& host, const Arguments& arguments) {
  const std::string_view path = arguments.text(0);
  const std::vector<std::string> names =
      host.scores.hides(path) ? std::vector<std::string>() : names_at(path);
  OwnedArray result = new_texts(static_cast<int64_t>(names.size()));
  for (size_t i = 0; i < names.size(); ++i)
    set_text(result.get(), static_cast<int64_t>(i), names[i]);
  return result.release();
}

} // namespace kavo::host
