// curve_files: reads the curves of a file.

#include "commands/curve/curve_files.h"

#include <nmktoolbox/curves/nmkNgkMakeUtils.h>

#include "commands/curve/curve_archive.h"
#include "files/read_whole_file.h"
#include "formats/csv/csv_reader.h"
#include "formats/dxf/dxf_reader.h"

namespace nmk_curve {

namespace {

using nmk_text::Error;
using nmk_text::Result;

std::string counted(std::size_t count, const std::string& what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

Result<CurveFile> dxf_curves(const std::string& name, const std::string& text,
                             std::optional<double> mm_of_unit) {
    auto drawing = nmk_dxf::read_dxf(name, text, mm_of_unit.value_or(1.0));
    if (!drawing) return drawing.error();
    CurveFile file{name, {}, {}};
    for (nmk_dxf::DxfCurve& each : drawing->curves) {
        file.curves.push_back(
            {std::move(each.curve), each.entity + " in line " + std::to_string(each.line)});
    }
    if (!drawing->states_unit && !mm_of_unit) {
        file.notes.emplace_back("The file does not state its unit; it is read as millimetres");
    }
    for (const auto& [what, count] : drawing->left_out) {
        file.notes.push_back("Left out: " + std::to_string(count) + " " + what);
    }
    return file;
}

/// The polyline of a table of points.
Result<CurveFile> csv_curve(const std::string& name, std::string text, double mm_of_unit) {
    const auto table = nmk_csv::read_csv(name, std::move(text), std::nullopt);
    if (!table) return table.error();
    giPoint3coDynArr points;
    for (const nmk_job::JobItem& item : table->items) {
        if (item.end) return Error{name, 0, "a table of lines; expected one of points"};
        const giPoint3& p = item.start;
        points.add(giPoint3(p.x * mm_of_unit, p.y * mm_of_unit, p.z * mm_of_unit));
    }
    const ngkCurvePtr3 curve = nmkNgkMakeUtils::make_polyline(points);
    if (!curve || !curve->is_valid()) {
        return Error{name, 0,
                     counted(table->items.size(), "point") +
                         "; expected at least two, more than 1e-05 mm apart"};
    }
    return CurveFile{name, {{curve, ""}}, {}};
}

Result<CurveFile> archived_curve(const std::string& name, const std::string& bytes) {
    auto curve = curve_of_archive(name, bytes);
    if (!curve) return curve.error();
    return CurveFile{name, {{*std::move(curve), ""}}, {}};
}

}  // namespace

nmk_text::Result<CurveFile> read_curves(const std::string& file_name,
                                        std::optional<double> mm_of_unit) {
    auto text = nmk_files::read_input_bytes(file_name);
    if (!text) return text.error();
    const std::string name = nmk_files::input_name(file_name);
    if (looks_like_archive(*text)) return archived_curve(name, *text);
    if (nmk_dxf::is_binary_dxf(*text)) {
        return Error{name, 0, "a binary DXF file; expected one in text form"};
    }
    if (const auto checked = nmk_files::check_text_file(name, *text); !checked) {
        return checked.error();
    }
    return nmk_dxf::looks_like_dxf(*text)
               ? dxf_curves(name, *text, mm_of_unit)
               : csv_curve(name, *std::move(text), mm_of_unit.value_or(1.0));
}

nmk_text::Result<FileCurve> chosen_curve(const CurveFile& file, std::optional<int> number) {
    const std::size_t count = file.curves.size();
    if (count == 0) return Error{file.name, 0, "has no curves"};
    if (!number && count > 1) {
        return Error{file.name, 0,
                     "has " + std::to_string(count) + " curves; expected --curve N to choose one"};
    }
    const auto position = static_cast<std::size_t>(number.value_or(1));
    if (position > count) {
        return Error{file.name, 0,
                     "has " + counted(count, "curve") + "; there is none with the number " +
                         std::to_string(position)};
    }
    return file.curves[position - 1];
}

}  // namespace nmk_curve
