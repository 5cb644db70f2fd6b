// What a run over image pairs takes from distance transforms, without running one twice.
#pragma once

#include "base/DistanceField.h"
#include "base/LabelVolume.h"
#include "base/Progress.h"
#include "view3d/volumemeasures/Shell.h"
#include "view3d/volumemeasures/SurfaceDistance.h"
#include "view3d/volumemeasures/SurfaceHistogram.h"

#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace measure {

/// First and second image of a pair, by their slots.
using SlotPair = std::pair<int, int>;

/// The study of a run: its images, work arrays and label, as the window or a program without one
/// holds them. All images have one size.
class PairStudy {
public:
  PairStudy() = default;
  PairStudy(const PairStudy&) = delete;
  PairStudy& operator=(const PairStudy&) = delete;
  virtual ~PairStudy() = default;

  /// Read anew for each measure: the user may choose another label meanwhile.
  virtual int Label() const = 0;
  virtual EditVolume Image(int slot) = 0;
  virtual DistanceField Field() const = 0;
  virtual SavedLabels Saved() = 0;
  virtual Progress& Report() = 0;
  /// Runs the transform on an image as it stands; events may be handled meanwhile.
  virtual void Transform(int slot, int label, Progress& progress) = 0;
  /// The labels of an image, which are saved, change for a while; and are whole again.
  virtual void BeginAltering(int /*slot*/) {}
  virtual void EndAltering() {}
};

/// Distances along the surface of one image from the surface of another; the signed distances of
/// all surface voxels where they were asked for.
struct SurfaceReading {
  SurfaceDistance sums;
  std::optional<DistanceCounts> counts;
};

/// In which pairs an image is the one that distances are measured from.
enum class Origin { FirstImage, EitherImage };

/// Measures the pairs of a list, one after another.
///
/// When the transform of an image stands, all that later pairs need of it is read out at once, so
/// that no image is transformed again; console lines and messages come as if each were.
/// Shape: a few numbers are kept for a pair that is still to come.
class PairMeasures {
public:
  /// `rule` makes the shells that surface distances are measured from.
  PairMeasures(PairStudy& owner, std::vector<SlotPair> list, ShellRule rule);

  void BeginPair(int number);
  void EndPair();

  /// Largest distance from the region of `from` at a voxel of `to`.
  float Farthest(int from, int to);
  /// Distances from the shell of `from` along the surface of `to`, with their counts or without.
  SurfaceReading AlongSurface(int from, int to, Origin origin, bool withCounts);
  /// The counts of both directions of a pair in one, `there` before `back`.
  DistanceCounts BothWays(const SlotPair& pair, const DistanceCounts& there,
                          const DistanceCounts& back);
  /// Leaves the work arrays as if every transform had been run.
  void LeaveArrays();

private:
  /// One transform: of a region or of its shell.
  struct Source {
    int slot = -1;
    bool shell = false;
    int label = 0;
    bool operator==(const Source& other) const {
      return slot == other.slot && shell == other.shell && label == other.label;
    }
  };

  void UseLabel();
  void Need(const Source& source, bool known);
  void Transform(const Source& source, Progress& progress);
  template <class Read>
  void ReadForLaterPairs(int from, Origin origin, Read read);
  SurfaceReading ReadSurface(int from, int to, bool withCounts);

  PairStudy& study;
  std::vector<SlotPair> pairs;
  ShellRule shellRule;
  std::size_t row = 0;
  int label = 0;
  std::map<SlotPair, float> farthest;
  std::map<SlotPair, SurfaceReading> surfaces;
  Source standing;  ///< what the work arrays hold
  Source last;      ///< what they would hold, had every transform been run
  int savedSlot = -1;
  int lastSaved = -1;
};

/// Appends the signed distance of each surface voxel of `target` to the surface that the field was
/// made from: negative where the voxel lies in `source`. Returns sums and counts by side.
///
/// Shape: the outermost layer of target is left out; a neighbour of value 0 makes a surface voxel.
///        `list` may be null.
SurfaceDistance AppendSignedDistances(const LabelVolume& source, const LabelVolume& target,
                                      int label, const DistanceField& field, FloatList* list);

}  // namespace measure
