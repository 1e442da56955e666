// Files of a single curve or surface: written, listed, read back, and refused.
#include <gtest/gtest.h>
#include <mfc/CArchive.h>
#include <ngk/ngkElementarySurfs.h>
#include <ngk/ngkLine.h>
#include <ngk/ngkReverseCurve.h>
#include <ngk/ngk_persistence.h>
#include <nmktoolbox/curves/nmkNgkReadUtils.h>
#include <nmktoolbox/curves/nmkNgkWriteUtils.h>
#include <pers/psArchiveFile.h>
#include <topology/top_persistence.h>

#include <cerrno>
#include <cmath>

#include "archive_failure.h"
#include "disk_fault.h"
#include "file_contents.h"
#include "scratch_directory.h"
#include "stored_handles.h"
#include "topology_samples.h"
#include "zip_tools.h"

namespace {

using stored_handles::stored;

ngkCurvePtr3 line() { return ngkCurvePtr3(new ngkLine3(giPoint3(1, 2, 3), giPoint3(4, 5, 6))); }
ngkSurfPtr cylinder() { return ngkSurfPtr(new ngkCylinderSurf(giWorkplane3(), 2.5)); }

class nmkNgkWriteUtilsTest : public testing::Test {
  protected:
    std::string path(const std::string& name = "a.ngk") const {
        return scratch.path() + "/" + name;
    }

    /// What the stream of this name holds; an empty handle where there is none.
    template <class Handle>
    Handle read_from(const char* stream) const {
        psArchiveFile file(psArchiveFileHeader(), path().c_str(), psFileModeRead);
        CArchive* archive = nullptr;
        Handle handle;
        if (file.read_archive(stream, archive) == 0) *archive >> handle;
        return handle;
    }

    std::vector<utString> texts_of_header() const {
        psArchiveFile file(psArchiveFileHeader(), path().c_str(), psFileModeRead);
        return file.header().texts();
    }

    ScratchDirectory scratch;
};

using nmkNgkReadUtilsTest = nmkNgkWriteUtilsTest;

}  // namespace

TEST_F(nmkNgkWriteUtilsTest, writes_a_curve_as_wireframe_curve_1) {
    nmkNgkWriteUtils::write_single_curve(path().c_str(), line());
    EXPECT_EQ(stored(read_from<ngkCurvePtr3>("/wireframe/Curve/1")), stored(line()));
}

TEST_F(nmkNgkWriteUtilsTest, writes_a_surface_as_surface_1) {
    nmkNgkWriteUtils::write_single_surface(path().c_str(), cylinder());
    EXPECT_EQ(stored(read_from<ngkSurfPtr>("/surface/1")), stored(cylinder()));
}

TEST_F(nmkNgkWriteUtilsTest, writes_a_topology_as_the_first_face_of_a_single_shell) {
    const topTopologyPtr face = topology_samples::ring();
    nmkNgkWriteUtils::write_single_topology(path().c_str(), face);
    EXPECT_EQ(stored(read_from<topTopologyPtr>("/topology/shell/single/face/1")), stored(face));
}

TEST_F(nmkNgkWriteUtilsTest, writes_a_zip_that_other_programs_list) {
    nmkNgkWriteUtils::write_single_curve(path().c_str(), line());
    EXPECT_EQ(zip_tools::unzip_test(path()), "exit 0\n");
    EXPECT_EQ(zip_tools::python(path(), "print(*z.namelist())"),
              "archive-file-header /wireframe/Curve/1\nexit 0\n");
}

TEST_F(nmkNgkWriteUtilsTest, has_a_header_of_o_t_t) {
    const std::vector<utString> expected = {"o", "t", "t"};
    nmkNgkWriteUtils::write_single_curve(path().c_str(), line());
    EXPECT_EQ(texts_of_header(), expected);
    nmkNgkWriteUtils::write_single_surface(path().c_str(), cylinder());
    EXPECT_EQ(texts_of_header(), expected);
    nmkNgkWriteUtils::write_single_topology(path().c_str(), topology_samples::ring());
    EXPECT_EQ(texts_of_header(), expected);
}

TEST_F(nmkNgkWriteUtilsTest, writes_an_empty_handle_as_an_empty_handle) {
    nmkNgkWriteUtils::write_single_curve(path().c_str(), ngkCurvePtr3());
    ngkCurvePtr3 curve = line();
    EXPECT_EQ(nmkNgkReadUtils::read_single_curve(path().c_str(), curve), 0);
    EXPECT_FALSE(curve);
}

