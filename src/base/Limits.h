// The fixed limits of the system. What exceeds one is refused before anything is touched.
#pragma once

constexpr int kMaxImages = 60;              ///< image slots of a study
constexpr int kMaxLabels = 256;             ///< label ids, 0 to 255
constexpr int kMaxQueuedPairs = 500;        ///< entries of comparePairs
constexpr int kMaxComparedPairs = 200;      ///< rows of the comparison table
constexpr int kMaxSliceSide = 300;          ///< pixels a side of a result slice
constexpr int kMaxMeasuredSide = 280;       ///< voxels an axis of a volume that is measured
constexpr int kMaxSliceUsers = 5;           ///< users of a slice probability
constexpr int kMaxVolumeUsers = 15;         ///< users of a volume probability
constexpr int kMaxHistogramValues = 20000;  ///< distinct distances of a surface histogram
constexpr int kMaxPlotSlices = 300;         ///< slices of one plot
constexpr int kMaxPathText = 300;           ///< bytes of a path or a list line, end mark included
constexpr int kMaxEntryLabel = 100;         ///< characters of a chooser entry
constexpr int kMaxListText = 10000;         ///< bytes of the Create List text, end mark included
