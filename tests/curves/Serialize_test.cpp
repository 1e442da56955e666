#include <gtest/gtest.h>
#include <mfc/CArchive.h>
#include <mfc/CMemFile.h>
#include <nmktoolbox/curves/Serialize.h>

#include <string>
#include <vector>

#include "archive_failure.h"

namespace {

using Bytes = std::vector<unsigned char>;

Bytes stored(utString text) {
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    Serialize(text, archive);
    archive.Close();
    return {file.bytes().begin(), file.bytes().end()};
}

void load(utString& text, const Bytes& bytes) {
    CMemFile file(bytes);
    CArchive archive(&file, CArchive::load);
    Serialize(text, archive);
}

}  // namespace

TEST(Serialize, writes_the_bytes_and_one_nul_without_a_length) {
    EXPECT_EQ(stored("abc"), (Bytes{'a', 'b', 'c', 0}));
    EXPECT_EQ(stored(""), Bytes{0});
}

TEST(Serialize, texts_follow_each_other) {
    CMemFile file;
    utString first("first"), second, third("third");
    {
        CArchive archive(&file, CArchive::store);
        for (utString* text : {&first, &second, &third}) Serialize(*text, archive);
    }
    file.Seek(0, CFile::begin);
    CArchive archive(&file, CArchive::load);
    utString loaded[3];
    for (utString& text : loaded) Serialize(text, archive);
    EXPECT_EQ(loaded[0], first);
    EXPECT_EQ(loaded[1], utString(""));
    EXPECT_EQ(loaded[2], third);
}

TEST(Serialize, the_null_string_comes_back_as_the_empty_text) {
    utString text("before");
    load(text, stored(utString()));
    EXPECT_EQ(text, utString(""));
    EXPECT_FALSE(text.is_null());
}

TEST(Serialize, a_text_with_a_nul_inside_is_written_up_to_it) {
    EXPECT_EQ(stored(utString(std::string("ab\0cd", 5))), (Bytes{'a', 'b', 0}));
}

TEST(Serialize, a_long_text_survives) {
    const std::string text(100000, 'x');
    utString loaded;
    load(loaded, stored(utString(text)));
    EXPECT_EQ(loaded.view(), text);
}

TEST(Serialize, a_text_without_its_nul_throws_endOfFile_and_leaves_the_string_alone) {
    for (const Bytes& cut : {Bytes{}, Bytes{'a'}, Bytes(10000, 'a')}) {
        utString text("before");
        EXPECT_EQ(cause_of([&] { load(text, cut); }), CArchiveException::endOfFile);
        EXPECT_EQ(text, utString("before"));
    }
}
