#!/usr/bin/env python3
"""Writes the seeds of the fuzz targets into tests/corpus: real files and hostile ones.

Inputs that fuzzing found stand beside them under names of their own and are left alone.
"""
import pathlib
import struct

CORPUS = pathlib.Path(__file__).resolve().parent.parent / "tests" / "corpus"


def write(target, seeds):
    folder = CORPUS / target
    folder.mkdir(parents=True, exist_ok=True)
    for name, content in seeds.items():
        (folder / name).write_bytes(content)


def gipl(sizes=(4, 3, 2, 1), kind=8, spacing=(0.5, 0.25, 2.0, 0.0), voxels=24):
    head = struct.pack(">5H4f", *sizes, kind, *spacing)
    return head + bytes(226) + struct.pack(">I", 0xEFFFE9B0) + bytes(range(voxels))


def gipl_seeds():
    seeds = {
        "real_8_bit.gipl": gipl(),
        "real_16_bit.gipl": gipl(kind=15, voxels=48),
        "empty.gipl": b"",
        "one_byte.gipl": b"\0",
        "one_slice.gipl": gipl((256, 256, 1, 1), voxels=0),
        "time_2.gipl": gipl((4, 3, 2, 2), voxels=48),
        "time_3.gipl": gipl((4, 3, 2, 3)),
        "largest_sizes.gipl": gipl((65535, 65535, 65535, 1)),
        "width_0.gipl": gipl((0, 3, 2, 1)),
        "unknown_type.gipl": gipl(kind=144),
        "not_a_number_spacing.gipl": gipl(spacing=(float("nan"), float("inf"), -1.0, 0.0)),
        "little_endian.gipl": struct.pack("<5H4f", 4, 3, 2, 1, 8, 1, 1, 1, 0),
        "shell_characters": b"it's $(touch x);`y` | z \\' \"w\".gipl.gz",
        "quotes_only": b"''''''",
    }
    for cut in (3, 6, 8, 9, 10, 17, 25):
        seeds[f"cut_at_{cut}.gipl"] = gipl()[:cut]
    for kind in (1, 7, 16, 31, 32, 64, 65):
        seeds[f"type_{kind}.gipl"] = gipl(kind=kind)
    return seeds


def mha(elements=b"abcdefghijklmnopqrstuvwx", **changes):
    lines = {"NDims": "3", "DimSize": "4 3 2", "ElementSize": "0.5 0.25 2",
             "ElementType": "MET_UCHAR", "ElementByteOrderMSB": "False"}
    last = changes.pop("ElementDataFile", "LOCAL")
    for key, value in changes.items():
        lines[key] = value
    lines["ElementDataFile"] = last
    text = "".join(f"{key} = {value}\n" for key, value in lines.items() if value is not None)
    return text.encode("latin-1") + elements


