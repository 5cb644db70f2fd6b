// Text files that grow row by row: what is written is written whole or not at all.
#pragma once

#include <string>

namespace tables {

/// ".xls" behind a name that does not hold it anywhere, its folders included.
std::string WithExtension(const std::string& name);

/// Appends `text`. Returns false, with the file as it was, where it cannot be written whole.
bool Append(const std::string& name, const std::string& text);

/// Replaces the contents by `text`; false, with the old contents kept, where it cannot be written.
/// A link goes on pointing to the file, which keeps its rights.
bool Replace(const std::string& name, const std::string& text);

}  // namespace tables
