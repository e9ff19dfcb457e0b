/* Counts the words of a text file: words FILE. */
#include <stdio.h>

#include "runtime/qor.h"

int main(int argc, char** argv) {
  if (argc != 2 || qor_file_exists(argv[1]) == 0) {
    fputs("usage: words FILE\n", stderr);
    return 2;
  }
  char* text = qor_txtreader(argv[1]);
  QorArray* words = qor_regex_findall("[A-Za-z]+", text);
  QorMap* counts = qor_map_new();
  for (int64_t i = 0; i < qor_array_len(words); ++i) {
    char* word = qor_lower(qor_array_get_str(words, i));
    qor_map_set_f64(counts, word, qor_map_get_f64(counts, word) + 1);
    qor_str_free(word);
  }
  char* shown = qor_map_str(counts);
  puts(shown);

  qor_str_free(shown);
  qor_map_free(counts);
  qor_array_free_deep(words);
  qor_str_free(text);
  return 0;
}
