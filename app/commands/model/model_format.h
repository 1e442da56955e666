// model_format.h: the formats of triangle models, and which one a file has.
#pragma once

#include <stlfile/apINMKFile.h>

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "shell/option_values.h"

namespace nmk_model {

enum class ModelFormat { binary_stl, text_stl, flue, nmt, ttr };

/// What `--format` chooses: a family of formats, or by name and content.
enum class FormatChoice { automatic, stl, flue, nmt, ttr };

/// The words of `--format`.
std::span<const nmk_shell::Choice<FormatChoice>> format_choices();

/// "binary STL", for a person.
std::string_view format_name(ModelFormat format);

/// "stl-binary", for a program.
std::string_view format_key(ModelFormat format);

/// What a file of this format has, for messages: "a binary STL".
std::string expected_content(ModelFormat format);

/// A name whose extension makes the library's reader choose the format.
const char* reader_name(ModelFormat format);

/// True where every triangle of the format has three nodes of its own.
bool has_separate_corners(ModelFormat format);

/// The format of a file: that of the choice; else the one of the name's extension; else that of the
/// content, nothing if it is of none. The position of the file changes.
std::optional<ModelFormat> format_of(FormatChoice choice, const std::string& file_name,
                                     apINMKFile& file);

}  // namespace nmk_model
