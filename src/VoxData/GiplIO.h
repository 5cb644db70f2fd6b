// Reads the header of a GIPL volume; its voxels are read as those of any raw file.
#pragma once

#include "VoxData/GiplHeader.h"
#include "VoxData/RawFields.h"

#include <string>

constexpr double kGiplHeaderBytes = 256.0;

/// A header with zeros, "Generated header" and the magic number. Ends the process without memory.
GiplHeader* ipNewGiplHeader();

/// Copies what the header of `path` gives into `fields`.
///
/// A path that ends in ".gz", ".zip" or ".Z" is read through the command that unpacks it.
/// Errors: words on the error stream; what was not read keeps its value, the header size is 256.
void ipReadGiplHeader(const char* path, RawFields& fields);

/// `text` as one word of a shell command, whatever characters it holds.
std::string QuotedForShell(const std::string& text);
