#include "view3d/volumemeasures/PairMeasures.h"

#include "view3d/volumemeasures/SurfaceVoxels.h"
#include "view3d/volumemeasures/VolumeHaussdorf.h"

namespace measure {

namespace {

/// Moves the bar like another progress, and prints nothing.
class Unprinted : public Progress {
public:
  explicit Unprinted(Progress& other) : shown(other) {}
  void Step() override { shown.Step(); }
  void ShowMessage(const char* text) override { shown.ShowMessage(text); }

private:
  Progress& shown;
};

/// What a transform says.
void SayTransform(Progress& progress) {
  progress.Print("starting forward scan");
  progress.ShowMessage("Starting forward scan");
  progress.Print("starting backward scan");
}

}  // namespace

PairMeasures::PairMeasures(PairStudy& owner, std::vector<SlotPair> list, ShellRule rule)
    : study(owner), pairs(std::move(list)), shellRule(rule) {}

void PairMeasures::BeginPair(int number) { row = static_cast<std::size_t>(number); }

void PairMeasures::EndPair() {
  const auto [first, second] = pairs[row];
  const SlotPair turned = {second, first};
  for (std::size_t later = row + 1; later < pairs.size(); ++later) {
    if (pairs[later] == pairs[row] || pairs[later] == turned) { return; }
  }
  for (const SlotPair& done : {pairs[row], turned}) {
    farthest.erase(done);
    surfaces.erase(done);
  }
}

void PairMeasures::UseLabel() {
  if (label == study.Label()) { return; }
  label = study.Label();
  farthest.clear();
  surfaces.clear();
}

void PairMeasures::Transform(const Source& source, Progress& progress) {
  if (source.shell) {
    const EditVolume image = study.Image(source.slot);
    Progress silent;  // the transform alone moves the bar
    SaveLabels(image.Labels(), study.Saved(), silent);
    savedSlot = source.slot;
    study.BeginAltering(source.slot);
    ReduceToShell(study.Saved(), source.label, shellRule, image, silent);
    study.Transform(source.slot, source.label, progress);
    RestoreLabels(study.Saved(), image, silent);
    study.EndAltering();
  } else {
    study.Transform(source.slot, source.label, progress);
  }
  standing = source;
}

void PairMeasures::Need(const Source& source, bool known) {
  if (known) {
    SayTransform(study.Report());
  } else {
    Transform(source, study.Report());
  }
  last = source;
  if (source.shell) { lastSaved = source.slot; }
}

/// Calls read(to) for each image `to` that this pair or a later one measures from `from`.
template <class Read>
void PairMeasures::ReadForLaterPairs(int from, Origin origin, Read read) {
  for (std::size_t later = row; later < pairs.size(); ++later) {
    const auto [first, second] = pairs[later];
    if (first == from) { read(second); }
    if (second == from && origin == Origin::EitherImage) { read(first); }
  }
}

float PairMeasures::Farthest(int from, int to) {
  UseLabel();
  const bool known = farthest.count({from, to}) != 0;
  Need({from, false, label}, known);
  if (!known) {
    ReadForLaterPairs(from, Origin::EitherImage, [&](int other) {
      if (farthest.count({from, other}) != 0) { return; }
      Progress silent;
      const LabelVolume image = study.Image(other).Labels();
      farthest[{from, other}] =
          LargestDistance(image, label, study.Field(), 0, image.dimX - 1, silent);
    });
  }
  return farthest[{from, to}];
}

SurfaceReading PairMeasures::ReadSurface(int from, int to, bool withCounts) {
  SurfaceReading reading;
  FloatList list;
  reading.sums = AppendSignedDistances(study.Image(from).Labels(), study.Image(to).Labels(), label,
                                       study.Field(), withCounts ? &list : nullptr);
  if (withCounts) { reading.counts = CountDistances(list); }
  return reading;
}

SurfaceReading PairMeasures::AlongSurface(int from, int to, Origin origin, bool withCounts) {
  UseLabel();
  const auto isKnown = [&](int other) {
    const auto found = surfaces.find({from, other});
    return found != surfaces.end() && (!withCounts || found->second.counts);
  };
  const bool known = isKnown(to);
  Need({from, true, label}, known);
  if (!known) {
    ReadForLaterPairs(from, origin, [&](int other) {
      if (!isKnown(other)) { surfaces[{from, other}] = ReadSurface(from, other, withCounts); }
    });
  }
  return surfaces[{from, to}];
}

DistanceCounts PairMeasures::BothWays(const SlotPair& pair, const DistanceCounts& there,
                                      const DistanceCounts& back) {
  if (auto both = Merged(there, back)) { return *std::move(both); }
  Unprinted unprinted(study.Report());
  FloatList list;
  for (const auto& [from, to] : {pair, SlotPair{pair.second, pair.first}}) {
    Transform({from, true, label}, unprinted);
    AppendSignedDistances(study.Image(from).Labels(), study.Image(to).Labels(), label,
                          study.Field(), &list);
  }
  return CountDistances(list);
}

void PairMeasures::LeaveArrays() {
  if (!(last == standing)) {
    Unprinted unprinted(study.Report());
    Transform(last, unprinted);
  }
  if (lastSaved != savedSlot) {
    Progress silent;
    SaveLabels(study.Image(lastSaved).Labels(), study.Saved(), silent);
  }
}

SurfaceDistance AppendSignedDistances(const LabelVolume& source, const LabelVolume& target,
                                      int label, const DistanceField& field, FloatList* list) {
  SurfaceDistance distance;
  ForEachSurfaceVoxel(target, label, [&](int x, int y, int z) {
    const float d = field.Length(x, y, z);
    const bool inside = source.Bears(label, x, y, z);
    (inside ? distance.inside : distance.outside).Add(d);
    if (list != nullptr) { list->Append(inside ? -d : d); }
  });
  return distance;
}

}  // namespace measure
