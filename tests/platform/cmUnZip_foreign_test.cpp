// Zip files as other programs write them, made with Python's zipfile and by hand.
#include <compress/cmUnZip.h>
#include <gtest/gtest.h>

#include <ostream>
#include <sstream>
#include <string>

#include "scratch_directory.h"
#include "zip_samples.h"
#include "zip_tools.h"

namespace {

/// What every script begins with: `out` is the name of the zip.
const std::string prologue = R"(
import struct, sys, zipfile
out = sys.argv[1]

def entry(name, extra=b"", flags=0):
    info = zipfile.ZipInfo(name, (2026, 11, 22, 10, 0, 0))
    info.extra, info.compress_type, info.flag_bits = extra, 8, flags
    return info

def changed(before, after, count=1):
    bytes = open(out, "rb").read()
    assert bytes.count(before) >= count
    open(out, "wb").write(bytes.replace(before, after))

def simple(**more):
    with zipfile.ZipFile(out, "w", **more) as z:
        z.writestr(entry("a"), b"1")
        z.writestr(entry("d/b"), b"2" * 5)
)";

/// The entries of a zip, "a=1|d/b=22222|", or why it cannot be opened; an entry that cannot be read
/// has its reason in place of its bytes.
std::string listing_of(const std::string& name) {
    cmUnZip zip;
    if (zip.open(name.c_str()) != 0) return zip.problem();
    std::string listing;
    for (int end = zip.goto_first_file(); end == 0; end = zip.goto_next_file()) {
        utString entry;
        std::ostringstream bytes;
        zip.get_current_file_info(entry);
        const bool is_read = zip.open_current_file() == 0 && zip.unzip_current_file(bytes, 3) == 0;
        listing += std::string(entry.view()) + "=" + (is_read ? bytes.str() : zip.problem()) + "|";
    }
    return listing;
}

struct ForeignZip {
    const char* name;
    const char* script;
    const char* listing;
};

std::ostream& operator<<(std::ostream& stream, const ForeignZip& one) { return stream << one.name; }

class cmUnZip_foreign : public testing::TestWithParam<ForeignZip> {};

TEST_P(cmUnZip_foreign, zip_is_read_as_its_directory_says) {
    const ScratchDirectory scratch;
    const std::string zip = scratch.path() + "/z.zip";
    const std::string program = scratch.file("make.py", prologue + GetParam().script);
    ASSERT_EQ(zip_tools::output_of("python3 '" + program + "' '" + zip + "'"), "exit 0\n");
    EXPECT_EQ(listing_of(zip), GetParam().listing);
}

constexpr const char* both = "a=1|d/b=22222|";

