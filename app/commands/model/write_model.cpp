// write_model: a triangle model as the bytes of a file.

#include "commands/model/write_model.h"

#include <mfc/CMemFile.h>
#include <nmknmt/nmkNMTFileMFC.h>
#include <nmknmt/nmkNMTFileWrite.h>
#include <nmkprogressbreak/nmkProgressBreak.h>
#include <nmktoolbox/trifile/nmkGiTriBlockColour.h>
#include <nmktoolbox/trifile/nmkSTLFileWrite.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

#include "files/base_name.h"

namespace nmk_model {

namespace {

constexpr std::int64_t max_count = std::numeric_limits<std::int32_t>::max();

// The reporter is called once for so many triangles or nodes.
constexpr std::int64_t items_between_reports = 4096;

/// The arrays of one block; empty ones where it lacks them.
struct BlockArrays {
    explicit BlockArrays(const giTriBlock& block) {
        if (block.get(nodes) == 0) nodes.make_data();
        if (block.get(triangles) == 0) triangles.make_data();
        has_normals = block.get(normals) != 0 && normals->size() == nodes->size();
        nmkGiTriBlockColourcoFeature feature;
        if (block.get(feature) != 0) colour = feature->get_colour();
    }

    const giPoint3& node(int index) const { return std::as_const(*nodes)[index]; }
    const giTriangle& triangle(int index) const { return std::as_const(*triangles)[index]; }

    giNodeXYZ nodes;
    giTriArrcoFeature triangles;
    giNormArrcoFeature normals;
    bool has_normals = false;
    int colour = -1;
};

giVector3 unit_normal(const giPoint3& p1, const giPoint3& p2, const giPoint3& p3) {
    const giVector3 normal = (p2 - p1).cross(p3 - p1);
    const double length = std::sqrt(normal.dot(normal));
    return length > 0.0 ? giVector3(normal.x / length, normal.y / length, normal.z / length)
                        : giVector3();
}

class Writer {
  public:
    Writer(const Model& model, nmkProgressBreak& progress)
        : m_model(model), m_progress(progress), m_file(m_memory) {
        for (const auto& block : model.blocks) {
            const BlockArrays arrays(*block);
            m_nodes += arrays.nodes->size();
            m_triangles += arrays.triangles->size();
        }
    }

    ModelOutput write(OutputFormat format) {
        const std::int64_t items = m_triangles + (format == OutputFormat::nmt ? m_nodes : 0);
        m_progress.send_progress_bar_to_0("Writing");
        m_progress.set_range(static_cast<double>(items));
        m_failed = m_nodes > max_count || m_triangles > max_count;
        if (!m_failed) {
            format == OutputFormat::nmt ? write_nmt() : write_stl();
        }
        m_progress.send_progress_bar_to_100();
        m_failed = m_file.close() != 0 || m_failed;
        return output();
    }

  private:
    ModelOutput output() const {
        if (m_is_stopped) return {.is_stopped = true};
        if (m_failed) return {.is_too_large = true};
        const auto bytes = static_cast<const CMemFile&>(*m_memory).bytes();
        return {.bytes = std::string(bytes.begin(), bytes.end())};
    }

    /// Notes the result of one call and reports progress; false where the writing ends.
    bool goes_on(int failed) {
        m_failed = m_failed || failed != 0;
        const bool is_reported = ++m_written % items_between_reports == 0;
        m_is_stopped = is_reported && m_progress.jump_to(static_cast<double>(m_written)) != 0;
        return !m_failed && !m_is_stopped;
    }

    void write_stl() {
        nmkSTLFileWrite writer{utObserverPtr<nmkNMTFile>(&m_file)};
        m_failed = writer.write_header("made by nmk model convert, in millimetres") != 0;
        bool goes_on = !m_failed;
        for (std::size_t i = 0; goes_on && i < m_model.blocks.size(); ++i) {
            goes_on = write_facets(writer, BlockArrays(*m_model.blocks[i]));
        }
        m_failed = m_failed || writer.write_end() != 0;
    }

    bool write_facets(nmkSTLFileWrite& writer, const BlockArrays& block) {
        for (int i = 0; i < block.triangles->size(); ++i) {
            const giTriangle& triangle = block.triangle(i);
            const giPoint3& p1 = block.node(triangle[0]);
            const giPoint3& p2 = block.node(triangle[1]);
            const giPoint3& p3 = block.node(triangle[2]);
            if (!goes_on(writer.write_facet(p1, p2, p3, unit_normal(p1, p2, p3)))) return false;
        }
        return true;
    }

    void write_nmt() {
        nmkNMTFileWrite writer(m_file);
        m_failed = writer.write_header(nmk_files::base_name(m_model.name), true,
                                       static_cast<std::int32_t>(m_model.blocks.size()),
                                       static_cast<std::int32_t>(m_nodes),
                                       static_cast<std::int32_t>(m_triangles)) != 0;
        bool goes_on = !m_failed;
        for (std::size_t i = 0; goes_on && i < m_model.blocks.size(); ++i) {
            const BlockArrays block(*m_model.blocks[i]);
            m_failed = writer.write_block(block.nodes->size(), block.triangles->size(),
                                          block.has_normals, block.colour) != 0;
            goes_on = !m_failed && write_nodes(writer, block) && write_triangles(writer, block);
        }
    }

    bool write_nodes(nmkNMTFileWrite& writer, const BlockArrays& block) {
        for (int i = 0; i < block.nodes->size(); ++i) {
            const int failed =
                block.has_normals
                    ? writer.write_node(block.node(i), std::as_const(*block.normals)[i])
                    : writer.write_node(block.node(i));
            if (!goes_on(failed)) return false;
        }
        return true;
    }

    bool write_triangles(nmkNMTFileWrite& writer, const BlockArrays& block) {
        for (int i = 0; i < block.triangles->size(); ++i) {
            if (!goes_on(writer.write_tri(block.triangle(i)))) return false;
        }
        return true;
    }

    const Model& m_model;
    nmkProgressBreak& m_progress;
    CFilecoPrf m_memory{new CMemFile};
    nmkNMTFileMFC m_file;
    std::int64_t m_nodes = 0;
    std::int64_t m_triangles = 0;
    std::int64_t m_written = 0;  // triangles and nodes
    bool m_failed = false;
    bool m_is_stopped = false;
};

}  // namespace

ModelOutput write_model(const Model& model, OutputFormat format, nmkProgressBreak& progress) {
    return Writer(model, progress).write(format);
}

}  // namespace nmk_model
