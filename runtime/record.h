/* Records: a type name, and number and string fields by name. A name may stand for a number and
   for a string at once; they do not meet.

   A null record or field makes the setters do nothing and the getters give their empty result;
   neither is an error, nor is an absent field. */
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

typedef struct QorRecord QorRecord;

/* An empty record of that type (null: "") for the caller, who ends it with qor_udt_free. */
QorRecord* qor_udt_new(const char* type_name);
void qor_udt_free(QorRecord* record);

/* The type name, as a new string. */
char* qor_udt_type(const QorRecord* record);

/* Stores a number; reads it, 0.0 when absent. */
void qor_udt_set_f64(QorRecord* record, const char* field, double value);
double qor_udt_get_f64(const QorRecord* record, const char* field);

/* Stores a copy of a string (null as ""); reads it as a new string, "" when absent. */
void qor_udt_set_str(QorRecord* record, const char* field, const char* value);
char* qor_udt_get_str(const QorRecord* record, const char* field);

#ifdef __cplusplus
}
#endif
