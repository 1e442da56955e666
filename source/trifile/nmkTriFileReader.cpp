#include <nmktoolbox/files/nmkFilenameExt.h>
#include <nmktoolbox/trifile/TriangleFileFlue.h>
#include <nmktoolbox/trifile/TriangleFileTTR.h>
#include <nmktoolbox/trifile/nmkNodeUnduplicator.h>
#include <nmktoolbox/trifile/nmkTriFileNMT.h>
#include <nmktoolbox/trifile/nmkTriFileReader.h>
#include <stlfile/TriangleFileSTL.h>

#include <new>

#include "scaling.h"

namespace {

constexpr double range_of_progress = 100.0;

int node_count(const giTriBlock& block) {
    giNodeXYZ nodes;
    return block.get(nodes) != 0 ? nodes->size() : 0;
}

void scale_nodes(giTriBlock& block, int first, double factor) {
    giNodeXYZ nodes;
    if (block.get(nodes) == 0) return;
    for (int i = first; i < nodes->size(); ++i) {
        nodes->set(i, nmk_trifile::scaled((*nodes)[i], factor));
    }
}

void remove_normals(giTriBlock& block) {
    giNormArrcoFeature normals;
    block.remove(normals);
}

}  // namespace

nmkTriFileReader::nmkTriFileReader(nmkProgressBreak& progress)
    : m_neutral_numbers(nlsTranslationNone), m_progress(progress) {}

nmkTriFileReader::nmkTriFileReader(char const* filename, nmkProgressBreak& progress, int merge,
                                   int with_normals, double stl_scale)
    : nmkTriFileReader(progress) {
    nmkNMTFileMaker maker(filename);
    setup_reader(filename, progress, merge, with_normals, stl_scale);
    setup_file(maker);
}

nmkTriFileReader::nmkTriFileReader(char const* filename, nmkProgressBreak& progress, int merge,
                                   int with_normals, double stl_scale, nmkNMTFileMaker& maker)
    : nmkTriFileReader(progress) {
    setup_reader(filename, progress, merge, with_normals, stl_scale);
    setup_file(maker);
}

nmkTriFileReader::~nmkTriFileReader() {
    read_close();
    m_reader.reset();
}

void nmkTriFileReader::setup_reader(char const* filename, nmkProgressBreak& progress, int merge,
                                    int with_normals, double stl_scale) {
    m_merge = merge;
    m_with_normals = with_normals;
    choose_format(filename, stl_scale);
    if (m_reader == nullptr) return;
    m_reader->set_percent_func(show_percent, this);
    progress.set_range(range_of_progress);
}

void nmkTriFileReader::choose_format(char const* filename, double stl_scale) {
    const auto ends_with = [filename](char const* extension) {
        return nmkCheckFilenameExt(filename, extension) != 0;
    };
    if (ends_with(".tri")) {
        m_reader = std::make_unique<TriangleFileFlue>(m_with_normals);
    } else if (ends_with(".nmt") || ends_with(".nmlmt")) {
        m_reader = std::make_unique<nmkTriFileNMT>(m_with_normals);
    } else if (ends_with(".stl")) {
        m_unduplicator = slfINodeUnduplicatorcoPrf(new nmkNodeUnduplicator);
        m_reader = std::make_unique<TriangleFileSTL>(m_unduplicator.get());
        // Deliberate: the only format that is scaled, since it has no unit.
        m_scale = stl_scale;
    } else if (ends_with(".ttr")) {
        m_reader = std::make_unique<TriangleFileTTR>();
    }
}

void nmkTriFileReader::setup_file(nmkNMTFileMaker& maker) {
    if (m_reader == nullptr) return;
    if (m_reader->read_init(utPtrClaimed, maker.create_nmt_file().release()) != 0) m_reader.reset();
}

int nmkTriFileReader::get_block(giTriBlock* block) {
    int status = 0;
    while (status == 0) status = fill_block(block);
    if (m_with_normals == 0) remove_normals(*block);
    return status;
}

int nmkTriFileReader::get_blocks(giTriBlockcoSListPtrcoPtrcoSList* list) {
    const int status = read_list(*list);
    if (m_with_normals == 0) {
        for (giTriBlock* block : *list) remove_normals(*block);
    }
    if (status == 1) return status;
    for (giTriBlock* block : *list) delete block;
    list->clear();
    return status;
}

// Reads blocks and lists those with nodes. Returns the status that ended the reading, never 0.
int nmkTriFileReader::read_list(giTriBlockcoSListPtrcoPtrcoSList& list) {
    std::unique_ptr<giTriBlock> unlisted;
    giTriBlock* block = nullptr;
    bool is_first = true;
    for (;;) {
        if (m_merge == 0 || is_first) {
            unlisted = std::make_unique<giTriBlock>();
            block = unlisted.get();
        }
        const int status = fill_block(block);
        if (status != 0) {
            if (m_merge != 0) gi_repage_tri_block(*block);
            return status;
        }
        if (m_merge != 0 && !is_first) continue;
        // Deliberate: what follows a first block without nodes is merged into it, and not listed.
        if (node_count(*block) > 0) {
            // Pages as small as a small first block would be far too many for those that follow.
            if (m_merge == 0) gi_repage_tri_block(*block);
            list.insert_last(block);
            static_cast<void>(unlisted.release());
        }
        is_first = false;
    }
}

giBox3 nmkTriFileReader::get_box() const {
    if (m_reader == nullptr) return giBox3();
    const giBox3 box = m_reader->get_box();
    return m_scale == 1.0 ? box : nmk_trifile::scaled(box, m_scale);
}

int nmkTriFileReader::invalid_data_ignored() const {
    return m_reader != nullptr ? m_reader->invalid_data_ignored() : 0;
}

void nmkTriFileReader::read_close() {
    if (m_reader != nullptr) m_reader->read_close();
}

// Reads one block of the file and scales its nodes, but not those of a block that failed.
int nmkTriFileReader::fill_block(giTriBlock* block) {
    if (m_reader == nullptr) return 1;
    m_reader->nan_cause_error(m_is_nan_error);
    m_reader->ignore_nan_triangles(m_is_nan_ignored);
    const int start = node_count(*block);
    const int status = read_block(*block);
    if (status == 0 && m_scale != 1.0) scale_nodes(*block, start, m_scale);
    return status;
}

int nmkTriFileReader::read_block(giTriBlock& block) {
    try {
        return m_reader->get_block(block);
    } catch (const std::bad_alloc&) {
        return 3;
    }
}

int nmkTriFileReader::show_percent(int percent, void* reader) {
    return static_cast<nmkTriFileReader*>(reader)->m_progress.jump_to(static_cast<double>(percent));
}
