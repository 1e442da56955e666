// identifier_stream.h: reads a stream of objects, all of which are identifiers.
//
// The stream is what CArchive writes for pointers to nmkUniqueIdPtr, nmkObjectId and
// nmkRefToObjectId. Nothing is made of what is read: no serial is spent, no owner is renamed and
// nothing enters the session's table, so that the identifiers are seen as they were stored.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>

#include "commands/id/identifier_words.h"

namespace nmk_id {

/// The class of an object in the stream; `null` for a null pointer.
enum class ObjectClass : unsigned char { null, identifier, owner, reference };

/// The name of the class: "nmkUniqueIdPtr" for an identifier; "null".
const char* name_of(ObjectClass object_class);

/// One pointer of the stream.
struct StoredObject {
    std::size_t offset = 0;  // of its first byte in the stream
    ObjectClass object_class = ObjectClass::null;
    std::uint32_t number = 0;       // of the object: objects are counted from 1; 0 for null
    bool is_repeated = false;       // the object came before; it has no words here
    std::size_t record_offset = 0;  // of the identifier itself
    IdentifierWords words;
};

/// Where reading ended before the end of the stream.
struct StreamStop {
    std::size_t offset;   // of the object that could not be read
    std::string message;  // what was found, and what was expected
};

/// Calls `visit` with each object in order. Returns nothing where all bytes were read.
std::optional<StreamStop> read_identifier_stream(
    std::span<const unsigned char> bytes, const std::function<void(const StoredObject&)>& visit);

}  // namespace nmk_id
