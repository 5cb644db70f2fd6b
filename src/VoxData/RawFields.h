// The numbers of a raw volume, as the Load Grey Data dialog holds them.
#pragma once

/// What a header reader fills in. A reader goes in with what the dialog holds and comes out with
/// as much as the header gave; the rest stays.
struct RawFields {
  double headerSize = 0.0;
  double dims[3] = {0.0, 0.0, 0.0};
  double bytes = 0.0;
  double spacing[3] = {1.0, 1.0, 1.0};
};
