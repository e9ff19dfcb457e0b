/* Text files read and written whole, directories, paths and the environment.

   Text inside the program is UTF-8; files may be in any encoding of runtime/encoding.h. A null
   path names nothing. All returned strings are new and the caller's. Only qor_cd reports an
   error: what cannot be read is "", what cannot be written is skipped, silently. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* The whole file as UTF-8, of the encoding that a byte-order mark names (UTF-8 without one), or of
   `encoding`. Of what is no regular file, a pipe or a device, nothing is read, so that nothing is
   waited for. When the bytes do not convert, they come back as they are. A text with NUL bytes is
   a byte string. */
char* qor_txtreader(const char* path);
char* qor_txtreader_enc(const char* path, const char* encoding);

/* Write the bytes of `text` (a byte string whole) into the file: in place of what it held, behind
   it, or either as `append` says. Nothing is waited for: a pipe that nobody reads counts as what
   cannot be written, and one that is read takes no more than it has room for. */
void qor_txtwriter(const char* path, const char* text);
void qor_txtwriter_append(const char* path, const char* text);
void qor_txtwriter3(const char* path, const char* text, int64_t append);

/* The same in `encoding` (null: UTF-8). A text that does not convert is written as the UTF-8 it
   is, so that nothing is lost; no second byte-order mark is written behind existing text. */
void qor_txtwriter_enc(const char* path, const char* text, int64_t append, const char* encoding);

/* Creates the directory with permissions 0755 (less the process's mask). 0, or -1 when the
   platform refuses (it exists, for one), which is no error. */
int qor_mkdir_native(const char* path);

/* Removes a directory if it is empty. */
void qor_rmdir(const char* path);

/* The current directory; "" when it cannot be read (or is longer than 4096 bytes). */
char* qor_pwd(void);

/* Goes to `path` (null or empty: stays) and returns the current directory. A refused change sets
   the error "CD: cannot change directory" (code 1). */
char* qor_cd(const char* path);

/* 1 when the path exists / is a directory, else 0. */
int qor_file_exists(const char* path);
int qor_file_isdir(const char* path);

/* Bytes; -1 when the path does not exist or is a directory. */
int64_t qor_file_size(const char* path);

/* A path that does not exist: TMPDIR (or /tmp), "/", `prefix` (null or empty: "qor") and six unique
   characters. "" when the directory takes no files. */
char* qor_mktemp(const char* prefix);

/* The folder part of a path: up to the last '/', "." when there is none, "/" at the root. */
char* qor_path_dirname(const char* path);

/* The path without "." and doubled or trailing '/', and with "dir/.." resolved by the text alone;
   "." when nothing is left. */
char* qor_path_normalize(const char* path);

/* The environment variable's value, "" when unset. */
char* qor_getenv(const char* name);

/* Sets the variable; a null value unsets it; a null or impossible name does nothing. */
void qor_setenv(const char* name, const char* value);

#ifdef __cplusplus
}
#endif
