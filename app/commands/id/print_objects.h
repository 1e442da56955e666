// print_objects.h: the objects of a stream of identifiers, as a table and as JSON.
#pragma once

#include <ostream>

#include "commands/id/identifier_stream.h"

namespace nmk_id {

/// Prints a heading and a line for each object, each as soon as it is read.
class ObjectTable {
  public:
    explicit ObjectTable(std::ostream& out) : m_out(out) {}

    void add(const StoredObject& object);

    /// Prints how many there were.
    void end();

  private:
    std::ostream& m_out;
    std::size_t m_pointers = 0;
    std::uint32_t m_objects = 0;
};

/// Prints {"schema", "objects": [{"offset", "class", "object", "repeated", "record_offset",
/// "identifier", "valid", "hash", "stamp", "time", "serial", "spare"}, ...]}, each as soon as it is
/// read. A repeated object has the members up to "repeated"; the class of a null pointer is null,
/// and it has no other members.
class ObjectJson {
  public:
    explicit ObjectJson(std::ostream& out);

    void add(const StoredObject& object);
    void end();

  private:
    std::ostream& m_out;
    bool m_is_first = true;
};

}  // namespace nmk_id
