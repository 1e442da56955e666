// nmkSTLFileWrite: writes binary STL to a file that the caller has opened and keeps.
//
// Header and facets may come in any order; the facet count is written at the end, by write_end, and
// a writer that is destroyed without it leaves a file without a count. The position is known from
// the count of facets, so the file is only moved where it is not there already.
//
// Every operation returns 0, or 1 on failure. A failure is recorded once on the file, with
// set_error(0, nmkNMTErrWrite), the facet is not counted, and the next operation moves the file
// again. Doubles become the nearest float, those past its range infinity; nothing is scaled.
#pragma once

#include <geometry/giPoint3.h>
#include <geometry/giVector3.h>
#include <geometry/giXform3.h>
#include <nmknmt/nmkNMTFile.h>
#include <nmktoolbox/export.h>
#include <utils/utObserverPtr.h>

#include <cstddef>
#include <cstdint>

class giTriBlock;

class NMKTOOLBOX_EXPORT nmkSTLFileWrite {
  public:
    explicit nmkSTLFileWrite(utObserverPtr<nmkNMTFile> file);

    /// Writes the first 79 bytes of `text` at most, and NULs up to 80 bytes; null is the empty
    /// text.
    int write_header(char const* text);

    /// Writes a facet as it is given: 3 doubles each.
    int write_facet(double const* const v1, double const* const v2, double const* const v3,
                    double const* const normal);
    int write_facet(giPoint3 const& p1, giPoint3 const& p2, giPoint3 const& p3,
                    giVector3 const& normal);

    /// Writes a facet with the normal (p1 - p2) x (p2 - p3), which is not a unit vector: it points
    /// outwards where the points are counter-clockwise seen from outside, and is twice as long as
    /// the facet is large.
    int write_facet(giPoint3 const& p1, giPoint3 const& p2, giPoint3 const& p3);

    /// The same for the points mapped by `xform`.
    int write_facet(giPoint3 const& p1, giPoint3 const& p2, giPoint3 const& p3,
                    giXform3 const& xform);

    /// Writes all triangles of a block with computed normals, up to the first failure; the block's
    /// own normals are not used. A block without triangles writes nothing and returns 0; one whose
    /// triangles have nodes that it lacks returns 1, and the facets before stay.
    int write_triblock(giTriBlock const& block);

    /// Writes the count of facets and, where no header was written, one that names the program.
    /// Facets may follow, and need another write_end.
    int write_end();

  private:
    int seek_file(std::int64_t position);
    int write_file(void const* bytes, int size);
    int fail();

    utObserverPtr<nmkNMTFile> m_file;
    std::int32_t m_is_header_written;
    std::int32_t m_facets_written;
    std::int32_t m_position;  // where the file is, -1 where that is unknown
};
