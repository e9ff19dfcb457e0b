// Ending a string: apart from the other string functions, so that whoever frees arrays alone links
// nothing else.
#include "runtime/internal/strings.h"
#include "runtime/text.h"

void qor_str_free(char* s) {
  qor::free_string(s);
}
