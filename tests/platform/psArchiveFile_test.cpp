// Files of named object streams: written, listed by other tools, read back, and refused.
#include <gtest/gtest.h>
#include <mfc/CArchive.h>
#include <pers/psArchiveFile.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

#include "archive_failure.h"
#include "file_contents.h"
#include "scratch_directory.h"
#include "stream_objects.h"

namespace {

class psArchiveFileTest : public testing::Test {
  protected:
    ~psArchiveFileTest() override { StreamNode::delete_all(); }

    utString path(const std::string& name = "a.zip") const {
        return utString(scratch.path() + "/" + name);
    }

    /// Writes a file with streams of one number each, named /number/1 and so on.
    void write_numbers(int count, std::size_t padding = 0) const {
        psArchiveFile file(header, path(), psFileModeWrite);
        for (int i = 1; i <= count; ++i) {
            CArchive* archive = nullptr;
            ASSERT_EQ(file.write_archive(name_of(i), archive), 0);
            *archive << i * 11 << std::string(padding, 'x');
        }
        ASSERT_EQ(file.close(), 0);
    }

    static utString name_of(int number) {
        utString name("/number/");
        name << number;
        return name;
    }

    /// The number in a stream of the file, or minus the errno.
    static int number_in(psArchiveFile& file, int number) {
        CArchive* archive = nullptr;
        if (const int error = file.read_archive(name_of(number), archive)) return -error;
        int value = 0;
        std::string padding;
        *archive >> value >> padding;
        return value;
    }

    const psArchiveFileHeader header{"Parts", "Version 1.0", psByteOrderLittle};
    StreamClasses classes;
    ScratchDirectory scratch;
};

using psArchiveFile_bytes = psArchiveFileTest;

int status_of(const std::string& command) { return std::system(command.c_str()); }

}  // namespace

TEST_F(psArchiveFileTest, reads_streams_in_any_order) {
    write_numbers(3);
    psArchiveFile file(psArchiveFileHeader(), path(), psFileModeRead);
    EXPECT_EQ(file.header(), header);
    EXPECT_EQ(number_in(file, 3), 33);
    EXPECT_EQ(number_in(file, 1), 11);
    EXPECT_EQ(number_in(file, 1), 11);
    EXPECT_EQ(number_in(file, 4), -ENOENT);
    EXPECT_EQ(file.close(), 0);
}

TEST_F(psArchiveFileTest, keeps_objects_that_refer_to_each_other) {
    auto* const first = new StreamNode(1);
    auto* const second = new StreamNode(2);
    first->links = {second, first};
    psArchiveFile file(header, path(), psFileModeWrite);
    CArchive* archive = nullptr;
    ASSERT_EQ(file.write_archive("/surface/1", archive), 0);
    *archive << first;
    ASSERT_EQ(file.close(), 0);
    ASSERT_EQ(file.open(path(), psFileModeRead), 0);
    ASSERT_EQ(file.read_archive("/surface/1", archive), 0);
    CObject* read = nullptr;
    *archive >> read;
    const auto* const node = dynamic_cast<StreamNode*>(read);
    ASSERT_NE(node, nullptr);
    ASSERT_EQ(node->links.size(), 2U);
    EXPECT_EQ(node->links[1], node);
    EXPECT_EQ(dynamic_cast<StreamNode*>(node->links[0])->number, 2);
}

TEST_F(psArchiveFileTest, has_a_header_of_three_texts_and_a_number) {
    const psArchiveFileHeader curve("o", "t", "t\nwith a line end", 2);
    ASSERT_EQ(psArchiveFile(curve, path(), psFileModeWrite).close(), 0);
    const psArchiveFile file(psArchiveFileHeader(), path(), psFileModeRead);
    EXPECT_EQ(file.header(), curve);
    EXPECT_EQ(file.header().texts().size(), 3U);
    EXPECT_EQ(file.header().byte_order(), psByteOrderLittle);
}

