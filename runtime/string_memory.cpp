// Ending a string: apart from the other string functions, so that whoever frees arrays alone links
// nothing else.
#include <cstdlib>

#include "runtime/internal/packed_strings.h"
#include "runtime/qorrt.h"
#include "runtime/text.h"

void qor_str_free(char* s) {
  if (s == nullptr)
    return;
  if (qorrt_strlen(s) >= 0)
    qorrt_register_binary(s, -1);
  if (qor::is_packed(s))
    return qor::free_packed(s);
  std::free(s);
}
