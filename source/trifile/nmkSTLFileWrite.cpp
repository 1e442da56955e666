#include <geometry/giTriBlock.h>
#include <nmktoolbox/trifile/nmkSTLFileWrite.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <utility>

namespace {

constexpr int header_text_size = 80;
constexpr std::int64_t header_size = 84;
constexpr std::int64_t facet_size = 50;

constexpr std::int64_t max_position = std::numeric_limits<std::int32_t>::max();

constexpr char default_header[] = "STL file written by BrackMILL";

static_assert(std::endian::native == std::endian::little, "numbers are written as they are");

// The nearest float; a double past the range of float is infinite.
float as_float(double value) {
    constexpr double largest = std::numeric_limits<float>::max();
    // Half a step past the largest float: from here on the nearest is infinity.
    constexpr double end_of_floats = largest + 0x1p103;
    if (!(std::fabs(value) > largest)) return static_cast<float>(value);  // NaN as well
    const bool is_infinite = std::fabs(value) >= end_of_floats;
    const float size =
        is_infinite ? std::numeric_limits<float>::infinity() : std::numeric_limits<float>::max();
    return value < 0.0 ? -size : size;
}

bool has_node(const giBoxArrPoint3& nodes, std::int32_t index) {
    return index >= 0 && index < nodes.size();
}

}  // namespace

nmkSTLFileWrite::nmkSTLFileWrite(utObserverPtr<nmkNMTFile> file)
    : m_file(std::move(file)), m_is_header_written(0), m_facets_written(0), m_position(-1) {}

int nmkSTLFileWrite::write_header(char const* text) {
    char header[header_text_size] = {};
    if (text != nullptr) {
        std::memcpy(header, text, std::min(std::strlen(text), sizeof header - 1));
    }
    if (seek_file(0) != 0 || write_file(header, sizeof header) != 0) return 1;
    m_is_header_written = 1;
    return 0;
}

int nmkSTLFileWrite::write_facet(double const* const v1, double const* const v2,
                                 double const* const v3, double const* const normal) {
    char facet[facet_size] = {};
    char* at = facet;
    for (double const* const vector : {normal, v1, v2, v3}) {
        for (int i = 0; i < 3; ++i, at += sizeof(float)) {
            const float value = as_float(vector[i]);
            std::memcpy(at, &value, sizeof value);
        }
    }
    if (seek_file(header_size + facet_size * m_facets_written) != 0 ||
        write_file(facet, sizeof facet) != 0) {
        return 1;
    }
    ++m_facets_written;
    return 0;
}

int nmkSTLFileWrite::write_facet(giPoint3 const& p1, giPoint3 const& p2, giPoint3 const& p3,
                                 giVector3 const& normal) {
    const double values[4][3] = {
        {p1.x, p1.y, p1.z}, {p2.x, p2.y, p2.z}, {p3.x, p3.y, p3.z}, {normal.x, normal.y, normal.z}};
    return write_facet(values[0], values[1], values[2], values[3]);
}

// Deliberate: the normal keeps its length.
int nmkSTLFileWrite::write_facet(giPoint3 const& p1, giPoint3 const& p2, giPoint3 const& p3) {
    return write_facet(p1, p2, p3, (p1 - p2).cross(p2 - p3));
}

int nmkSTLFileWrite::write_facet(giPoint3 const& p1, giPoint3 const& p2, giPoint3 const& p3,
                                 giXform3 const& xform) {
    return write_facet(xform.transform(p1), xform.transform(p2), xform.transform(p3));
}

int nmkSTLFileWrite::write_triblock(giTriBlock const& block) {
    giTriArrcoFeature triangles;
    giNodeXYZ nodes;
    if (block.get(triangles) == 0 || triangles->size() == 0) return 0;
    if (block.get(nodes) == 0) return 1;
    for (const giTriangle& triangle : std::as_const(*triangles)) {
        for (int k = 0; k < 3; ++k) {
            if (!has_node(*nodes, triangle[k])) return 1;
        }
        const int failed =
            write_facet((*nodes)[triangle[0]], (*nodes)[triangle[1]], (*nodes)[triangle[2]]);
        if (failed != 0) return failed;
    }
    return 0;
}

int nmkSTLFileWrite::write_end() {
    if (m_is_header_written != 0) {
        if (seek_file(header_text_size) != 0) return 1;
    } else if (write_header(default_header) != 0) {
        return 1;
    }
    const auto count = static_cast<std::uint32_t>(m_facets_written);
    return write_file(&count, sizeof count);
}

int nmkSTLFileWrite::seek_file(std::int64_t position) {
    // The position behind the bytes to be written has to be known as well.
    if (position > max_position - facet_size) return fail();
    if (m_position == position) return 0;
    if (!m_file || m_file->seek(position, apNMKSeekBegin) != 0) return fail();
    m_position = static_cast<std::int32_t>(position);
    return 0;
}

int nmkSTLFileWrite::write_file(void const* bytes, int size) {
    const auto wanted = static_cast<std::size_t>(size);
    if (!m_file || m_file->write(bytes, 1, wanted) != wanted) return fail();
    m_position += size;
    return 0;
}

// Deliberate: where the file is after a failure is unknown, so the next operation moves it.
int nmkSTLFileWrite::fail() {
    if (m_file) m_file->set_error(0, nmkNMTErrWrite);
    m_position = -1;
    return 1;
}