def mha_seeds():
    every = mha(Comment="a volume", HeaderSize="3", AcquisitionDate="2001.02.03",
                Modality="MET_MOD_MRI", Min="-1", Max="2e3", ImagePosition="1 2 3",
                ImageOrientation="1 0 0 0 1 0", PatientPosition="0 0 0", SequenceID="1 2 3 4",
                ElementSpacing="1 1 1", ElementNBits="8")
    seeds = {
        "real_bytes.mha": mha(),
        "real_words.mha": mha(bytes(48), ElementType="MET_USHORT", ElementByteOrderMSB="True"),
        "every_key.mha": every,
        "one_file.mha": mha(b"", ElementDataFile="body.raw"),
        "slices_from_0.mha": mha(b"", ElementDataFile="a%d.raw"),
        "slices_from_1.mha": mha(b"", ElementDataFile="b%02d.raw"),
        "slices_missing.mha": mha(b"", DimSize="4 3 2000000000", ElementDataFile="a%d.raw"),
        "slices_of_no_size.mha": mha(b"", DimSize="0 3 2147483647", ElementDataFile="a%d.raw"),
        "slices_in_4_dimensions.mha": mha(b"", NDims="4", DimSize="2 3 50000000 2",
                                          ElementDataFile="a%d.raw"),
        "pattern_string.mha": mha(b"", ElementDataFile="a%s%n"),
        "pattern_wide.mha": mha(b"", ElementDataFile="a%99999999999d"),
        "pattern_two.mha": mha(b"", ElementDataFile="a%d%d.raw"),
        "pattern_long.mha": mha(b"", ElementDataFile="a%lld"),
        "pattern_cut.mha": mha(b"", ElementDataFile="a%-08."),
        "data_file_folder.mha": mha(b"", ElementDataFile="."),
        "data_file_itself.mha": mha(b"", ElementDataFile="volume.mha"),
        "data_file_device.mha": mha(b"", ElementDataFile="/dev/zero"),
        "no_byte_order.mha": mha(ElementByteOrderMSB=None),
        "size_before_number.mha": b"DimSize = 4 3 2\n" + mha(),
        "short.mha": mha(b"abc"),
        "claims_16_gigabytes.mha": mha(DimSize="1024 1024 2047", ElementType="MET_DOUBLE"),
        "product_overflows.mha": mha(DimSize="65536 65536 65536"),
        "negative_size.mha": mha(DimSize="4 -3 2"),
        "not_a_number_size.mha": mha(DimSize="4 nan inf"),
        "zero_size.mha": mha(DimSize="4 0 2"),
        "no_dimensions.mha": mha(NDims="0", DimSize=""),
        "eleven_dimensions.mha": mha(NDims="11", DimSize="1 1 1 1 1 1 1 1 1 1 1"),
        "many_dimensions.mha": mha(NDims="4000"),
        "negative_dimensions.mha": mha(NDims="-1"),
        "header_negative.mha": mha(HeaderSize="-5"),
        "header_huge.mha": mha(HeaderSize="2147483647"),
        "number_of_no_end.mha": mha(Min="9" * 2000),
        "number_cut.mha": mha(Min="0x"),
        "comment_long.mha": mha(Comment="c" * 900),
        "key_long.mha": b"k" * 300 + b" = 1\n" + mha(),
        "unknown_key.mha": b"Colour = blue\n" + mha(),
        "unknown_value_long.mha": b"Colour = " + b"v" * 900 + b"\n" + mha(),
        "zero_bytes.mha": mha().replace(b"3\nDim", b"3\0\nDim"),
        "only_separators.mha": b"=" * 64,
        "no_line_end.mha": mha(b"").rstrip(b"\n"),
        "carriage_returns.mha": mha().replace(b"\n", b"\r\n"),
        "empty.mha": b"",
        "key_at_the_end.mha": mha(b"")[:-len(" = LOCAL\n")],
        "value_at_the_end.mha": mha(b"")[:-len("LOCAL\n")],
        "number_at_the_end.mha": b"NDims = 3\nDimSize = 4 3",
        "blanks_behind_the_values.mha": mha().replace(b"\n", b" \t \n"),
        "keys_twice.mha": b"NDims = 9\nDimSize = 1 1 1 1 1 1 1 1 1\n" + mha(),
        "sizes_of_another_number.mha": mha().replace(b"DimSize", b"NDims = 2\nDimSize"),
        "text_before_elements.mha": mha(b"header bytes" + bytes(24), HeaderSize="12"),
        "header_cut.mha": mha(b"12", HeaderSize="3"),
        "folder_of_its_own.mha": mha(b"", ElementDataFile="/no/such/folder/body.raw"),
    }
    for kind in ("CHAR", "SHORT", "INT", "UINT", "FLOAT", "DOUBLE", "OTHER", "DEFAULT"):
        seeds[f"type_{kind.lower()}.mha"] = mha(bytes(192), ElementType=f"MET_{kind}",
                                                ElementByteOrderMSB="1")
    return seeds


def number(value, small=None):
    """A number of the raw target: small, or any 32 bits behind a byte of 15."""
    return bytes([0, small]) if small is not None else b"\x0f" + struct.pack("<i", value)


def raw(dims=(4, 3, 2), size=1, low=0, high=0, flips=(0, 1, 1), header=0, voxels=None):
    def one(value):
        return number(value, value if 0 <= value <= 40 else None)
    bytes_and_range = one(size) + one(low) + one(high)
    flat = b"".join(one(dim) for dim in dims) + bytes_and_range + bytes(flips) + one(header)
    return flat + (bytes(range(24)) if voxels is None else voxels)


