#include <stlfile/TriangleFile.h>
#include <stlfile/slfINodeUnduplicator.h>

#include <cmath>
#include <limits>

namespace {

// The length of a normal differs from 1 by at most this.
constexpr double unit_length_tolerance = 1e-4;

}  // namespace

apINMKFile::~apINMKFile() = default;

slfINodeUnduplicator::~slfINodeUnduplicator() = default;

TriangleFile::TriangleFile() = default;

TriangleFile::~TriangleFile() { drop_file(); }

void TriangleFile::read_close() {
    read_tidy();
    drop_file();
}

int TriangleFile::read_init(utPtrClaim claim, apINMKFile* file) {
    drop_file();
    m_file = file;
    m_claim = claim;
    m_box = giBox3();
    m_triangle_count = 0;
    m_ignored_count = 0;
    return m_file != nullptr ? read_header() : 1;
}

void TriangleFile::set_percent_func(int (*function)(int percent, void* data), void* data) {
    m_percent_function = function;
    m_percent_data = data;
}

int TriangleFile::show_percent() const {
    return m_percent_function != nullptr ? m_percent_function(percent_read(), m_percent_data) : 0;
}

void TriangleFile::nan_cause_error(int is_error) { m_is_nan_error = is_error; }

void TriangleFile::ignore_nan_triangles(int is_ignored) { m_is_nan_ignored = is_ignored; }

int TriangleFile::invalid_data_ignored() const { return m_ignored_count; }

giBox3 TriangleFile::get_box() const { return m_box; }

int TriangleFile::is_unit(double const* const vector) const {
    const double square = vector[0] * vector[0] + vector[1] * vector[1] + vector[2] * vector[2];
    return std::fabs(std::sqrt(square) - 1.0) <= unit_length_tolerance ? 1 : 0;
}

void TriangleFile::merge_corners(double const* const corners) {
    for (int i = 0; i < 9; i += 3) m_box.add({corners[i], corners[i + 1], corners[i + 2]});
}

void TriangleFile::count_triangles(std::int32_t count) {
    if (__builtin_add_overflow(m_triangle_count, count, &m_triangle_count)) {
        m_triangle_count = std::numeric_limits<std::int32_t>::max();
    }
}

int TriangleFile::fate_of_nan() const {
    if (m_is_nan_error != 0) return 3;
    return m_is_nan_ignored != 0 ? 1 : 0;
}

void TriangleFile::read_tidy() {}

void TriangleFile::drop_file() {
    if (m_claim == utPtrClaimed) delete m_file;
    m_file = nullptr;
    m_claim = utPtrBorrow;
}
