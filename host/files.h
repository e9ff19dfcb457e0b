// Files that are written whole or not at all, and what a folder holds.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kavo::host {

// Makes `content` the whole content of the file at the path, new or not. It goes to a temporary
// file in the same folder, is flushed to disk and takes the old file's place in one step, so that
// neither a full disk nor a crash leaves half a file. Whoever is killed meanwhile leaves the
// temporary file, for the next names_at() to remove. The old file's permissions stay; a symbolic
// link stays and its target is replaced. What is not a regular file, such as a pipe, is written
// to as it is. Throws CommandError with path and reason; the old file is then untouched.
void write_whole_file(std::string_view path_text, std::string_view content);

// The names, sorted bytewise: of what a folder holds when `path` is one (without "." and ".."),
// the last part of the path when anything else is there, those that match when it holds * ? or [
// and does not exist itself. Nothing there gives no names and is not an error; a folder that may
// not be read is one. On the way it removes what killed programs left beside that path.
std::vector<std::string> names_at(std::string_view path);

} // namespace kavo::host