def raw_seeds():
    return {
        "real_bytes": raw(),
        "real_words": raw(size=2, voxels=bytes(range(48))),
        "wide_enough_for_registers": raw((17, 3, 33), voxels=bytes(range(251)) * 7),
        "words_wide_enough_for_registers": raw((17, 3, 33), 2, voxels=bytes(range(251)) * 14),
        "deeper_than_a_block": raw((3, 2, 70), voxels=bytes(range(210)) * 2),
        "all_flipped": raw(flips=(1, 1, 1)),
        "bottom_narrow": raw((2, 5, 3), flips=(0, 0, 0)),
        "bottom_wide": raw((5, 2, 3), flips=(0, 0, 0)),
        "flat_volume": raw(voxels=bytes(24)),
        "range_outside": raw(low=100, high=200),
        "range_turned_round": raw(low=200, high=100),
        "range_of_32_bits": raw(low=-(2**31), high=2**31 - 1),
        "range_empty": raw(low=7, high=7),
        "one_voxel": raw((1, 1, 1), voxels=b"\x05"),
        "no_voxels": raw((0, 3, 2)),
        "negative_size": raw((-4, 3, 2)),
        "sizes_of_32_bits": raw((2**31 - 1, 2**31 - 1, 2**31 - 1)),
        "three_bytes": raw(size=3),
        "bytes_of_32_bits": raw(size=-(2**31)),
        "header_behind_the_end": raw(header=1000),
        "header_negative": raw(header=-256),
        "header_of_32_bits": raw(header=2**31 - 1),
        "short": raw((4, 3, 9)),
        "empty": raw(voxels=b""),
        "every_label": raw((16, 16, 1), voxels=bytes(range(256))),
        "one_label_everywhere": raw((19, 3, 4), voxels=b"\x05" * 228),
        "rows_of_one_label": raw((19, 4, 3), flips=(1, 0, 0),
                                 voxels=b"".join(bytes([row % 3]) * 19 for row in range(12))),
        "cut_in_a_word": raw((4, 3, 2), size=2, voxels=bytes(range(31))),
    }


def list_seeds():
    body = "/d/grey.gipl\n/d/a.gipl\n/d/b.gipl\n/d/c.raw\n/d/d.gipl\n"
    return {
        "real.tlx": f"2\n2\n{body}\n".encode(),
        "carriage_returns.tlx": f"2\n2\n{body}\n".replace("\n", "\r\n").encode(),
        "no_last_line_feed.tlx": b"1\n1\n/d/grey.gipl\n/d/a.gipl",
        "empty.tlx": b"",
        "one_line.tlx": b"3\n",
        "only_line_feeds.tlx": b"\n" * 200,
        "digit_2_ends.tlx": b"1\n2\n/d/grey.gipl\n/d/a.gipl\n2/d/b.gipl\n",
        "raw_original.tlx": b"1\n1\n/d/grey.raw\n/d/a.gipl\n/d/b.gipl\n",
        "raw_folder.tlx": b"1\n1\n/rawdata/grey.gipl\n/rawdata/note\n/gipl/x.raw\n",
        "numbers_of_no_end.tlx": b"9" * 290 + b"\n-" + b"9" * 200 + b"\n/d/grey.gipl\n/d/a.gipl\n",
        "words_for_numbers.tlx": b"two\n0x10\n/d/grey.gipl\n/d/a.gipl\n",
        "line_of_300.tlx": b"1\n1\n/d/grey.gipl\n" + b"a" * 295 + b".gipl\n",
        "line_of_301.tlx": b"1\n1\n/d/grey.gipl\n" + b"a" * 296 + b".gipl\n",
        "images_60.tlx": b"1\n60\n/d/grey.gipl\n" + b"/d/a.gipl\n" * 60,
        "images_61.tlx": b"1\n61\n/d/grey.gipl\n" + b"/d/a.gipl\n" * 61,
        "text_of_9999.tlx": b"1\n1\n/d/grey.gipl\n" + (b"a" * 249 + b"\n") * 39 + b"b" * 249 + b"\n",
        "text_of_10000.tlx": b"1\n1\n/d/grey.gipl\n" + (b"a" * 249 + b"\n") * 40 + b"b\n",
        "zero_bytes.tlx": b"1\0\n1\n/d/gr\0ey.gipl\n/d/a.gipl\0\n",
        "high_bytes.tlx": b"1\n1\n/d/\xff\xfe.gipl\n/d/\x80.gipl\n",
        "format_characters.tlx": b"1\n1\n/d/%s%n.gipl\n/d/$(x) '\".gipl\n",
    }


