// What a file has besides its text: owner, group, mode, access control list, extended attributes; on Windows its
// attributes, access control list and other streams.
#pragma once

#include <string>

#include "platform.h"

namespace jkc::cli {

// Gives an open new file, which only its owner may use yet, the attributes of an old one. Owner and group are kept where
// the system allows it; where it does not, nobody gets more rights than before. Throws FileError about `name` when an
// access control list or an extended attribute cannot be kept.
void take_over_attributes(int descriptor, const std::string &old_path, const FileStatus &old, const std::string &name);

// Throws FileError about `name` when it is plain beforehand that another file cannot take the place of this one.
void check_replaceable(const std::string &path, const FileStatus &file, const std::string &name);

} // namespace jkc::cli
