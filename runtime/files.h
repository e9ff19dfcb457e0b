/* Text files read and written whole, directories, paths and the environment. Text inside the
   program is UTF-8. A null path names nothing. Only qor_cd reports an error. */
#ifndef QOR_FILES_H
#define QOR_FILES_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* The whole file as a new UTF-8 string: of the encoding that a byte-order mark names, or UTF-8
   without one. Bytes that are not come back as they are. "" when the file cannot be read, which is
   no error. Bytes behind a NUL are kept but not registered with the host. */
char* qor_txtreader(const char* path);

/* Creates the directory with permissions 0755 (less the process's mask). 0, or -1 when the platform
   refuses (it exists, for one), which is no error. */
int qor_mkdir_native(const char* path);

#ifdef __cplusplus
}
#endif

#endif
