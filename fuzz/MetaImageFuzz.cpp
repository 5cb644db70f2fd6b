// MetaImage headers and elements: the input is the file. Data files stand beside it.
#include "VoxData/MetaImage.h"
#include "VoxData/MetaImageFiles.h"
#include "fuzz/FuzzInput.h"
#include "fuzz/ScratchFolder.h"

#include <cstdint>
#include <string>
#include <vector>

namespace {

/// Makes what a header may name: one data file, and slices numbered from 0 and from 1.
bool WriteDataFiles() {
  for (const char* name : {"body.raw", "a0.raw", "a1.raw", "b01.raw", "b02.raw"}) {
    fuzz::Scratch().Write(name, "0123456789abcdefghijklmn");
  }
  return true;
}

/// Every element can be touched.
void SumElements(const MetaImage& image) {
  const auto* bytes = static_cast<const std::uint8_t*>(image.data);
  unsigned sum = 0;
  const std::int64_t count = image.Elements() * image.elementBytes;
  for (std::int64_t i = 0; i < count; ++i) { sum += bytes[i]; }
  volatile unsigned kept = 0;
  kept = sum + kept;
}

/// The same bytes as values of other types, with lengths that another key gives or none.
void ParseAsOtherTypes(const std::string& path, std::size_t shift) {
  std::vector<FieldRecord> records = MetaImageRecords();
  for (FieldRecord& record : records) {
    record.type = static_cast<FieldType>((static_cast<std::size_t>(record.type) + shift) % 7);
  }
  const metaimage::File file = metaimage::OpenFile(path);
  FUZZ_HOLDS(file != nullptr);
  const bool rewind = shift % 2 == 1;
  ReadFields(file.get(), records, static_cast<int>(records.size()) - 1, rewind, '=');
  for (const FieldRecord& record : records) {
    FUZZ_HOLDS(record.numbers.size() <= 255 && record.text.size() <= 800);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const bool written = WriteDataFiles();
  static_cast<void>(written);
  fuzz::FuzzInput input(data, size);
  const std::string path = fuzz::Scratch().Write("volume.mha", input.Rest());

  MetaImage image;
  const bool headerRead = image.Read(path.c_str(), false);
  FUZZ_HOLDS(headerRead == (image.Error() == nullptr));
  FUZZ_HOLDS(image.nDims <= MetaImage::kMaxDims && image.headerSize >= 0);
  const bool read = image.Read(path.c_str(), true);
  FUZZ_HOLDS(!read || headerRead);
  if (read && image.Error() == nullptr) {
    SumElements(image);
    FUZZ_HOLDS(image.Elements() <= image.quantity);
    FUZZ_HOLDS(image.elementMsb == 0);
  }

  ParseAsOtherTypes(path, 1 + size % 6);

  const RawFields before;
  RawFields fields = before;
  const bool filled = FillFieldsFromMetaImage(path.c_str(), fields);
  FUZZ_HOLDS(filled == (image.Error() == nullptr));
  FUZZ_HOLDS(filled || fields.dims[0] == before.dims[0]);
  return 0;
}
