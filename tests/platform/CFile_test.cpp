#include <gtest/gtest.h>
#include <mfc/CFile.h>
#include <mfc/CMemFile.h>

#include <cerrno>
#include <string>
#include <vector>

#include "scratch_directory.h"

namespace {

std::string read_all(CFile& file) {
    std::string text(static_cast<std::size_t>(file.GetLength()), '\0');
    file.Seek(0, CFile::begin);
    text.resize(file.Read(text.data(), text.size()));
    return text;
}

template <class Work>
CFileException::Cause file_cause_of(const Work& work) {
    try {
        work();
    } catch (const CFileException& failure) {
        return failure.m_cause;
    }
    return CFileException::none;
}

}  // namespace

TEST(CFile, what_was_written_is_read_back) {
    const ScratchDirectory scratch;
    const std::string name = scratch.path() + "/file";
    {
        CFile file(name.c_str(), CFile::modeWrite | CFile::modeCreate);
        file.Write("hello", 5);
        EXPECT_EQ(file.GetPosition(), 5U);
        EXPECT_EQ(file.Seek(-2, CFile::current), 3U);
        file.Write("p!", 2);
        file.Close();
    }
    CFile file(name.c_str(), CFile::modeRead);
    EXPECT_EQ(file.GetLength(), 5U);
    EXPECT_EQ(read_all(file), "help!");
    char more = 0;
    EXPECT_EQ(file.Read(&more, 1), 0U);
}

TEST(CFile, creating_empties_a_file_without_the_flag_that_keeps_it) {
    const ScratchDirectory scratch;
    const std::string name = scratch.path() + "/file";
    CFile(name.c_str(), CFile::modeWrite | CFile::modeCreate).Write("old", 3);
    {
        CFile kept(name.c_str(), CFile::modeReadWrite | CFile::modeCreate | CFile::modeNoTruncate);
        EXPECT_EQ(read_all(kept), "old");
    }
    CFile emptied(name.c_str(), CFile::modeReadWrite | CFile::modeCreate);
    EXPECT_EQ(emptied.GetLength(), 0U);
}

TEST(CFile, opening_reports_why_it_failed) {
    const ScratchDirectory scratch;
    CFile file;
    CFileException error;
    EXPECT_FALSE(file.Open((scratch.path() + "/missing").c_str(), CFile::modeRead, &error));
    EXPECT_EQ(error.m_cause, CFileException::fileNotFound);
    EXPECT_EQ(error.m_lOsError, ENOENT);
    EXPECT_FALSE(file.Open(nullptr, CFile::modeRead));
    EXPECT_EQ(file_cause_of([&] { CFile(scratch.path().c_str(), CFile::modeWrite); }),
              CFileException::accessDenied);
}

TEST(CFile, one_that_is_not_open_refuses_everything_but_closing) {
    CFile file;
    char byte = 0;
    EXPECT_EQ(file_cause_of([&] { file.Read(&byte, 1); }), CFileException::invalidFile);
    EXPECT_EQ(file_cause_of([&] { file.Write(&byte, 1); }), CFileException::invalidFile);
    EXPECT_EQ(file_cause_of([&] { file.Seek(0, CFile::begin); }), CFileException::invalidFile);
    EXPECT_EQ(file_cause_of([&] { file.GetLength(); }), CFileException::invalidFile);
    file.Close();
    file.Flush();
}

TEST(CFile, a_full_device_is_reported) {
    CFile file("/dev/full", CFile::modeWrite);
    EXPECT_EQ(file_cause_of([&] { file.Write("x", 1); }), CFileException::diskFull);
}

TEST(CFile, a_position_before_the_beginning_throws_badSeek) {
    const ScratchDirectory scratch;
    CFile file((scratch.path() + "/file").c_str(), CFile::modeReadWrite | CFile::modeCreate);
    EXPECT_EQ(file_cause_of([&] { file.Seek(-1, CFile::begin); }), CFileException::badSeek);
    CMemFile memory;
    EXPECT_EQ(file_cause_of([&] { memory.Seek(-1, CFile::end); }), CFileException::badSeek);
}

TEST(CMemFile, grows_overwrites_and_fills_gaps_with_zeros) {
    CMemFile file;
    file.Write("abcdef", 6);
    file.Seek(4, CFile::begin);
    file.Write("EFGH", 4);
    file.Seek(2, CFile::end);
    file.Write("!", 1);
    EXPECT_EQ(read_all(file), std::string("abcdEFGH\0\0!", 11));
    EXPECT_EQ(file.GetLength(), 11U);
}

TEST(CMemFile, bytes_of_the_caller_are_read_where_they_are_and_never_written) {
    const std::vector<unsigned char> bytes = {'a', 'b', 'c'};
    CMemFile file(bytes);
    EXPECT_EQ(file.bytes().data(), bytes.data());
    EXPECT_EQ(read_all(file), "abc");
    EXPECT_EQ(file_cause_of([&] { file.Write("x", 1); }), CFileException::accessDenied);
    file.Seek(5, CFile::begin);
    char byte = 0;
    EXPECT_EQ(file.Read(&byte, 1), 0U);
}

TEST(CMemFile, is_a_file_to_the_framework) {
    const CMemFile file;
    EXPECT_TRUE(file.IsKindOf(CFile::GetThisClass()));
    EXPECT_FALSE(CFile().IsKindOf(CMemFile::GetThisClass()));
    EXPECT_EQ(CMemFile::_GetBaseClass(), CFile::GetThisClass());
}
