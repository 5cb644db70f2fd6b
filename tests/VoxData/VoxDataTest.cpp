// The volume store: arrays, voxels, planes, labels, copies.
#include "VoxData/VoxData.h"

#include <gtest/gtest.h>
#include <vtkFloatArray.h>
#include <vtkPointData.h>
#include <vtkStructuredPoints.h>

#include <cmath>
#include <cstring>
#include <random>

namespace {

TEST(VoxDataTest, ANewStoreHasTheSevenLabelsAndNoArrays) {
  const VoxData volume;

  EXPECT_EQ(volume.GetLabelCount(), 7);
  EXPECT_EQ(volume.seg, nullptr);
  EXPECT_EQ(volume.grey, nullptr);
  EXPECT_EQ(volume.GetDimX(), 0);
}

TEST(VoxDataTest, AnIdOutsideTheTableIsBlackAndUnknown) {
  const VoxData volume;
  std::uint8_t rgb[3] = {9, 9, 9};
  char name[201] = "kept";

  for (const int id : {256, -1}) {
    EXPECT_EQ(volume.GetLabelColour(id), (std::array<float, 3>{0.0F, 0.0F, 0.0F}));
    EXPECT_EQ(volume.GetLabel(id, rgb, name), -1);
  }
  EXPECT_STREQ(name, "kept");
}

TEST(VoxDataTest, IdsAboveSixAreDefinedByTheVoxelsAlone) {
  const VoxData volume;
  std::uint8_t rgb[3];
  char name[201];

  EXPECT_EQ(volume.GetLabel(6, rgb, name), 1);
  EXPECT_STREQ(name, "Label 6");
  EXPECT_EQ(volume.GetLabel(7, rgb, name), -1);
}

TEST(VoxDataTest, RampColoursMeetAtTheSeams) {
  const VoxData volume;
  const int seams[6][4] = {{7, 231, 66, 0},   {84, 50, 247, 0},  {85, 0, 247, 50},
                           {169, 0, 50, 247}, {170, 50, 0, 250}, {255, 250, 0, 50}};

  for (const auto& seam : seams) {
    for (int channel = 0; channel < 3; ++channel) {
      EXPECT_EQ(volume.labels[seam[0]].rgb[channel], seam[channel + 1]) << seam[0];
    }
  }
}

TEST(VoxDataTest, FreeingAnotherModeDoesNothing) {
  VoxData volume;

  EXPECT_EQ(volume.FreeArrays(2), -1);
  EXPECT_EQ(volume.AllocateArrays(3), -1);
}

TEST(VoxDataTest, FreeingTwiceIsHarmless) {
  VoxData volume;
  volume.SetupSlot("", 3, 4, 5, 1, 0, 0, 0, 1, 1);

  EXPECT_EQ(volume.FreeArrays(1), 1);
  EXPECT_EQ(volume.FreeArrays(1), 1);
  EXPECT_EQ(volume.FreeArrays(0), 1);
}

TEST(VoxDataTest, ASlotHasZeroLabelsAndAZeroTwin) {
  VoxData volume;
  ASSERT_EQ(volume.SetupSlot("", 3, 4, 5, 1, 0, 0, 0, 1, 1), 1);

  EXPECT_EQ(volume.seg[2][3][4], 0);
  int dims[3];
  volume.GetImage()->GetDimensions(dims);
  EXPECT_EQ(dims[0], 3);
  EXPECT_EQ(dims[2], 5);
  auto* scalars = vtkFloatArray::SafeDownCast(volume.GetImage()->GetPointData()->GetScalars());
  ASSERT_EQ(scalars->GetNumberOfTuples(), 60);
  EXPECT_EQ(scalars->GetValue(59), 0.0F);
}

TEST(VoxDataTest, OnPurposeAFurtherSlotHasAScaleOfItsOwn) {
  VoxData volume;
  volume.SetupSlot("", 3, 4, 5, 1, 0, 0, 0, 1, 1);

  EXPECT_EQ(volume.GetScale(), -0.65535);
}

TEST(VoxDataTest, VoxelsOutsideAreRefused) {
  VoxData volume;
  volume.SetupSlot("", 3, 4, 5, 1, 0, 0, 0, 1, 1);
  std::uint8_t label = 9;

  for (const auto& at : {std::array<int, 3>{-1, 0, 0}, {3, 0, 0}, {0, 4, 0}, {0, 0, 5}}) {
    EXPECT_EQ(volume.GetSegVoxel(at[0], at[1], at[2], label), -1);
  }
  EXPECT_EQ(label, 9);
  EXPECT_EQ(volume.GetSegVoxel(2, 3, 4, label), 1);
  EXPECT_EQ(label, 0);
}

TEST(VoxDataTest, PlanesAreWrittenInTheOrderOfTheirAxis) {
  VoxData volume;
  volume.SetupSlot("", 2, 3, 4, 1, 0, 0, 0, 1, 1);
  for (int x = 0; x < 2; ++x) {
    for (int y = 0; y < 3; ++y) {
      for (int z = 0; z < 4; ++z) {
        volume.seg[x][y][z] = static_cast<std::uint8_t>(100 * x + 10 * y + z);
      }
    }
  }
  std::uint8_t plane[12] = {};

  EXPECT_EQ(volume.GetSegSlice(0, 1, plane), 1);
  EXPECT_EQ(plane[0], 100);
  EXPECT_EQ(plane[1], 101);  // z inner
  EXPECT_EQ(plane[4], 110);  // y outer
  EXPECT_EQ(volume.GetSegSlice(1, 2, plane), 1);
  EXPECT_EQ(plane[1], 21);
  EXPECT_EQ(plane[4], 120);
  EXPECT_EQ(volume.GetSegSlice(2, 3, plane), 1);
  EXPECT_EQ(plane[1], 103);  // x inner
  EXPECT_EQ(plane[2], 13);   // y outer
  EXPECT_EQ(volume.GetSegSlice(3, 0, plane), -1);
  EXPECT_EQ(volume.GetSegSlice(0, 2, plane), -1);
}

TEST(VoxDataTest, GreyVoxelsAnswerLikeLabels) {
  VoxData volume;
  volume.SetupSlot("", 2, 3, 4, 1, 0, 0, 0, 1, 1);
  std::uint16_t value = 9;
  EXPECT_EQ(volume.GetGreyVoxel(0, 0, 0, value), -1);  // there is no grey array yet
  ASSERT_EQ(volume.AllocateArrays(0), 1);
  for (int x = 0; x < 2; ++x) {
    for (int y = 0; y < 3; ++y) {
      for (int z = 0; z < 4; ++z) {
        volume.grey[x][y][z] = static_cast<std::uint16_t>(1000 * x + 10 * y + z);
      }
    }
  }
  std::uint16_t plane[12] = {};

  EXPECT_EQ(volume.GetGreyVoxel(2, 0, 0, value), -1);
  EXPECT_EQ(volume.GetGreyVoxel(0, -1, 0, value), -1);
  EXPECT_EQ(value, 9);
  EXPECT_EQ(volume.GetGreyVoxel(1, 2, 3, value), 1);
  EXPECT_EQ(value, 1023);
  EXPECT_EQ(volume.GetGreySlice(2, 3, plane), 1);
  EXPECT_EQ(plane[1], 1003);  // x inner
  EXPECT_EQ(plane[2], 13);    // y outer
  EXPECT_EQ(volume.GetGreySlice(1, 2, plane), 1);
  EXPECT_EQ(plane[4], 1020);  // x outer, z inner
  EXPECT_EQ(volume.GetGreySlice(3, 0, plane), -1);
}

TEST(VoxDataTest, WorkVoxelsFeedTheScalars) {
  VoxData volume;
  volume.SetupWork(3, 4, 5, 1, 0, 0, 0, 0, 0);
  volume.NewWorkScalars(60);

  volume.SetWorkVoxel(1, 2, 3, 64);

  EXPECT_EQ(volume.work[1][2][3], 64);
  EXPECT_EQ(volume.workScalars->GetValue((4 * 3 + 2) * 3 + 1), 255.0F);
  volume.AttachWorkScalars();
  EXPECT_EQ(volume.workScalars, nullptr);
  EXPECT_NE(volume.GetImage()->GetPointData()->GetScalars(), nullptr);
}

TEST(VoxDataTest, AWorkVolumeHasTheSizeInYOnItsUnflippedAxis) {
  VoxData volume;
  volume.SetupWork(3, 4, 5, 1, 0, 0, 0, 0, 0);

  EXPECT_EQ(volume.loopEnd[1], 4);
}

TEST(VoxDataTest, OnPurposeAFileEndsItsUnflippedYAxisAtTheSizeInX) {
  VoxData volume;
  volume.SetupSlot("", 3, 4, 5, 1, 0, 0, 0, 0, 0);

  EXPECT_EQ(volume.loopEnd[1], 3);
  EXPECT_EQ(volume.loopStep[1], 1);
}

TEST(VoxDataTest, ACopyBorrowsTheGreyVoxelsAndOwnsItsLabels) {
  VoxData source;
  source.SetupSlot("", 3, 4, 5, 1, 0, 0, 0, 1, 1);
  source.seg[1][1][1] = 7;
  source.SetSpacing(0.5F, 1.0F, 2.0F);
  testing::internal::CaptureStdout();
  VoxData copy(source);

  EXPECT_EQ(testing::internal::GetCapturedStdout(), "copy....\n");
  EXPECT_EQ(copy.seg[1][1][1], 7);
  copy.seg[1][1][1] = 0;
  EXPECT_EQ(source.seg[1][1][1], 7);
  EXPECT_EQ(copy.grey, source.grey);
  EXPECT_EQ(copy.spacing[2], 2.0F);
  EXPECT_EQ(copy.GetImage()->GetPointData()->GetScalars(), nullptr);
}

TEST(VoxDataTest, ACopyTakesOverAllThatDescribesTheVolume) {
  VoxData source;
  source.SetupSlot("", 3, 4, 5, 1, 0, 0, 1, 0, 1);
  std::strcpy(source.fileName1, "grey.gipl");
  std::strcpy(source.fileName2, "seg.gipl");
  source.labels[9].defined = 1;
  source.labels[9].rgb[1] = 77;
  source.labelCount = 8;
  testing::internal::CaptureStdout();
  const VoxData copy(source);
  testing::internal::GetCapturedStdout();

  EXPECT_STREQ(copy.fileName1, "grey.gipl");
  EXPECT_STREQ(copy.fileName2, "seg.gipl");
  for (int axis = 0; axis < 3; ++axis) {
    EXPECT_EQ(copy.loopStart[axis], source.loopStart[axis]);
    EXPECT_EQ(copy.loopEnd[axis], source.loopEnd[axis]);
    EXPECT_EQ(copy.loopStep[axis], source.loopStep[axis]);
  }
  EXPECT_EQ(copy.loopStart[0], 2);
  EXPECT_EQ(copy.GetScale(), -0.65535);
  EXPECT_EQ(copy.GetLabelCount(), 8);
  std::uint8_t rgb[3];
  char name[201];
  EXPECT_EQ(copy.GetLabel(9, rgb, name), 1);
  EXPECT_EQ(rgb[1], 77);
  int dims[3];
  copy.GetImage()->GetDimensions(dims);
  EXPECT_EQ(dims[1], 4);
}

TEST(VoxDataTest, ACopyOfAnEmptyVolumeIsEmpty) {
  const VoxData source;
  testing::internal::CaptureStdout();
  const VoxData copy(source);

  EXPECT_EQ(testing::internal::GetCapturedStdout(), "copy....\n");
  EXPECT_EQ(copy.seg, nullptr);
  EXPECT_EQ(copy.GetImage(), nullptr);
  EXPECT_NE(copy.fileName1, source.fileName1);
}

TEST(VoxDataTest, SizesThatMakeNoVolumeAreRefused) {
  for (const auto& dims : {std::array<int, 3>{0, 1, 1}, {1, -1, 1}, {2000000000, 2000000000, 9}}) {
    VoxData volume;
    testing::internal::CaptureStderr();
    EXPECT_EQ(volume.SetupSlot("", dims[0], dims[1], dims[2], 1, 0, 0, 0, 1, 1), -1);
    EXPECT_FALSE(testing::internal::GetCapturedStderr().empty());
  }
}

// Rays.

TEST(CastRayTest, ADirectionOfNoLengthIsInvalid) {
  VoxData volume;
  volume.SetupSlot("", 3, 3, 3, 1, 0, 0, 0, 1, 1);
  int voxel[3];

  EXPECT_EQ(volume.CastRay(1, 1, 1, 0, 0, 0, voxel), -1);
}

TEST(CastRayTest, ARayThatStartsTooFarAwayIsInvalid) {
  VoxData volume;
  volume.SetupSlot("", 3, 3, 3, 1, 0, 0, 0, 1, 1);
  volume.seg[1][1][1] = 1;
  int voxel[3];

  EXPECT_EQ(volume.CastRay(-10100, 1, 1, 1, 0, 0, voxel), -1);
  EXPECT_EQ(volume.CastRay(-9000, 1, 1, 1, 0, 0, voxel), 1);
  EXPECT_EQ(volume.CastRay(-9000, 100, 1, 1, 0, 0, voxel), -1);  // misses the volume
}

TEST(CastRayTest, NoRayOfAnyKindHangs) {
  VoxData volume;
  volume.SetupSlot("", 4, 4, 4, 1, 0, 0, 0, 1, 1);
  const double hostile[] = {0.0, 1e-320, 1e308, -1e308, 1.0, -1.0, std::nan(""), INFINITY};
  int voxel[3];

  for (const double a : hostile) {
    for (const double b : hostile) {
      for (const double c : hostile) { EXPECT_NE(volume.CastRay(a, b, c, c, a, b, voxel), 1); }
    }
  }
}

TEST(CastRayTest, TheFirstVoxelIsOneThatTheRayTouches) {
  std::mt19937 random(5);
  VoxData volume;
  volume.SetupSlot("", 9, 8, 7, 1, 0, 0, 0, 1, 1);
  for (int i = 0; i < 40; ++i) { volume.seg[random() % 9][random() % 8][random() % 7] = 1; }
  std::uniform_real_distribution<double> place(-20.0, 28.0);
  for (int i = 0; i < 500; ++i) {
    const double o[3] = {place(random), place(random), place(random)};
    const double d[3] = {4.0 - o[0], 3.0 - o[1] + place(random) / 20, 3.0 - o[2]};
    int voxel[3];
    if (volume.CastRay(o[0], o[1], o[2], d[0], d[1], d[2], voxel) != 1) { continue; }
    // Dense samples along the ray come within half a step of the voxel that was hit.
    const double length = std::sqrt(d[0] * d[0] + d[1] * d[1] + d[2] * d[2]);
    double nearest = 1e9;
    for (int k = 0; k < 60000; ++k) {
      double away = 0.0;
      for (int axis = 0; axis < 3; ++axis) {
        const double at = o[axis] + d[axis] / length * k * 0.001;
        away = std::max(away, std::fabs(at - voxel[axis]));
      }
      nearest = std::min(nearest, away);
    }
    EXPECT_LT(nearest, 0.5 + 0.002) << i;
  }
}

}  // namespace
