// TriangleFile: a reader of one format of triangle models.
//
// Every reading operation returns a status:
//
//     0  a block or triangle was delivered, more may follow
//     1  end of the data (from read_header: the header could not be read)
//     2  the user stopped the reading through the percent function
//     3  the data are bad, or memory ran out
//
// A format overrides the virtual operations. It reads from m_file, which is null while no file is
// open, merges each point into m_box, and counts triangles in m_triangle_count. For one thread at a
// time.
#pragma once

#include <geometry/giBox3.h>
#include <stlfile/apINMKFile.h>
#include <utils/utPtrClaim.h>

#include <cmath>
#include <cstdint>

#pragma GCC visibility push(default)

class giTriBlock;

class TriangleFile {
  public:
    TriangleFile(const TriangleFile&) = delete;
    TriangleFile& operator=(const TriangleFile&) = delete;

    /// Closes the file. Arrays of a format are freed by the format's own destructor.
    virtual ~TriangleFile();

    /// Reads the next triangle: nine doubles, x y z of the first to the third corner. Returns a
    /// status.
    virtual int read_next(double* const corners) = 0;

    /// Appends the next block of the file to `block`. Returns a status.
    virtual int get_block(giTriBlock& block) = 0;

    /// How much has been read, from 0; what a format counts as 100 is its own.
    virtual int percent_read() const = 0;

    /// Frees what the last block has left (read_tidy) and closes the file. What is read afterwards
    /// is at the end of the data.
    virtual void read_close();

    /// Takes the file, closing an earlier one, forgets box and counts, and reads the header.
    ///
    ///   claim    utPtrClaimed makes this the owner of the file, whatever is returned
    ///   returns  0, or non-zero where the header could not be read or `file` is null
    int read_init(utPtrClaim claim, apINMKFile* file);

    /// The function that show_percent calls with the percentage and `data`; null removes it. It
    /// returns non-zero to stop the reading.
    void set_percent_func(int (*function)(int percent, void* data), void* data);

    /// Reports percent_read to the percent function. Returns its result; 0 without a function.
    int show_percent() const;

    /// Non-zero: a triangle with a coordinate that is NaN ends the reading with status 3. It comes
    /// before ignore_nan_triangles.
    void nan_cause_error(int is_error);

    /// Non-zero: triangles with a coordinate that is NaN are left out and counted.
    void ignore_nan_triangles(int is_ignored);

    /// Number of triangles that were left out.
    int invalid_data_ignored() const;

    /// The box of the points that were read; empty before the first one.
    giBox3 get_box() const;

  protected:
    TriangleFile();

    /// Non-zero where the length of the vector, 3 doubles, is 1 within 1e-4.
    int is_unit(double const* const vector) const;

    /// Merges the three corners into the box.
    void merge_corners(double const* const corners);

    /// Adds to the number of triangles of the file, which stays at the largest int.
    void count_triangles(std::int32_t count);

    /// What is to be done with a triangle: 0 deliver, 1 leave it out, 3 end the reading.
    int check_nan(double const* const corners) const {
        int nan_count = 0;
        for (int i = 0; i < 9; ++i) nan_count += std::isnan(corners[i]) ? 1 : 0;
        return nan_count == 0 ? 0 : fate_of_nan();
    }

    giBox3 m_box;
    std::int32_t m_triangle_count = 0;  // triangles of the file that were read
    apINMKFile* m_file = nullptr;
    std::int32_t m_ignored_count = 0;  // triangles that were left out

  private:
    /// Reads the header from the beginning of the file. Returns 0, or non-zero on failure.
    virtual int read_header() = 0;

    /// Frees what reading a block has left.
    virtual void read_tidy();

    int fate_of_nan() const;
    void drop_file();

    utPtrClaim m_claim = utPtrBorrow;
    int (*m_percent_function)(int, void*) = nullptr;
    void* m_percent_data = nullptr;
    int m_is_nan_error = 0;
    int m_is_nan_ignored = 0;
};

#pragma GCC visibility pop
