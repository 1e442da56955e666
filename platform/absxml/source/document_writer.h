// document_writer.h: a tree as the text of a document, in a file.
#pragma once

#include <string>

#include "tree.h"

namespace nmk_absxml {

/// Writes the document in UTF-8 to the file, or leaves it as it was. Returns 0 or an errno; EINVAL
/// for what exists and is not a regular file.
int write_document(const Tree& tree, const std::string& file_name);

}  // namespace nmk_absxml
