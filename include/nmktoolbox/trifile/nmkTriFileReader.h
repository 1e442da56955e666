// nmkTriFileReader: reads a triangle model from a file or the clipboard, in any format.
//
// The extension of the name chooses the format, upper and lower case alike:
//
//     .tri          TriangleFileFlue
//     .nmt .nmlmt   nmkTriFileNMT
//     .stl          TriangleFileSTL, corners at the same place sharing a node
//     .ttr          TriangleFileTTR
//
// A name without a base means the clipboard (nmkNMTFileMaker). While a reader exists, its thread
// reads and writes numbers with a decimal point. Reading operations return a status of
// TriangleFile. For one thread at a time.
#pragma once

#include <geometry/giBox3.h>
#include <geometry/giTriBlock.h>
#include <nls/nlsNeutralNumbers.h>
#include <nmkprogressbreak/nmkProgressBreak.h>
#include <nmktoolbox/export.h>
#include <nmktoolbox/trifile/nmkNMTFileMaker.h>
#include <stlfile/TriangleFile.h>
#include <stlfile/slfINodeUnduplicator.h>

#include <cstdint>
#include <memory>

class NMKTOOLBOX_EXPORT nmkTriFileReader {
  public:
    /// Opens the file; is_valid reports whether that worked.
    ///
    ///   filename      the name; null is of no format
    ///   progress      receives percentages of a range of 100, and may stop the reading; borrowed
    ///   merge         non-zero: get_blocks puts all blocks of the file into one
    ///   with_normals  0 removes the normals of every block that is read into
    ///   stl_scale     factor for the coordinates of ".stl", which has no unit; the other formats
    ///                 ignore it
    nmkTriFileReader(char const* filename, nmkProgressBreak& progress, int merge, int with_normals,
                     double stl_scale);

    /// The same with a maker of the file object, which is borrowed for the call.
    nmkTriFileReader(char const* filename, nmkProgressBreak& progress, int merge, int with_normals,
                     double stl_scale, nmkNMTFileMaker& maker);
    nmkTriFileReader(const nmkTriFileReader&) = delete;
    nmkTriFileReader& operator=(const nmkTriFileReader&) = delete;
    ~nmkTriFileReader();

    /// False for an extension of no format, and for a file that cannot be opened or whose header is
    /// bad. Reading from an invalid reader returns 1.
    bool is_valid() const noexcept { return m_reader != nullptr; }

    /// Appends the whole file to `block`. Never returns 0: 1 is the good end. What was read before
    /// a failure stays, and those of its nodes that belong to the block that failed are not scaled.
    int get_block(giTriBlock* block);

    /// Appends new blocks, which the caller owns, to the list: those of the file that have nodes,
    /// or with merge one for all. Returns 1; on anything else every block of the list, also those
    /// that were there before, is destroyed and the list is empty. With merge, a first block
    /// without nodes leaves nothing to be listed.
    int get_blocks(giTriBlockcoSListPtrcoPtrcoSList* list);

    /// The box of the nodes that were read, scaled; empty before the first one.
    giBox3 get_box() const;

    /// See TriangleFile. They reach the format at the start of the next block.
    void nan_cause_error(int is_error) noexcept { m_is_nan_error = is_error; }
    void ignore_nan_triangles(int is_ignored) noexcept { m_is_nan_ignored = is_ignored; }

    /// Number of triangles that were left out.
    int invalid_data_ignored() const;

    /// Closes the file. What is read afterwards is at the end of the data.
    void read_close();

  protected:
    void setup_reader(char const* filename, nmkProgressBreak& progress, int merge, int with_normals,
                      double stl_scale);
    void setup_file(nmkNMTFileMaker& maker);

  private:
    explicit nmkTriFileReader(nmkProgressBreak& progress);

    void choose_format(char const* filename, double stl_scale);
    int fill_block(giTriBlock* block);
    int read_block(giTriBlock& block);
    int read_list(giTriBlockcoSListPtrcoPtrcoSList& list);
    static int show_percent(int percent, void* reader);

    nlsNeutralNumbers m_neutral_numbers;
    std::unique_ptr<TriangleFile> m_reader;  // null where there is none
    std::int32_t m_with_normals = 0;
    std::int32_t m_merge = 0;
    nmkProgressBreak& m_progress;
    double m_scale = 1.0;
    std::int32_t m_is_nan_error = 0;
    std::int32_t m_is_nan_ignored = 0;
    slfINodeUnduplicatorcoPrf m_unduplicator;  // null but for ".stl"
};
