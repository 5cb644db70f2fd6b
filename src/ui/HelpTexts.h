// Help texts of the measure buttons, shown on a right click.
//
// The spelling is the product's own: do not correct it.
#pragma once

namespace help {

constexpr char kOverlay2D[] = "-Display the overlap in 2 Dimensions\n"
                              " Color image is the selected Image 1\n"
                              " White image is the selected Image 2\n"
                              " It displays the slice which value is selected in the three \n"
                              " top windows\n"
                              " You can choose the direction with the XY, YZ and XZ buttons. \n";

constexpr char kOverlayResult2D[] =
    "-Display the overlap of the 2 selected images\n"
    " as a gray level image.\n"
    " White corresponds to the high probability (1) and black\n"
    " to the low probability (0).\n"
    "-It computes the overlap for Image 1 and Image 2.\n"
    " It displays the slice which value is selected in the three \n"
    " top windows.\n"
    " You can choose the direction with the XY, YZ and XZ buttons.\n";

constexpr char kComplexity[] = "-Display the contour of the image selected with the slider.\n"
                               "-It computes the complexity of this 2D image.\n"
                               " The complexity is: Aera/sqr(Perimeter)\n"
                               " It displays the slice which value is selected in the three \n"
                               " top windows.\n"
                               " You can choose the direction with the XY, YZ and XZ buttons.\n";

constexpr char kAreaPerimeter[] = "-Compute the aera of the non-common region of Image 1\n"
                                  " and Image 2. Then, it computes the ratio between this aera \n"
                                  " and the interior contour\n"
                                  "-Display the interior contour of the Image 1 computing with \n"
                                  " the Freeman code.\n";

constexpr char kDanielsson2D[] = "-Display the 2D distance map of the image selected \n"
                                 " with the slider as a gray level image.\n"
                                 " It displays the slice which value is selected in the three \n"
                                 " top windows.\n"
                                 " You can choose the direction with the XY, YZ and XZ buttons. \n";

constexpr char kHaussdorf2D[] = "-Compute the Haussdorf distance A->B and B->A and\n"
                                " the Max(A->B,B->A).\n"
                                "-Display the Haussdorf distance point of the Image 1.\n"
                                " This is the maximum distance point from the Image 2 to\n"
                                " the Image 1.\n"
                                " The white point represents this distance.\n"
                                " It displays the slice which value is selected in the three \n"
                                " top windows.\n"
                                " You can choose the direction with the XY, YZ and XZ buttons. \n";

constexpr char kOverlayIntra[] = "-Compute the probability INTRA user\n"
                                 " The number of user and the number of slice by user arf\n"
                                 " selected during the creation of the script file.\n"
                                 "-Display the probability map INTRA user as gray level image\n"
                                 " White represents high probability (1)\n"
                                 " Black represents low probability (0)\n"
                                 " You can switch between users with the slider below.\n";

constexpr char kOverlayInter[] = "-Compute the probability INTER user\n"
                                 " The number of user and the number of slice by user arf\n"
                                 " selected during the creation of the script file.\n"
                                 "-Display the probability map INTER user as gray level image\n"
                                 " White represents high probability (1)\n"
                                 " Black represents low probability (0)\n";

constexpr char kDanielsson3D[] = "Display the 3D danielson (for the selected distance)\n"
                                 "of the Image 1 surface.\n"
                                 "You can select the distance with the slider below.\n";

constexpr char kOverlay3D[] = "Diplay the 3D overlay between Image 1 and Image 2.\n"
                              "-red represents this the 3D surface of the Image 1.\n"
                              "-green represents this the 3D surface of the Image 2.\n";

constexpr char kOverlayResult3D[] = "Display the 3D overlay between Image 1 and Image 2.\n"
                                    "-red represents this the 3D surface of the Image 1.\n"
                                    "-green represents this the 3D surface of the Image 2.\n"
                                    "-blue represents the common region.\n";

constexpr char kHaussdorf3D[] = "-Compute the 3D Haussdorf distance (A->B and B->A) and\n"
                                " compute the max(A->B,B-A).\n"
                                "-Display the Image 1 surface with the distance from the\n"
                                " Image 2.\n"
                                "Blue means Image 1 and Image 2 are very close.\n"
                                "Red means Image 1 is very far from Image 2\n";

constexpr char kSurfaceDistance[] = "-Compute the distance between the 2 surfaces\n"
                                    "-Display the surface of the Image 2\n"
                                    "Blue means Image1 is outside of the Image 2\n"
                                    "Red means  Image1 is inside of the Image 2 \n";

constexpr char kUpdateColor[] = "Update the color display for the Surface distance display\n"
                                "You can select the maximum inside and the maximum outside\n"
                                "with the input boxes. \n";

constexpr char kProbability[] = "-Compute the probability overlap for the 2 first users\n"
                                "-Diplay the Image 1.\n"
                                "Each color represents a probability.\n"
                                "Red represents the highest probability.\n"
                                "Blue represents the lowest probability.\n";

constexpr char kCreateAverage[] =
    "Create the average between all the segmentations of each user.\n"
    "You have to select the label you want to average.\n"
    "One image for each user is creating and you can see them in the\n"
    "three top windows.\n";

constexpr char kConfusionMatrix[] = "Compute the Confusion matrix for Image 1 and Image 2\n"
                                    "You must save this table into a file.\n"
                                    "You can easly read this file whit MS-Excel\n"
                                    "1. Open MS-Excel\n"
                                    "2. Choose File -> Open...\n"
                                    "3. In \"File of Type\" select \"All file\"\n"
                                    "4. Open the confusion matrix file\n"
                                    "5. On the \"Test import Wizard\" click on Finish\n"
                                    "That's it !\n";

constexpr char kCompareData[] = "Automatic 3D comparison\n"
                                "This is just an automatic procedure to compute:\n"
                                "-Overlap ratio\n"
                                "-Surface distance\n"
                                "-Haussdorf distance\n"
                                "-Histogram distance\n"
                                "for each pairwise combinaison.\n";

constexpr char kVisualisation[] =
    "Display the number of pixel of each slice for all the direction\n"
    "X, Y and Z.\n"
    "You can see the differences along the slices for 2 images.\n";

}  // namespace help