def double(value):
    return b"\0" + struct.pack("<d", value)


def ray_seeds():
    def ray(origin, direction, dims=(4, 3, 2), labels=b"\0\0\0\x01\0\0"):
        numbers = b"".join(double(value) for value in (*origin, *direction))
        return bytes(dim - 1 for dim in dims) + numbers + labels
    nan, inf = float("nan"), float("inf")
    return {
        "real_along_z": ray((1, 1, -3), (0, 0, 1)),
        "real_slanted": ray((-3.25, -1.5, -2), (0.7, 0.4, 0.5)),
        "no_direction": ray((0, 0, 0), (0, 0, 0)),
        "only_y_and_z": ray((1, -2, -2), (0, 1, 1), labels=b"\0"),
        "only_z_in_a_row_of_zeros": ray((1, 1, -2), (0, 0, -1), labels=b"\0"),
        "starts_on_a_boundary": ray((-0.5, -0.5, -0.5), (1, 1, 1), labels=b"\0"),
        "leaves_through_a_corner": ray((3.5, 2.5, 1.5), (-1, -1, -1), labels=b"\0"),
        "far_away": ray((1e9, 0, 0), (-1, 0, 0)),
        "just_too_far": ray((-9999.5, 0, 0), (1, 0, 0)),
        "not_a_number": ray((nan, 0, 0), (nan, nan, nan)),
        "infinite_origin": ray((inf, -inf, 0), (1, 1, 1)),
        "infinite_direction": ray((0, 0, 0), (inf, 1, 1), labels=b"\0"),
        "direction_that_overflows": ray((0, 0, 0), (1e200, 1e200, 0), labels=b"\0"),
        "direction_that_vanishes": ray((1, 1, 1), (5e-324, 0, 0), labels=b"\0"),
        "barely_slanted": ray((0, 0, 0), (1e-300, 1, 1e-300), labels=b"\0"),
        "negative_zero": ray((0, 0, 0), (-0.0, -0.0, 1), labels=b"\0"),
        "one_voxel": ray((0, 0, 0), (1, 0, 0), (1, 1, 1), b"\x07"),
        "empty": b"",
    }


def transform_seeds():
    def study(label, spacing, dims, labels):
        steps = b"".join(b"\x03" + struct.pack("<f", step) for step in spacing)
        wide = 7 if max(dims) > 9 else 0
        return bytes([0, label]) + steps + bytes([wide, *(dim - 1 for dim in dims)]) + labels
    nan, inf = float("nan"), float("inf")
    ball = bytes(1 if (i * 7) % 13 == 0 else 0 for i in range(600))
    return {
        "real": study(1, (0.5, 0.25, 2.0), (10, 10, 6), ball),
        "one_voxel": study(1, (1, 1, 1), (1, 1, 1), b"\x01"),
        "one_row": study(1, (1, 1, 1), (20, 1, 1), b"\x01\0\0\0"),
        "one_column": study(1, (1, 1, 1), (1, 20, 1), b"\x01\0\0\0"),
        "one_run": study(1, (1, 1, 1), (1, 1, 20), b"\x01\0\0\0"),
        "label_absent": study(3, (1, 1, 1), (5, 5, 5), b"\0\x01"),
        "all_label": study(1, (1, 1, 1), (5, 5, 5), b"\x01"),
        "spacing_0": study(1, (0, 0, 0), (5, 5, 5), ball),
        "spacing_negative": study(1, (-1, 2, -3), (5, 5, 5), ball),
        "spacing_not_a_number": study(1, (nan, 1, 1), (5, 5, 5), ball),
        "spacing_infinite": study(1, (inf, 1, inf), (5, 5, 5), ball),
        "spacing_overflows": study(1, (3e38, 3e38, 3e38), (20, 20, 5), ball),
        "spacing_tiny": study(1, (1e-45, 1e-38, 1), (5, 5, 5), ball),
        "label_of_32_bits": b"\x07" + struct.pack("<i", -(2**31)) + bytes(7) + b"\4\4\4" + ball,
        "empty": b"",
    }


def side(dim):
    """A side of a slice target: up to 16, or one of the large ones."""
    large = (33, 63, 64, 65, 128, 256, 299, 300)
    return 248 + large.index(dim) if dim in large else range(16).index(dim - 1)


