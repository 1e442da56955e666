// model_format: the formats of triangle models, and which one a file has.

#include "commands/model/model_format.h"

#include <nmktoolbox/files/nmkFilenameExt.h>
#include <stlfile/TriangleFileSTL.h>

#include <cstdint>
#include <cstring>
#include <string>

namespace nmk_model {

namespace {

constexpr nmk_shell::Choice<FormatChoice> choices[] = {
    {"auto", FormatChoice::automatic, "by the extension, else by the content"},
    {"stl", FormatChoice::stl, "STL, binary or text"},
    {"tri", FormatChoice::flue, "Flue, a text format"},
    {"nmt", FormatChoice::nmt, "NMT, which states its units"},
    {"ttr", FormatChoice::ttr, "TTR, bare triangles"}};

// How much of a file is looked at.
constexpr std::size_t head_size = 4096;

// Sizes of TTR, in bytes.
constexpr std::int64_t ttr_header = 120;
constexpr std::int64_t ttr_triangle = 36;

// Where the counts are.
constexpr std::size_t stl_count_at = 80;
constexpr std::size_t ttr_count_at = 84;

/// The beginning of a file, and its length.
struct FileHead {
    std::string bytes;
    std::int64_t length = 0;

    /// The little-endian number at this offset, 0 if the head ends before it does.
    std::uint32_t number_at(std::size_t offset) const {
        std::uint32_t number = 0;
        if (bytes.size() >= offset + sizeof number) {
            std::memcpy(&number, bytes.data() + offset, sizeof number);
        }
        return number;
    }
};

FileHead head_of(apINMKFile& file) {
    FileHead head;
    head.length = file.length();
    head.bytes.resize(head_size);
    const bool is_at_start = file.seek(0, apNMKSeekBegin) == 0;
    head.bytes.resize(is_at_start ? file.read(head.bytes.data(), 1, head_size) : 0);
    return head;
}

bool holds_binary_stl(const FileHead& head) {
    return TriangleFileSTL::is_binary(head.length, head.number_at(stl_count_at));
}

bool begins_with_solid(const FileHead& head) {
    const std::size_t at = head.bytes.find_first_not_of(" \t\r\n\v\f");
    return at != std::string::npos &&
           nmk_shell::is_same_word(std::string_view(head.bytes).substr(at, 5), "solid");
}

ModelFormat stl_of(const FileHead& head) {
    return !holds_binary_stl(head) && begins_with_solid(head) ? ModelFormat::text_stl
                                                              : ModelFormat::binary_stl;
}

/// The mark that ends the first lines of a Flue text: "*" in the second column.
bool has_flue_mark(const FileHead& head) {
    const std::string& text = head.bytes;
    for (std::size_t line = 0; line + 1 < text.size();) {
        if (text[line] != '\n' && text[line + 1] == '*') return true;
        const std::size_t end = text.find('\n', line);
        if (end == std::string::npos) return false;
        line = end + 1;
    }
    return false;
}

std::optional<ModelFormat> format_of_content(const FileHead& head) {
    const std::uint32_t stl_triangles = head.number_at(stl_count_at);
    const std::int64_t ttr_triangles = head.number_at(ttr_count_at);
    if (head.bytes.starts_with("NMTF")) return ModelFormat::nmt;
    if (begins_with_solid(head)) return stl_of(head);
    if (stl_triangles > 0 && head.length == TriangleFileSTL::binary_length(stl_triangles)) {
        return ModelFormat::binary_stl;
    }
    if (ttr_triangles > 0 && head.length == ttr_header + ttr_triangle * ttr_triangles) {
        return ModelFormat::ttr;
    }
    if (has_flue_mark(head)) return ModelFormat::flue;
    if (stl_triangles > 0 && holds_binary_stl(head)) return ModelFormat::binary_stl;
    return std::nullopt;
}

FormatChoice choice_of_name(const std::string& file_name) {
    const auto ends_with = [&](const char* extension) {
        return nmkCheckFilenameExt(file_name.c_str(), extension) != 0;
    };
    if (ends_with(".stl")) return FormatChoice::stl;
    if (ends_with(".tri")) return FormatChoice::flue;
    if (ends_with(".nmt") || ends_with(".nmlmt")) return FormatChoice::nmt;
    return ends_with(".ttr") ? FormatChoice::ttr : FormatChoice::automatic;
}

}  // namespace

std::span<const nmk_shell::Choice<FormatChoice>> format_choices() { return choices; }

std::string_view format_name(ModelFormat format) {
    switch (format) {
        case ModelFormat::binary_stl:
            return "binary STL";
        case ModelFormat::text_stl:
            return "text STL";
        case ModelFormat::flue:
            return "Flue text";
        case ModelFormat::nmt:
            return "NMT";
        case ModelFormat::ttr:
            return "TTR";
    }
    return {};
}

std::string_view format_key(ModelFormat format) {
    switch (format) {
        case ModelFormat::binary_stl:
            return "stl-binary";
        case ModelFormat::text_stl:
            return "stl-text";
        case ModelFormat::flue:
            return "tri";
        case ModelFormat::nmt:
            return "nmt";
        case ModelFormat::ttr:
            return "ttr";
    }
    return {};
}

std::string expected_content(ModelFormat format) {
    return (format == ModelFormat::nmt ? "an " : "a ") + std::string(format_name(format)) +
           " model";
}

const char* reader_name(ModelFormat format) {
    switch (format) {
        case ModelFormat::binary_stl:
        case ModelFormat::text_stl:
            return "model.stl";
        case ModelFormat::flue:
            return "model.tri";
        case ModelFormat::nmt:
            return "model.nmt";
        case ModelFormat::ttr:
            return "model.ttr";
    }
    return "";
}

bool has_separate_corners(ModelFormat format) {
    return format != ModelFormat::flue && format != ModelFormat::nmt;
}

std::optional<ModelFormat> format_of(FormatChoice choice, const std::string& file_name,
                                     apINMKFile& file) {
    if (choice == FormatChoice::automatic) choice = choice_of_name(file_name);
    switch (choice) {
        case FormatChoice::automatic:
            return format_of_content(head_of(file));
        case FormatChoice::stl:
            return stl_of(head_of(file));
        case FormatChoice::flue:
            return ModelFormat::flue;
        case FormatChoice::nmt:
            return ModelFormat::nmt;
        case FormatChoice::ttr:
            return ModelFormat::ttr;
    }
    return std::nullopt;
}

}  // namespace nmk_model
