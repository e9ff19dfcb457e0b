// Files that are written whole or not at all, and what a folder holds.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace kavo::host {

// Makes `content` the whole content of the file at the path, new or not. It goes to a temporary
// file in the same folder, is flushed to disk and takes the old file's place in one step, so that
// neither a full disk nor a crash leaves half a file. Whoever is killed meanwhile leaves the
// temporary file, for remove_leftovers() in the next start. The old file's permissions stay; a new
// one's owner can read and write it; a symbolic link stays and its target is replaced. What is not
// a regular file, such as a pipe, is written to as it is, without waiting for anybody. Throws
// CommandError with path and reason; the old file is then untouched.
void write_whole_file(std::string_view path_text, std::string_view content);

// Goes as far towards write_whole_file() as can be done without a change, with so many bytes more
// than the file has now: throws what that would throw, and leaves everything as it was.
void try_writing(std::string_view path_text, int64_t growth);

// Where a symbolic link leads in the end, whether or not anything is there yet; what is no link, or
// leads round, leads to itself.
std::filesystem::path link_end(const std::filesystem::path& path);

// The names, sorted bytewise: of what a folder holds when `path` is one (without "." and ".."),
// the last part of the path when anything else is there, those that match when it holds * ? or [
// and does not exist itself. Nothing there gives no names and is not an error; a folder that may
// not be read is one.
std::vector<std::string> names_at(std::string_view path);

} // namespace kavo::host