const ForeignZip foreign_zips[] = {
    {"sizes_that_follow_the_data", R"(
class Pipe:
    def __init__(self): self.file = open(out, "wb")
    def write(self, bytes): return self.file.write(bytes)
    def flush(self): self.file.flush()
with zipfile.ZipFile(Pipe(), "w") as z:
    z.writestr(entry("a"), b"1")
    z.writestr(entry("d/b"), b"2" * 5)
assert open(out, "rb").read().count(b"PK\7\10") == 2
)",
     both},
    {"records_of_zip64_without_need", R"(
zipfile.ZIP_FILECOUNT_LIMIT = 1
simple()
assert b"PK\6\6" in open(out, "rb").read()
)",
     both},
    {"extra_fields_of_dates_owners_and_no_meaning", R"(
extra = struct.pack("<HHBl", 0x5455, 5, 1, 1000) + struct.pack("<HHBBIBI", 0x7875, 11, 1, 4, 0, 4, 0)
extra += struct.pack("<HH4s", 0xCAFE, 4, b"\0\1\2\3")
with zipfile.ZipFile(out, "w") as z:
    z.writestr(entry("a", extra), b"1")
)",
     "a=1|"},
    {"an_extra_field_that_is_longer_than_it_says", R"(
with zipfile.ZipFile(out, "w") as z:
    z.writestr(entry("a", b"\xFE\xCA\2\0xx"), b"1")
changed(b"\xFE\xCA\2\0xx", b"\xFE\xCA\xFF\0xx", 2)
)",
     "not a zip file, or its directory is damaged: Zip archive inconsistent"},
    {"a_comment_of_the_whole", "simple()\nzipfile.ZipFile(out, 'a').comment = b'made elsewhere'\n",
     both},
    {"a_comment_of_65535_bytes", R"(
simple()
with zipfile.ZipFile(out, "a") as z: z.comment = b"c" * 65535
)",
     both},
    {"a_comment_with_the_signature_of_an_end", R"(
simple()
with zipfile.ZipFile(out, "a") as z: z.comment = b"--PK\5\6" + b"\0" * 40
)",
     both},
    {"a_program_in_front_that_the_offsets_count", R"(
open(out, "wb").write(b"#!/bin/sh\nexit 1\n" * 100)
with zipfile.ZipFile(out, "a") as z:
    z.writestr(entry("a"), b"1")
    z.writestr(entry("d/b"), b"2" * 5)
)",
     both},
    {"a_name_in_utf8", R"(
with zipfile.ZipFile(out, "w") as z: z.writestr(entry("\u00e9\u4e2d"), b"1")
)",
     "\xC3\xA9\xE4\xB8\xAD=1|"},
    {"a_name_in_another_encoding", R"(
with zipfile.ZipFile(out, "w") as z: z.writestr(entry("M.ller"), b"1")
changed(b"M.ller", b"M\x81ller", 2)
)",
     "M\x81ller=1|"},
    {"a_name_that_says_utf8_and_is_not", R"(
with zipfile.ZipFile(out, "w") as z: z.writestr(entry("\u00e9x"), b"1")
changed(b"\xc3\xa9", b"\xc3\xc3", 2)
)",
     "not a zip file, or its directory is damaged: Zip archive inconsistent"},
    {"another_name_in_the_header_of_the_data", R"(
with zipfile.ZipFile(out, "w") as z: z.writestr(entry("safe"), b"1")
bytes = open(out, "rb").read()
open(out, "wb").write(bytes.replace(b"safe", b"../x", 1))
)",
     "safe=1|"},
    {"directories_as_entries", R"(
with zipfile.ZipFile(out, "w") as z:
    z.writestr(zipfile.ZipInfo("d/"), b"")
    z.writestr(entry("d/b"), b"22222")
)",
     "d/=|d/b=22222|"},
    {"bytes_between_the_entries", R"(
simple()
bytes = open(out, "rb").read()
at = bytes.index(b"PK\3\4", 4)
begin = bytes.index(b"PK\1\2")
second = bytes.index(b"PK\1\2", begin + 4)
end = bytes.index(b"PK\5\6")
moved = bytes[:second + 42] + struct.pack("<I", at + 7) + bytes[second + 46:end]
tail = bytes[end:end + 16] + struct.pack("<I", begin + 7) + bytes[end + 20:]
open(out, "wb").write(moved[:at] + b"garbage" + moved[at:] + tail)
)",
     both},
    {"bzip2_and_lzma_beside_deflate", R"(
with zipfile.ZipFile(out, "w") as z:
    z.writestr("a", b"1", 12)
    z.writestr("b", b"2", 14)
    z.writestr("c", b"3", 8)
)",
     "a=packed by method 12; expected 0 (stored) or 8 (deflated)|"
     "b=packed by method 14; expected 0 (stored) or 8 (deflated)|c=3|"},
    {"stored_data_that_is_cut_by_the_directory", R"(
with zipfile.ZipFile(out, "w") as z: z.writestr("a", b"1" * 100)
bytes = open(out, "rb").read()
at = bytes.index(b"PK\1\2") + 20
open(out, "wb").write(bytes[:at] + struct.pack("<II", 99, 99) + bytes[at + 8:])
)",
     "a=the data is damaged: CRC error|"},
    {"one_disk_of_several", R"(
simple()
bytes = open(out, "rb").read()
at = bytes.index(b"PK\5\6") + 4
open(out, "wb").write(bytes[:at] + b"\1\0\1\0" + bytes[at + 4:])
)",
     "not a zip file, or its directory is damaged: Multi-disk zip archives not supported"},
};

INSTANTIATE_TEST_SUITE_P(all, cmUnZip_foreign, testing::ValuesIn(foreign_zips),
                         [](const auto& each) { return std::string(each.param.name); });

}  // namespace

TEST(cmUnZip, refuses_a_zip_whose_offsets_do_not_count_the_bytes_in_front) {
    const ScratchDirectory scratch;
    const std::string zip = zip_samples::zip_of({{"a", "1"}});
    EXPECT_EQ(listing_of(scratch.file("z", "#!/bin/sh\n" + zip)),
              "not a zip file, or its directory is damaged: Not a zip archive");
}

TEST(cmUnZip, takes_the_name_of_an_entry_from_its_unicode_field) {
    const ScratchDirectory scratch;
    const std::string zip = scratch.path() + "/z.zip";
    const std::string program = scratch.file("make.py", prologue + R"(
import zlib
name = "M\u00fcller".encode()
extra = struct.pack("<HHBI", 0x7075, 5 + len(name), 1, zlib.crc32(b"M.ller")) + name
with zipfile.ZipFile(out, "w") as z: z.writestr(entry("M.ller", extra), b"1")
)");
    ASSERT_EQ(zip_tools::output_of("python3 '" + program + "' '" + zip + "'"), "exit 0\n");
    EXPECT_EQ(listing_of(zip), "M\xC3\xBCller=1|");
}
