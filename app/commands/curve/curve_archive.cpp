// curve_archive: archives of one curve.

#include "commands/curve/curve_archive.h"

#include <mfc/CException.h>
#include <nmktoolbox/curves/nmkNgkReadUtils.h>
#include <nmktoolbox/curves/nmkNgkWriteUtils.h>

#include "files/scratch_file.h"

namespace nmk_curve {

namespace {

constexpr std::string_view archive_signature = "PK";  // of a zip

ngkCurvePtr3 stored_curve(const std::string& bytes) {
    const nmk_files::ScratchFile file(bytes);
    ngkCurvePtr3 curve;
    const int error = nmkNgkReadUtils::read_single_curve(file.name().c_str(), curve);
    if (error != 0 || !curve) {
        throw nmk_text::Error{
            {}, 0, "a damaged archive, or one without a curve; expected one that -o has written"};
    }
    return curve;
}

}  // namespace

bool looks_like_archive(std::string_view bytes) { return bytes.starts_with(archive_signature); }

nmk_text::Result<ngkCurvePtr3> curve_of_archive(const std::string& name, const std::string& bytes) {
    return nmk_text::value_or_error(name, [&] { return stored_curve(bytes); });
}

nmk_text::Result<std::string> archive_of_curve(const ngkCurvePtr3& curve) {
    try {
        const nmk_files::ScratchFile file;
        nmkNgkWriteUtils::write_single_curve(file.name().c_str(), curve);
        return file.bytes();
    } catch (const nmk_text::Error& error) {
        return error;
    } catch (const CException&) {
        return nmk_text::Error{{}, 0, "the curve cannot be written as an archive"};
    }
}

}  // namespace nmk_curve
