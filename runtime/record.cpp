#include "runtime/record.h"

#include <memory>
#include <string>
#include <unordered_map>

#include "runtime/internal/strings.h"

struct QorRecord {
  std::string type_name;
  std::unordered_map<std::string, double> numbers;
  std::unordered_map<std::string, std::string> texts;
};

QorRecord* qor_udt_new(const char* type_name) {
  auto record = std::make_unique<QorRecord>();
  record->type_name = qor::text_of(type_name);
  return record.release();
}

void qor_udt_free(QorRecord* record) {
  const std::unique_ptr<QorRecord> ended(record);
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
  const auto found = record->numbers.find(field);
  return found == record->numbers.end() ? 0.0 : found->second;
}

void qor_udt_set_str(QorRecord* record, const char* field, const char* value) {
  if (record != nullptr && field != nullptr)
    record->texts.insert_or_assign(field, std::string(qor::bytes_of(value)));
}

char* qor_udt_get_str(const QorRecord* record, const char* field) {
  if (record == nullptr || field == nullptr)
    return qor::new_string("");
  const auto found = record->texts.find(field);
  return found == record->texts.end() ? qor::new_string("") : qor::new_whole_string(found->second);
}
