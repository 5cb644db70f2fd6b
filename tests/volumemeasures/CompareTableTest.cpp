// CompareTable: headings and rows, byte for byte.
#include "view3d/volumemeasures/CompareTable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <numeric>

namespace {

CompareRecord Filled() {
  CompareRecord record;
  std::snprintf(record.name1, sizeof record.name1, "a.gipl");
  std::snprintf(record.name2, sizeof record.name2, "b c.raw");
  record.nbPixel1 = 1;
  record.nbPixel2 = 2;
  record.intersection = 3;
  record.unionCount = 4;
  record.average = 5.5F;
  record.overlayMajor = 0.25F;
  record.haussdorf1 = 1.5F;
  record.haussdorf2 = 2.5F;
  record.haussdorfDistance = 3.5F;
  record.distanceOutside = 10.0F;
  record.nbOutside = 11;
  record.averageOutside = 12.0F;
  record.distanceInside = 13.0F;
  record.nbInside = 14;
  record.averageInside = 15.0F;
  record.distance = 16.0F;
  record.nbBoundary = 17;
  record.averageAll = 18.0F;
  return record;
}

TEST(CompareTableTest, ARunOfTheHaussdorfAloneEndsInATab) {
  const measure::CompareColumns columns = {false, true, false};

  EXPECT_EQ(measure::CompareHeading(columns),
            "Image 1\tImage 2\tHaussdorf 1\tHaussdorf 2\tHaussdorf Distance\t\n");
  EXPECT_EQ(measure::CompareRow(Filled(), columns),
            "a.gipl\tb c.raw\t1.500000\t2.500000\t3.500000\t\n");
}

TEST(CompareTableTest, OnPurposeARunOfTheSurfaceDistanceAloneHasNoTabAtTheEnd) {
  const measure::CompareColumns columns = {false, false, true};

  EXPECT_EQ(measure::CompareHeading(columns),
            "Image 1\tImage 2\tDistance outside\tNb pixel Outside\tAverage outside\t"
            "Distance inside\tNb pixel inside\tAverage inside\tDistance\tNb boundary pixel\t"
            "Average\n");
  EXPECT_EQ(measure::CompareRow(Filled(), columns),
            "a.gipl\tb c.raw\t10.000000\t11\t12.000000\t13.000000\t14\t15.000000\t16.000000\t17\t"
            "18.000000\n");
}

TEST(CompareTableTest, ARunOfTheOverlayAlonePutsTheIntersectionBeforeTheUnion) {
  const measure::CompareColumns columns = {true, false, false};

  EXPECT_EQ(measure::CompareHeading(columns),
            "Image 1\tImage 2\tNumber of Pixel 1\tNumber of Pixel 2\tIntersection\tUnion\t"
            "Average\tOverlay Major\t\n");
  EXPECT_EQ(measure::CompareRow(Filled(), columns),
            "a.gipl\tb c.raw\t1\t2\t3\t4\t5.500000\t0.250000\t\n");
}

TEST(CompareTableTest, ARunWithoutMeasuresHasTheNamesAlone) {
  EXPECT_EQ(measure::CompareHeading({}), "Image 1\tImage 2\t\n");
  EXPECT_EQ(measure::CompareRow(Filled(), {}), "a.gipl\tb c.raw\t\n");
}

TEST(CompareTableTest, AnExportHasEveryColumn) {
  EXPECT_EQ(measure::ExportHeading(),
            "Image 1\tImage 2\tNumber of Pixel 1\tNumber of Pixel 2\tIntersection\tUnion\tAverage\t"
            "Overlay Major\tHaussdorf 1\tHaussdorf 2\tHaussdorf Distance\tDistance outside\t"
            "Nb pixel Outside\tAverage outside\tDistance inside\tNb pixel inside\tAverage inside\t"
            "Distance\tNb boundary pixel\tAverage\n");
  EXPECT_EQ(measure::ExportRow(Filled()),
            "a.gipl\tb c.raw\t1\t2\t3\t4\t5.500000\t0.250000\t1.500000\t2.500000\t3.500000\t"
            "10.000000\t11\t12.000000\t13.000000\t14\t15.000000\t16.000000\t17\t18.000000\n");
}

TEST(CompareTableTest, HeadingAndRowHaveTheSameNumberOfCells) {
  for (int boxes = 0; boxes < 8; ++boxes) {
    const measure::CompareColumns columns = {(boxes & 1) != 0, (boxes & 2) != 0, (boxes & 4) != 0};
    const std::string heading = measure::CompareHeading(columns);
    const std::string row = measure::CompareRow(Filled(), columns);
    EXPECT_EQ(std::count(heading.begin(), heading.end(), '\t'),
              std::count(row.begin(), row.end(), '\t'))
        << boxes;
  }
}

TEST(CompareTableTest, TheLongestNumbersAreWrittenWhole) {
  CompareRecord record = Filled();
  for (float* cell : {&record.distanceOutside, &record.averageOutside, &record.distanceInside,
                      &record.averageInside, &record.distance, &record.averageAll}) {
    *cell = -std::numeric_limits<float>::max();
  }

  const std::string row = measure::CompareRow(record, {false, false, true});

  const std::string longest = "-340282346638528859811704183484516925440.000000";
  EXPECT_EQ(row, "a.gipl\tb c.raw\t" + longest + "\t11\t" + longest + "\t" + longest + "\t14\t" +
                     longest + "\t" + longest + "\t17\t" + longest + "\n");
}

TEST(CompareTableTest, WhatIsNoNumberIsWrittenAsTheFormatterPrintsIt) {
  CompareRecord record = Filled();
  record.overlayMajor = std::numeric_limits<float>::infinity();
  record.average = std::nanf("");

  EXPECT_EQ(measure::CompareRow(record, {true, false, false}),
            "a.gipl\tb c.raw\t1\t2\t3\t4\tnan\tinf\t\n");
}

TEST(CompareTableTest, TheBinsHaveTheirOwnHeading) {
  EXPECT_EQ(measure::BinHeading(),
            "Image 1\tImage 2\t-6.0\t-5.5\t-5.0\t-4.5\t-4\t-3.5\t-3.0\t-2.5\t-2.0\t-1.5\t-1\t"
            "-0.5\t-0.0\t0.0\t0.5\t1\t1.5\t2\t2.5\t3.0\t3.5\t4.0\t4.5\t5.0\t5.5\t6.0\n");
}

TEST(CompareTableTest, OnPurposeTheColumnsOfTheBinsRepeatOneAndLeaveOneOut) {
  CompareRecord record = Filled();
  std::iota(std::begin(record.histogram), std::end(record.histogram), 100);

  EXPECT_EQ(measure::BinRow(record),
            "a.gipl\tb c.raw\t100\t101\t102\t103\t104\t105\t106\t107\t108\t109\t110\t124\t112\t"
            "125\t124\t123\t122\t121\t120\t119\t118\t117\t116\t115\t114\t113\n");
}

}  // namespace
