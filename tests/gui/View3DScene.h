// A 3D view with an image and work volumes that a test paints itself.
#pragma once

#include "VoxData/VoxData.h"
#include "tests/support/Interface.h"
#include "tests/view3d/PlainSurface.h"
#include "view3d/Window3D.h"

#include <FL/Fl_Check_Button.H>
#include <FL/Fl_Slider.H>
#include <FL/gl.h>

#include <array>
#include <cstdint>
#include <functional>
#include <vector>

class View3DScene : public Interface {
protected:
  using Voxels = std::function<int(int, int, int)>;  ///< colour value or label of a voxel

  Window3D& View() { return *Ui().window3D; }
  SurfaceSet& Surfaces() { return View().surfaces[0]; }

  /// Puts an image without a file into the next slot.
  VoxData& AddImage(const std::array<int, 3>& dims, const std::array<float, 3>& spacing = {1, 1, 1},
                    const Voxels& labels = nullptr) {
    auto* image = new VoxData;  // abandoned with its interface, as a replaced study is
    image->dimX = dims[0];
    image->dimY = dims[1];
    image->dimZ = dims[2];
    EXPECT_EQ(image->AllocateArrays(1), 1);
    image->SetSpacing(spacing[0], spacing[1], spacing[2]);
    for (int x = 0; labels && x < dims[0]; ++x) {
      for (int y = 0; y < dims[1]; ++y) {
        for (int z = 0; z < dims[2]; ++z) {
          image->seg[x][y][z] = static_cast<std::uint8_t>(labels(x, y, z));
        }
      }
    }
    Ui().images[Ui().imageCount++] = image;
    return *image;
  }

  /// Gives a work volume its size and its colours.
  static void Paint(VoxData& volume, const std::array<int, 3>& dims, const Voxels& colours) {
    volume.SetupWork(dims[0], dims[1], dims[2], 1, 0, 0, 0, 0, 0);
    volume.NewWorkScalars(volume.Labels().Count());
    for (int x = 0; x < dims[0]; ++x) {
      for (int y = 0; y < dims[1]; ++y) {
        for (int z = 0; z < dims[2]; ++z) {
          volume.SetWorkVoxel(x, y, z, static_cast<std::uint8_t>(colours(x, y, z)));
        }
      }
    }
    volume.AttachWorkScalars();
  }

  /// A ball of one colour.
  static Voxels Ball(double x, double y, double z, double radius, int colour) {
    return [=](int i, int j, int k) {
      const double square = (i - x) * (i - x) + (j - y) * (j - y) + (k - z) * (k - z);
      return square < radius * radius ? colour : 0;
    };
  }

  void Crosshairs(bool on) { Ui().displayCrosshairsCheck->value(on ? 1 : 0); }

  /// All pixels of the view, after the same scene was drawn strip by strip in immediate mode.
  std::vector<Pixel> PlainPixels() {
    Window3D& view = View();
    const Trackball& ball = view.trackball;
    const float* centre = view.rotationCentre;
    view.make_current();
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glTranslatef(ball.pan[0], ball.pan[1], 0.0F);
    glTranslatef(centre[0], centre[1], centre[2]);
    glMultMatrixf(ball.rotation);
    glTranslatef(-centre[0], -centre[1], -centre[2]);
    glScalef(view.voxelScale[0], view.voxelScale[1], view.voxelScale[2]);
    plain::DrawSurfaces(Surfaces(), 1.0F, static_cast<float>(Ui().surfaceOpacity[0] * 0.01),
                        static_cast<float>(Ui().surfaceOpacity[1] * 0.01));
    glPopMatrix();
    return ReadPixels();
  }

  std::vector<Pixel> ReadPixels() {
    const auto count = static_cast<std::size_t>(View().w()) * static_cast<std::size_t>(View().h());
    std::vector<std::uint8_t> bytes(3 * count);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, View().w(), View().h(), GL_RGB, GL_UNSIGNED_BYTE, bytes.data());
    std::vector<Pixel> pixels;
    for (std::size_t i = 0; i < count; ++i) {
      pixels.push_back({bytes[3 * i], bytes[3 * i + 1], bytes[3 * i + 2]});
    }
    return pixels;
  }

  /// How many pixels two pictures differ in.
  static int Differences(const std::vector<Pixel>& a, const std::vector<Pixel>& b) {
    int count = a.size() == b.size() ? 0 : 1;
    for (std::size_t i = 0; i < a.size() && i < b.size(); ++i) {
      const bool same = a[i].red == b[i].red && a[i].green == b[i].green && a[i].blue == b[i].blue;
      count += same ? 0 : 1;
    }
    return count;
  }

  /// Pixels that are not the black of the background.
  static int Painted(const std::vector<Pixel>& pixels) {
    int count = 0;
    for (const Pixel& p : pixels) { count += p.red + p.green + p.blue > 0 ? 1 : 0; }
    return count;
  }

  Pixel Middle() { return PixelOf(&View(), View().w() / 2, View().h() / 2); }
};
