// registry_json.h: a tree of keys as a JSON document, which an import reads back to the same bytes.
//
// {"schema": 1, "format": "nmk registry", "path": "HKCU/Software", "values": [...], "keys":
// [...]}. A value has "name", "type" (a name, or a number where it has none) and one of "text",
// "number", "texts" and "bytes" (hexadecimal digits, for everything that has not the form of its
// type). A key has "name", "values" and "keys". A name that is not UTF-8 is "name_bytes", in
// hexadecimal digits.
#pragma once

#include <string>
#include <string_view>

#include "commands/registry/registry_tree.h"
#include "text/result.h"

namespace nmk_registry {

/// A tree and the path that it was exported from.
struct Document {
    std::string path;  // as written in the document
    Key tree;
};

/// The document with a line feed at its end.
std::string document_json(const Document& document);

/// Reads a document; the Error names the line, or the place as "keys[2].values[0]", and what was
/// expected.
nmk_text::Result<Document> read_document(const std::string& file_name, std::string_view text);

}  // namespace nmk_registry
