#include <nmktoolbox/trifile/TriangleFileTTR.h>

namespace {

constexpr int header_text_size = 80;
constexpr int floats_behind_the_count = 8;

// The percent function is called before each triangle whose number is a multiple of this.
constexpr std::uint32_t triangles_between_reports = 1000;

}  // namespace

TriangleFileTTR::TriangleFileTTR() : TriangleFileSTL(nullptr) {}

TriangleFileTTR::~TriangleFileTTR() = default;

int TriangleFileTTR::read_header() {
    m_triangles_in_file = 0;
    m_triangles_read = 0;
    char character = 0;
    unsigned long unused_number = 0;
    unsigned long count = 0;
    float unused = 0.0F;
    int failed = 0;
    for (int i = 0; i < header_text_size && failed == 0; ++i) failed = b_read_char(&character);
    if (failed == 0) failed = b_read_ulong(&unused_number);
    if (failed == 0) failed = b_read_ulong(&count);
    for (int i = 0; i < floats_behind_the_count && failed == 0; ++i) failed = b_read_float(&unused);
    if (failed == 0) m_triangles_in_file = static_cast<std::uint32_t>(count);
    return failed;
}

int TriangleFileTTR::read_next(double* const corners, int& flag, giColour&) {
    flag = 0;
    if (m_triangles_read >= m_triangles_in_file) return 1;
    if (m_triangles_read % triangles_between_reports == 0 && show_percent() != 0) return 2;
    for (int i = 0; i < 9; ++i) {
        float value = 0.0F;
        const int failed = b_read_float(&value);
        if (failed != 0) return failed;
        corners[i] = static_cast<double>(value);
    }
    ++m_triangles_read;
    if (check_nan(corners) == 0) merge_corners(corners);
    count_triangles(1);
    return 0;
}
