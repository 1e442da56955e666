#include <gtest/gtest.h>
#include <mfc/CException.h>

#include <cstring>
#include <memory>
#include <set>
#include <string>

TEST(CException, is_caught_as_its_bases) {
    EXPECT_THROW(throw CArchiveException(CArchiveException::badClass), CException);
    EXPECT_THROW(throw CFileException(CFileException::diskFull), std::exception);
    EXPECT_TRUE(CArchiveException().IsKindOf(CException::GetThisClass()));
    EXPECT_TRUE(CFileException().IsKindOf(CObject::GetThisClass()));
    EXPECT_FALSE(CFileException().IsKindOf(CArchiveException::GetThisClass()));
}

TEST(CException, each_cause_has_a_message_of_its_own) {
    std::set<std::string> messages;
    for (int cause = CArchiveException::none; cause <= CArchiveException::badSchema; ++cause) {
        messages.insert(CArchiveException(static_cast<CArchiveException::Cause>(cause)).what());
    }
    EXPECT_EQ(messages.size(), 8U);
    messages.clear();
    for (int cause = CFileException::none; cause <= CFileException::diskFull; ++cause) {
        messages.insert(CFileException(static_cast<CFileException::Cause>(cause)).what());
    }
    EXPECT_EQ(messages.size(), 10U);
}

TEST(CException, its_message_is_cut_to_the_buffer) {
    CArchiveException failure(CArchiveException::endOfFile);
    char buffer[8] = "-------";
    unsigned int help_context = 7;
    EXPECT_EQ(failure.GetErrorMessage(buffer, 5, &help_context), 1);
    EXPECT_STREQ(buffer, "The ");
    EXPECT_EQ(buffer[5], '-');
    EXPECT_EQ(help_context, 0U);
    EXPECT_EQ(failure.GetErrorMessage(nullptr, 5), 0);
    EXPECT_EQ(failure.GetErrorMessage(buffer, 0), 0);
}

TEST(CException, one_on_the_heap_deletes_itself) {
    // A leak or a second deletion would be reported by the address sanitizer.
    try {
        // NOLINTNEXTLINE(misc-throw-by-value-catch-by-reference): callers of CException may do so
        throw new CArchiveException(CArchiveException::generic);
        // NOLINTNEXTLINE(misc-throw-by-value-catch-by-reference)
    } catch (CException* failure) {
        EXPECT_STREQ(failure->what(), CArchiveException(CArchiveException::generic).what());
        failure->Delete();
    }
}
