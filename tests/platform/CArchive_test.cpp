// Life, direction, bytes and numbers of an archive.
#include <gtest/gtest.h>
#include <mfc/CArchive.h>
#include <mfc/CMemFile.h>

#include <cstdint>
#include <limits>
#include <ostream>
#include <string>
#include <vector>

#include "archive_failure.h"
#include "stream_objects.h"

namespace {

using Bytes = std::vector<unsigned char>;

// A file whose device is full from the start.
class FullFile : public CMemFile {
  public:
    void Write(const void*, std::size_t) override {
        throw CFileException(CFileException::diskFull);
    }
};

}  // namespace

TEST(CArchive, numbers_are_little_endian_and_follow_each_other_without_padding) {
    const Bytes bytes = stored_bytes([](CArchive& archive) {
        archive << static_cast<unsigned char>(0x01) << static_cast<short>(0x0302) << 0x07060504
                << 0x0F0E0D0C0B0A0908LL << 1.0F << -2.0;
    });
    EXPECT_EQ(bytes, (Bytes{1,  2, 3, 4,    5,    6, 7, 8, 9, 10, 11, 12, 13,  14,
                            15, 0, 0, 0x80, 0x3F, 0, 0, 0, 0, 0,  0,  0,  0xC0}));
}

TEST(CArchive, a_truth_value_takes_one_byte_and_any_byte_but_0_reads_as_true) {
    EXPECT_EQ(stored_bytes([](CArchive& archive) { archive << true << false; }), (Bytes{1, 0}));
    bool values[3] = {false, true, false};
    load_bytes({7, 0, 0x80}, [&](CArchive& archive) {
        for (bool& value : values) archive >> value;
    });
    EXPECT_TRUE(values[0]);
    EXPECT_FALSE(values[1]);
    EXPECT_TRUE(values[2]);
}

TEST(CArchive, long_takes_4_bytes_on_every_system_and_is_cut_to_them) {
    const Bytes bytes = stored_bytes([](CArchive& archive) {
        archive << -2L << std::numeric_limits<unsigned long>::max() << 0x1234567890L;
    });
    EXPECT_EQ(bytes,
              (Bytes{0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x90, 0x78, 0x56, 0x34}));
    long negative = 0;
    unsigned long all_ones = 0;
    load_bytes(bytes, [&](CArchive& archive) { archive >> negative >> all_ones; });
    EXPECT_EQ(negative, -2);
    EXPECT_EQ(all_ones, 0xFFFFFFFFUL);
}

TEST(CArchive, a_wide_character_takes_2_bytes) {
    const Bytes bytes = stored_bytes([](CArchive& archive) { archive << L'\x20AC'; });
    EXPECT_EQ(bytes, (Bytes{0xAC, 0x20}));
    wchar_t character = 0;
    load_bytes(bytes, [&](CArchive& archive) { archive >> character; });
    EXPECT_EQ(character, L'\x20AC');
}

TEST(CArchive, numbers_survive_a_buffer_of_any_size) {
    for (int buffer_size = -1; buffer_size <= 20; ++buffer_size) {
        const auto write = [](CArchive& archive) {
            for (int i = 0; i < 50; ++i) archive << i << 0.5 * i << static_cast<short>(-i);
        };
        const Bytes bytes = stored_bytes(write, buffer_size);
        ASSERT_EQ(bytes.size(), 50U * 14U) << buffer_size;
        load_bytes(
            bytes,
            [&](CArchive& archive) {
                for (int i = 0; i < 50; ++i) {
                    int whole = 0;
                    double half = 0.0;
                    short negative = 0;
                    archive >> whole >> half >> negative;
                    ASSERT_EQ(whole, i);
                    ASSERT_EQ(half, 0.5 * i);
                    ASSERT_EQ(negative, -i);
                }
            },
            buffer_size);
    }
}

TEST(CArchive, read_returns_fewer_bytes_at_the_end_and_throws_nothing) {
    for (const int buffer_size : {1, 3, 4096}) {
        char bytes[8] = "-------";
        load_bytes(
            {'a', 'b', 'c', 'd', 'e'},
            [&](CArchive& archive) {
                EXPECT_EQ(archive.Read(bytes, 2), 2U);
                EXPECT_EQ(archive.Read(bytes + 2, 6), 3U);
                EXPECT_EQ(archive.Read(bytes, 1), 0U);
            },
            buffer_size);
        EXPECT_EQ(std::string(bytes), "abcde--") << buffer_size;
    }
}

TEST(CArchive, a_number_at_the_end_of_the_data_throws_endOfFile) {
    int value = 0;
    EXPECT_EQ(cause_of([&] { load_bytes({}, [&](CArchive& archive) { archive >> value; }); }),
              CArchiveException::endOfFile);
    EXPECT_EQ(cause_of([&] {
                  load_bytes({1, 2, 3}, [&](CArchive& archive) { archive >> value; });
              }),
              CArchiveException::endOfFile);
}

