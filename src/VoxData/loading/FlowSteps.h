// Small questions about paths that all load flows ask.
#pragma once

/// The part of a path behind its last "/".
const char* LastComponent(const char* path);

/// Whether a path names a segmentation: it holds ".gipl" or ".raw" anywhere.
bool HoldsImageName(const char* path);