TEST_F(nmkNgkWriteUtilsTest, replaces_the_file_that_was_there) {
    nmkNgkWriteUtils::write_single_surface(path().c_str(), cylinder());
    nmkNgkWriteUtils::write_single_curve(path().c_str(), line());
    EXPECT_FALSE(read_from<ngkSurfPtr>("/surface/1"));
    EXPECT_EQ(scratch.file_count(), 1U);
}

TEST_F(nmkNgkWriteUtilsTest, leaves_the_file_as_it_was_where_a_curve_cannot_be_stored) {
    nmkNgkWriteUtils::write_single_curve(path().c_str(), line());
    const std::string before = contents_of(path());
    const ngkCurvePtr3 invalid(new ngkLine3(giPoint3(std::nan(""), 0, 0), giPoint3(0, 0, 0)));
    EXPECT_EQ(cause_of([&] { nmkNgkWriteUtils::write_single_curve(path().c_str(), invalid); }),
              CArchiveException::badSchema);
    EXPECT_EQ(contents_of(path()), before);
    EXPECT_EQ(scratch.file_count(), 1U);
}

TEST_F(nmkNgkWriteUtilsTest, throws_the_error_of_a_file_that_cannot_be_created) {
    for (const std::string& name : {path("missing/a.ngk"), std::string()}) {
        try {
            nmkNgkWriteUtils::write_single_curve(name.c_str(), line());
            ADD_FAILURE() << name;
        } catch (const CFileException& failure) {
            EXPECT_EQ(failure.m_lOsError, name.empty() ? EINVAL : ENOENT);
        }
    }
    EXPECT_THROW(nmkNgkWriteUtils::write_single_curve(nullptr, line()), CFileException);
}

TEST_F(nmkNgkWriteUtilsTest, throws_where_the_disk_is_full_at_the_end) {
    const Fault fault("fsync", ENOSPC);
    EXPECT_THROW(nmkNgkWriteUtils::write_single_curve(path().c_str(), line()), CFileException);
    EXPECT_EQ(scratch.file_count(), 0U);
}

TEST_F(nmkNgkReadUtilsTest, reads_what_was_written) {
    nmkNgkWriteUtils::write_single_curve(path().c_str(), line());
    ngkCurvePtr3 curve;
    ASSERT_EQ(nmkNgkReadUtils::read_single_curve(path().c_str(), curve), 0);
    EXPECT_EQ(stored(curve), stored(line()));
    nmkNgkWriteUtils::write_single_surface(path().c_str(), cylinder());
    ngkSurfPtr surface;
    ASSERT_EQ(nmkNgkReadUtils::read_single_surface(path().c_str(), surface), 0);
    EXPECT_EQ(stored(surface), stored(cylinder()));
    const topTopologyPtr shell = topology_samples::tetrahedron();
    nmkNgkWriteUtils::write_single_topology(path().c_str(), shell);
    topTopologyPtr topology;
    ASSERT_EQ(nmkNgkReadUtils::read_single_topology(path().c_str(), topology), 0);
    EXPECT_EQ(stored(topology), stored(shell));
}

TEST_F(nmkNgkReadUtilsTest, returns_enoent_for_a_file_without_a_curve) {
    nmkNgkWriteUtils::write_single_surface(path().c_str(), cylinder());
    ngkCurvePtr3 curve = line();
    EXPECT_EQ(nmkNgkReadUtils::read_single_curve(path().c_str(), curve), ENOENT);
    EXPECT_FALSE(curve);
    EXPECT_EQ(nmkNgkReadUtils::read_single_curve(path("missing").c_str(), curve), ENOENT);
    EXPECT_EQ(nmkNgkReadUtils::read_single_curve(nullptr, curve), EINVAL);
}

TEST_F(nmkNgkReadUtilsTest, refuses_every_prefix_of_a_file) {
    nmkNgkWriteUtils::write_single_curve(path().c_str(), line());
    const std::string whole = contents_of(path());
    for (std::size_t size = 0; size < whole.size(); ++size) {
        scratch.file("cut.ngk", whole.substr(0, size));
        ngkCurvePtr3 curve;
        EXPECT_NE(nmkNgkReadUtils::read_single_curve(path("cut.ngk").c_str(), curve), 0) << size;
        EXPECT_FALSE(curve);
    }
}

TEST_F(nmkNgkReadUtilsTest, refuses_a_stream_of_something_else) {
    {
        psArchiveFile file(psArchiveFileHeader(), path().c_str(), psFileModeWrite);
        CArchive* archive = nullptr;
        ASSERT_EQ(file.write_archive("/wireframe/Curve/1", archive), 0);
        *archive << cylinder();
    }
    ngkCurvePtr3 curve;
    EXPECT_EQ(nmkNgkReadUtils::read_single_curve(path().c_str(), curve), EBADMSG);
}
