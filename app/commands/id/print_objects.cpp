#include "commands/id/print_objects.h"

#include <algorithm>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <string>

#include "text/json_document.h"

namespace nmk_id {

namespace {

constexpr const char* heading =
    " offset  object  class             identifier                            serial\n";

std::string row(const StoredObject& object, const std::string& identifier) {
    const std::string number = object.number == 0 ? "-" : std::to_string(object.number);
    char text[160];
    std::snprintf(text, sizeof text, "%7zu  %6s  %-16s  %s\n", object.offset, number.c_str(),
                  name_of(object.object_class), identifier.c_str());
    return text;
}

/// The serial; of an invalid identifier it says nothing.
std::string serial_cell(const IdentifierWords& words) {
    return is_valid(words) ? std::to_string(words.serial) : "invalid";
}

std::string row(const StoredObject& object) {
    if (object.object_class == ObjectClass::null) return row(object, "-");
    if (object.is_repeated) return row(object, "the same object again");
    const std::string serial = serial_cell(object.words);
    constexpr std::size_t serial_width = 10;
    const std::size_t padding = serial_width - std::min(serial_width, serial.size());
    return row(object, text_of_words(object.words) + "  " + std::string(padding, ' ') + serial);
}

constexpr int schema = 1;

nmk_text::Json json_of(const StoredObject& object) {
    nmk_text::Json json = {{"offset", object.offset}, {"class", nullptr}};
    if (object.object_class == ObjectClass::null) return json;
    json["class"] = name_of(object.object_class);
    json["object"] = object.number;
    json["repeated"] = object.is_repeated;
    if (object.is_repeated) return json;
    json["record_offset"] = object.record_offset;
    add_facts(json, object.words);
    return json;
}

}  // namespace

void ObjectTable::add(const StoredObject& object) {
    if (m_pointers++ == 0) m_out << heading;
    if (object.object_class != ObjectClass::null && !object.is_repeated) ++m_objects;
    m_out << row(object);
}

void ObjectTable::end() {
    m_out << m_pointers << (m_pointers == 1 ? " pointer to " : " pointers to ") << m_objects
          << (m_objects == 1 ? " object\n" : " objects\n");
}

ObjectJson::ObjectJson(std::ostream& out) : m_out(out) {
    m_out << nmk_text::json_opening({{"schema", schema}}, "objects");
}

void ObjectJson::add(const StoredObject& object) {
    m_out << (m_is_first ? "\n  " : ",\n  ") << nmk_text::json_line(json_of(object));
    m_is_first = false;
}

void ObjectJson::end() { m_out << "\n]}\n"; }

}  // namespace nmk_id