TEST_F(psArchiveFileTest, is_listed_and_tested_by_other_tools) {
    write_numbers(2, 100'000);
    const std::string list = scratch.path() + "/list";
    if (status_of("command -v unzip python3 > /dev/null 2>&1") != 0) {
        GTEST_SKIP() << "unzip or python3 is not installed";
    }
    EXPECT_EQ(status_of("unzip -tqq '" + std::string(path().view()) + "' > /dev/null 2>&1"), 0);
    ASSERT_EQ(status_of("python3 -c 'import sys, zipfile; "
                        "print(*zipfile.ZipFile(sys.argv[1]).namelist(), sep=\"\\n\")' '" +
                        std::string(path().view()) + "' > '" + list + "'"),
              0);
    EXPECT_EQ(contents_of(list), "archive-file-header\n/number/1\n/number/2\n");
}

TEST_F(psArchiveFileTest, closes_when_it_is_destroyed) {
    {
        psArchiveFile file(header, path(), psFileModeWrite);
        CArchive* archive = nullptr;
        ASSERT_EQ(file.write_archive(name_of(1), archive), 0);
        *archive << 11 << std::string();
    }
    psArchiveFile file(header, path(), psFileModeRead);
    EXPECT_EQ(number_in(file, 1), 11);
}

TEST_F(psArchiveFileTest, is_dropped_when_an_exception_passes) {
    scratch.file("a.zip", "before");
    try {
        psArchiveFile file(header, path(), psFileModeWrite);
        throw std::runtime_error("stop");
    } catch (const std::runtime_error&) {
    }
    EXPECT_EQ(contents_of(std::string(path().view())), "before");
    EXPECT_EQ(scratch.file_count(), 1U);
}

TEST_F(psArchiveFileTest, appears_when_it_is_closed_and_not_before) {
    psArchiveFile file(header, path(), psFileModeWrite);
    CArchive* archive = nullptr;
    ASSERT_EQ(file.write_archive(name_of(1), archive), 0);
    EXPECT_FALSE(std::filesystem::exists(std::string(path().view())));
    EXPECT_EQ(file.close(), 0);
    EXPECT_TRUE(std::filesystem::exists(std::string(path().view())));
    EXPECT_EQ(file.close(), 0);
}

TEST_F(psArchiveFileTest, refuses_names_that_it_cannot_keep) {
    psArchiveFile file(header, path(), psFileModeWrite);
    CArchive* archive = nullptr;
    for (const utString& name :
         {utString(), utString(""), utString("archive-file-header"),
          utString(std::string("a\0b", 3)), utString(std::string(65536, 'n'))}) {
        EXPECT_EQ(file.write_archive(name, archive), EINVAL) << name.length();
        EXPECT_EQ(archive, nullptr);
    }
    EXPECT_EQ(file.write_archive("a", archive), 0);
    EXPECT_EQ(file.write_archive("a", archive), EEXIST);
}

TEST_F(psArchiveFileTest, refuses_calls_out_of_order) {
    psArchiveFile file(header, path("none/a.zip"), psFileModeWrite);
    CArchive* archive = nullptr;
    EXPECT_EQ(file.write_archive("a", archive), ENOENT);
    EXPECT_EQ(file.read_archive("a", archive), ENOENT);
    EXPECT_EQ(file.open(path("none.zip"), psFileModeRead), ENOENT);
    EXPECT_EQ(file.open(utString(), psFileModeRead), EINVAL);
    EXPECT_EQ(file.open(path(), psFileModeClosed), EINVAL);
    ASSERT_EQ(file.open(path(), psFileModeWrite), 0);
    EXPECT_EQ(file.read_archive("a", archive), EINVAL);
    ASSERT_EQ(file.close(), 0);
    EXPECT_EQ(file.write_archive("a", archive), EINVAL);
    ASSERT_EQ(file.open(path(), psFileModeRead), 0);
    EXPECT_EQ(file.write_archive("a", archive), EINVAL);
}

TEST_F(psArchiveFileTest, writes_no_other_order_of_bytes) {
    const psArchiveFileHeader big("Parts", "Version 1.0", psByteOrderBig);
    psArchiveFile file(big, path(), psFileModeWrite);
    CArchive* archive = nullptr;
    EXPECT_EQ(file.write_archive("a", archive), EINVAL);
    EXPECT_EQ(scratch.file_count(), 0U);
}

TEST_F(psArchiveFileTest, puts_an_archive_back_to_what_was_not_asked_for) {
    write_numbers(1, 10'000);
    psArchiveFile file(header, path(), psFileModeRead);
    CArchive* archive = nullptr;
    ASSERT_EQ(file.read_archive(name_of(1), archive), 0);
    int value = 0;
    *archive >> value;
    CFile* const entry = archive->GetFile();
    archive->Flush();
    EXPECT_EQ(entry->GetPosition(), 4U);
    std::string padding;
    *archive >> padding;
    EXPECT_EQ(padding.size(), 10'000U);
    archive->Close();
}

TEST_F(psArchiveFileTest, puts_an_archive_back_as_often_as_it_is_asked_to) {
    psArchiveFile file(header, path(), psFileModeWrite);
    CArchive* archive = nullptr;
    ASSERT_EQ(file.write_archive("numbers", archive), 0);
    for (int number = 0; number < 5'000; ++number) *archive << number;
    ASSERT_EQ(file.close(), 0);
    ASSERT_EQ(file.open(path(), psFileModeRead), 0);
    ASSERT_EQ(file.read_archive("numbers", archive), 0);
    for (int number = 0; number < 5'000; ++number) {
        int read = -1;
        *archive >> read;
        ASSERT_EQ(read, number);
        archive->Flush();
        ASSERT_EQ(archive->GetFile()->GetPosition(), 4U * (static_cast<unsigned>(number) + 1U));
    }
}

TEST_F(psArchiveFileTest, ends_at_the_end_of_its_stream) {
    write_numbers(2);
    psArchiveFile file(header, path(), psFileModeRead);
    CArchive* archive = nullptr;
    ASSERT_EQ(file.read_archive(name_of(1), archive), 0);
    int value = 0;
    std::string padding;
    *archive >> value >> padding;
    EXPECT_EQ(cause_of([&] { *archive >> value; }), CArchiveException::endOfFile);
}

TEST_F(psArchiveFile_bytes, are_refused_where_the_file_is_cut) {
    write_numbers(2);
    const std::string whole = contents_of(std::string(path().view()));
    for (std::size_t size = 0; size < whole.size(); ++size) {
        scratch.file("cut.zip", whole.substr(0, size));
        psArchiveFile file(header, path("cut.zip"), psFileModeRead);
        CArchive* archive = nullptr;
        EXPECT_NE(file.read_archive(name_of(1), archive), 0) << size;
        EXPECT_EQ(archive, nullptr);
    }
}

TEST_F(psArchiveFile_bytes, do_no_harm_where_one_is_changed) {
    write_numbers(2, 50);
    const std::string whole = contents_of(std::string(path().view()));
    for (std::size_t at = 0; at < whole.size(); ++at) {
        std::string bytes = whole;
        bytes[at] = static_cast<char>(bytes[at] ^ 0x20);
        scratch.file("changed.zip", bytes);
        psArchiveFile file(header, path("changed.zip"), psFileModeRead);
        for (const int number : {1, 2}) {
            try {
                const int value = number_in(file, number);
                EXPECT_TRUE(value < 0 || value == number * 11) << at;
            } catch (const CException&) {
            }
        }
    }
}

TEST_F(psArchiveFile_bytes, of_another_zip_are_refused) {
    if (status_of("command -v python3 > /dev/null 2>&1") != 0) GTEST_SKIP() << "no python3";
    const auto make = [&](const std::string& header_text) {
        return status_of("cd '" + scratch.path() +
                         "' && python3 -c 'import sys, zipfile; "
                         "zipfile.ZipFile(\"a.zip\", \"w\").writestr(*sys.argv[1:])' " +
                         header_text);
    };
    for (const char* text :
         {"other x", "archive-file-header ''", "archive-file-header 'nmk archive file 2\n'",
          "archive-file-header 'nmk archive file 1\nbyte order 1\nend\n'",
          "archive-file-header 'nmk archive file 1\nbyte order 2\n'",
          "archive-file-header 'nmk archive file 1\nbyte order 2\ntext 99 a\nend\n'",
          "archive-file-header 'nmk archive file 1\nbyte order 2\ntext -1 a\nend\n'",
          "archive-file-header 'nmk archive file 1\nbyte order 2\nend\nx'"}) {
        ASSERT_EQ(make(text), 0);
        EXPECT_EQ(psArchiveFile(header, utString(), psFileModeRead).open(path(), psFileModeRead),
                  EBADMSG)
            << text;
    }
    ASSERT_EQ(make("archive-file-header 'nmk archive file 1\nbyte order 2\nend\n'"), 0);
    EXPECT_EQ(psArchiveFile(header, utString(), psFileModeRead).open(path(), psFileModeRead), 0);
}
