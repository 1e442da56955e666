// archive_values.h: flags and counts that records of several libraries consist of.
#pragma once

#include <mfc/CArchive.h>
#include <mfc/CException.h>

#include <cstddef>
#include <cstdint>

namespace nmk_mfc {

/// Throws an archive exception with this cause.
[[noreturn]] inline void refuse(CArchiveException::Cause cause) { throw CArchiveException(cause); }

/// Throws an archive exception (badIndex) unless what was read is well-formed.
inline void require(bool is_well_formed) {
    if (!is_well_formed) refuse(CArchiveException::badIndex);
}

/// A byte that is 0 or 1.
inline void write_flag(CArchive& archive, bool flag) {
    archive << static_cast<std::uint8_t>(flag ? 1 : 0);
}
inline bool read_flag(CArchive& archive) {
    std::uint8_t flag = 0;
    archive >> flag;
    require(flag <= 1);
    return flag == 1;
}

/// A count for CArchive::ReadCount. Throws an archive exception (generic) for one above 32 bits.
inline void write_count(CArchive& archive, std::size_t count) {
    if (count > UINT32_MAX) refuse(CArchiveException::generic);
    archive.WriteCount(static_cast<std::uint32_t>(count));
}

}  // namespace nmk_mfc
