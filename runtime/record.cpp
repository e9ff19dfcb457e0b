#include "runtime/record.h"

#include <cstdlib>
#include <new>

#include "runtime/internal/containers.h"
#include "runtime/internal/strings.h"

struct QorRecord {
  qor::String type_name;
  qor::Dictionary<double> numbers;
  qor::Dictionary<qor::String> texts;
};

QorRecord* qor_udt_new(const char* type_name) {
  auto* record = new (qor::allocate(sizeof(QorRecord))) QorRecord;
  record->type_name = qor::text_of(type_name);
  return record;
}

void qor_udt_free(QorRecord* record) {
  if (record == nullptr)
    return;
  record->~QorRecord();
  std::free(record);
}

char* qor_udt_type(const QorRecord* record) {
  return qor::new_string(record == nullptr ? std::string_view() : record->type_name);
}

void qor_udt_set_f64(QorRecord* record, const char* field, double value) {
  if (record != nullptr && field != nullptr)
    record->numbers.insert_or_assign(field, value);
}

double qor_udt_get_f64(const QorRecord* record, const char* field) {
  if (record == nullptr || field == nullptr)
    return 0.0;
  const auto found = record->numbers.find(std::string_view(field));
  return found == record->numbers.end() ? 0.0 : found->second;
}

void qor_udt_set_str(QorRecord* record, const char* field, const char* value) {
  if (record != nullptr && field != nullptr)
    record->texts.insert_or_assign(field, qor::String(qor::bytes_of(value)));
}

char* qor_udt_get_str(const QorRecord* record, const char* field) {
  if (record == nullptr || field == nullptr)
    return qor::new_string("");
  const auto found = record->texts.find(std::string_view(field));
  return found == record->texts.end() ? qor::new_string("") : qor::new_whole_string(found->second);
}