def contour_seeds():
    def study(direction, kind, label, dims, labels, at=0, other=0):
        return bytes([direction, kind, label, *(side(dim) for dim in dims), at, other]) + labels

    def winding():
        """Six long runs that meet at their ends in turn: a wave round them takes 700 sweeps."""
        def bears(x, y):
            run, beside = divmod(y - 2, 5)
            if not (3 <= x <= 124 and 2 <= y <= 27):
                return False
            return beside == 0 or x == (3 if run % 2 else 124)
        return bytes(1 if bears(x, y) else 0 for y in range(33) for x in range(128))

    disc = bytes(1 if (x - 7)**2 + (y - 7)**2 < 30 else 0 for y in range(16) for x in range(16))
    chessboard = bytes((x + y) % 2 for y in range(16) for x in range(16))
    seeds = {
        "one_pixel": study(2, 0, 1, (1, 1, 1), b"\x01"),
        "widest_slice": study(2, 0, 1, (300, 16, 1), disc * 19),
        "highest_slice_within": study(2, 1, 1, (16, 300, 1), disc * 19),
        "longer_than_the_sweeps": study(2, 0, 1, (128, 33, 1), winding()),
        "longer_than_the_sweeps_within": study(2, 1, 1, (128, 33, 1), winding()),
        "border_left_by_another": study(2, 3, 1, (16, 16, 1), disc),
        "labels_left_by_another": study(2, 5, 1, (16, 16, 1), disc),
        "two_columns": study(2, 0, 1, (2, 16, 1), b"\x01\0"),
        "label_0": study(2, 0, 0, (16, 16, 1), disc),
        "label_on_the_border": study(2, 0, 1, (16, 16, 1), b"\x01"),
        "chessboard": study(2, 0, 1, (16, 16, 1), chessboard),
        "chessboard_within": study(2, 1, 1, (16, 16, 1), chessboard),
        "labels_that_touch": study(2, 0, 1, (16, 16, 1), bytes(i % 4 for i in range(256))),
        "largest_byte_beside": study(2, 0, 1, (16, 16, 1), b"\xff\x01\0"),
        "other_slice_outside": study(1, 0, 1, (4, 16, 16), disc * 4, 3, 15),
        "empty": b"",
    }
    for direction, name in enumerate(("yz", "xz", "xy")):
        for interior, kind in enumerate(("complexity", "within")):
            dims = [16, 16, 16]
            dims[direction] = 2
            seeds[f"real_{name}_{kind}"] = study(direction, interior, 1, dims, disc * 2)
    return seeds


def slice_distance_seeds():
    def study(direction, label, dims, labels, at=0, kept=255):
        return bytes([direction, label, kept, *(side(dim) for dim in dims), at]) + labels
    disc = bytes(1 if (x - 7)**2 + (y - 7)**2 < 30 else 0 for y in range(16) for x in range(16))
    lone = bytes(255 if i else 1 for i in range(251))
    seeds = {
        "one_pixel": study(2, 1, (1, 1, 1), b"\x01"),
        "one_row": study(2, 1, (300, 1, 1), lone, kept=1),
        "one_column": study(2, 1, (1, 300, 1), lone, kept=1),
        "label_absent": study(2, 3, (16, 16, 1), disc),
        "label_absent_in_the_widest_slice": study(2, 3, (300, 16, 1), disc),
        "all_label": study(2, 1, (16, 16, 1), b"\x01"),
        "few_pixels": study(2, 1, (128, 64, 1), lone, kept=1),
        "few_pixels_of_the_highest_slice": study(2, 1, (64, 300, 1), lone, kept=1),
        "background": study(2, 0, (33, 33, 1), disc),
        "chessboard": study(2, 1, (63, 65, 1), b"\0\x01"),
        "empty": b"",
    }
    for direction, name in enumerate(("yz", "xz", "xy")):
        dims = [16, 16, 16]
        dims[direction] = 2
        seeds[f"real_{name}"] = study(direction, 1, dims, disc * 2, 1)
    return seeds


def main():
    write("GiplHeader", gipl_seeds())
    write("MetaImage", mha_seeds())
    write("RawVolume", raw_seeds())
    write("ScriptList", list_seeds())
    write("ListText", list_seeds())
    write("CastRay", ray_seeds())
    write("DistanceTransform", transform_seeds())
    write("ContourWalk", contour_seeds())
    write("SliceDistance", slice_distance_seeds())


if __name__ == "__main__":
    main()