TEST(CArchive, writing_to_one_that_loads_throws_readOnly) {
    CMemFile file;
    CArchive archive(&file, CArchive::load);
    const auto require_refused = [&](const auto& write) {
        EXPECT_EQ(cause_of(write), CArchiveException::readOnly);
    };
    require_refused([&] { archive << 1; });
    require_refused([&] { archive.Write("", 0); });
    require_refused([&] { archive << "text"; });
    require_refused([&] { archive << L"text"; });
    require_refused([&] { archive.WriteCount(1); });
    require_refused([&] { archive.WriteObject(nullptr); });
    require_refused([&] { archive.WriteClass(StreamNode::GetThisClass()); });
    EXPECT_EQ(file.GetLength(), 0U);
}

TEST(CArchive, reading_from_one_that_stores_throws_writeOnly) {
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    archive << 1 << 2;
    const auto require_refused = [&](const auto& read) {
        EXPECT_EQ(cause_of(read), CArchiveException::writeOnly);
    };
    int value = 0;
    std::string text;
    require_refused([&] { archive >> value; });
    require_refused([&] { archive.Read(&value, 0); });
    require_refused([&] { archive >> text; });
    require_refused([&] { archive.ReadCount(); });
    require_refused([&] { archive.ReadObject(nullptr); });
    require_refused([&] { archive.ReadClass(); });
    EXPECT_EQ(value, 0);
}

TEST(CArchive, another_archive_may_follow_in_the_same_file) {
    CMemFile file;
    for (int i = 0; i < 3; ++i) {
        CArchive archive(&file, CArchive::store);
        archive << i << "text";
    }
    file.Seek(0, CFile::begin);
    for (int i = 0; i < 3; ++i) {
        CArchive archive(&file, CArchive::load);
        int number = -1;
        std::string text;
        archive >> number >> text;
        EXPECT_EQ(number, i);
        EXPECT_EQ(text, "text");
    }
    EXPECT_EQ(file.GetPosition(), file.GetLength());
}

TEST(CArchive, flushing_makes_the_position_of_the_file_that_of_the_archive) {
    CMemFile file;
    CArchive stored(&file, CArchive::store);
    stored << 1;
    EXPECT_EQ(file.GetPosition(), 0U);
    stored.Flush();
    EXPECT_EQ(file.GetPosition(), 4U);
    stored << 2;
    stored.Close();
    file.Seek(0, CFile::begin);
    CArchive loaded(&file, CArchive::load);
    int value = 0;
    loaded >> value;
    EXPECT_EQ(file.GetPosition(), 8U);
    loaded.Flush();
    EXPECT_EQ(file.GetPosition(), 4U);
    loaded >> value;
    EXPECT_EQ(value, 2);
}

TEST(CArchive, a_closed_archive_refuses_everything) {
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    archive << 1;
    archive.Close();
    EXPECT_EQ(archive.GetFile(), nullptr);
    EXPECT_EQ(cause_of([&] { archive << 2; }), CArchiveException::generic);
    archive.Close();
    archive.Flush();
    EXPECT_EQ(file.GetLength(), 4U);
    CArchive without_file(nullptr, CArchive::load);
    int value = 0;
    EXPECT_EQ(cause_of([&] { without_file >> value; }), CArchiveException::generic);
}

TEST(CArchive, aborting_drops_what_is_buffered) {
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    archive << 1;
    archive.Abort();
    EXPECT_EQ(file.GetLength(), 0U);
    EXPECT_EQ(cause_of([&] { archive << 2; }), CArchiveException::generic);
}

TEST(CArchive, closing_reports_a_full_disk) {
    FullFile file;
    CArchive archive(&file, CArchive::store);
    archive << 1;
    EXPECT_THROW(archive.Close(), CFileException);
    EXPECT_EQ(archive.GetFile(), nullptr);
}

TEST(CArchive, its_destructor_reports_a_full_disk_too) {
    FullFile file;
    EXPECT_THROW(
        {
            CArchive archive(&file, CArchive::store);
            archive << 1;
        },
        CFileException);
}

TEST(CArchive, its_destructor_aborts_while_another_exception_is_on_its_way) {
    FullFile file;
    EXPECT_EQ(cause_of([&] {
                  CArchive archive(&file, CArchive::store);
                  archive << 1;
                  archive.ReadCount();
              }),
              CArchiveException::writeOnly);
}

TEST(CArchive, counts_take_2_bytes_below_65535_and_else_6) {
    const Bytes bytes = stored_bytes([](CArchive& archive) {
        archive.WriteCount(0);
        archive.WriteCount(0xFFFE);
        archive.WriteCount(0xFFFF);
        archive.WriteCount(0xFFFFFFFF);
    });
    EXPECT_EQ(bytes, (Bytes{0, 0, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF,
                            0xFF, 0xFF}));
    load_bytes(bytes, [](CArchive& archive) {
        EXPECT_EQ(archive.ReadCount(), 0U);
        EXPECT_EQ(archive.ReadCount(), 0xFFFEU);
        EXPECT_EQ(archive.ReadCount(), 0xFFFFU);
        EXPECT_EQ(archive.ReadCount(), 0xFFFFFFFFU);
    });
}
