#include "commands/id/identifier_stream.h"

#include <array>
#include <cstring>
#include <string_view>
#include <utility>
#include <vector>

#include "text/escaped_text.h"

namespace nmk_id {

namespace {

// Tags, of 16 bits: what an object begins with. The one for large identifiers is followed by 32
// bits, the top one of which is that of a class.
constexpr std::uint32_t null_tag = 0, large_tag = 0x7FFF, new_class_tag = 0xFFFF;
constexpr std::uint32_t class_bit = 0x8000, large_class_bit = 0x80000000;

constexpr std::uint32_t no_schema = 0xFFFF;  // these classes read every other one
constexpr std::size_t max_class_name = 255;
constexpr std::uint32_t first_format_with_all_words = 2;

constexpr std::array<const char*, 4> class_names = {"null", "nmkUniqueIdPtr", "nmkObjectId",
                                                    "nmkRefToObjectId"};

struct Problem {
    std::string message;
};

// Bytes of the stream, read forwards.
class ByteReader {
  public:
    explicit ByteReader(std::span<const unsigned char> bytes) : m_bytes(bytes) {}

    std::size_t offset() const { return m_offset; }
    bool is_at_end() const { return m_offset == m_bytes.size(); }

    std::string_view text(std::size_t size) {
        if (size > m_bytes.size() - m_offset) throw Problem{"the data end within an object"};
        const unsigned char* const first = m_bytes.data() + m_offset;
        m_offset += size;
        return {reinterpret_cast<const char*>(first), size};
    }

    // A number of that many bytes, the lowest first.
    std::uint32_t number(std::size_t size) {
        const std::string_view bytes = text(size);
        std::uint32_t value = 0;
        for (std::size_t i = size; i-- > 0;) {
            value = value << 8U | static_cast<unsigned char>(bytes[i]);
        }
        return value;
    }

  private:
    std::span<const unsigned char> m_bytes;
    std::size_t m_offset = 0;
};

// What an identifier of the stream, in the sense of its tags, is given to. Classes and objects
// share one sequence.
struct Known {
    bool is_class;
    ObjectClass object_class;
    std::uint32_t object_number;
};

class StreamReader {
  public:
    explicit StreamReader(std::span<const unsigned char> bytes) : m_bytes(bytes) {}

    bool is_at_end() const { return m_bytes.is_at_end(); }
    std::size_t offset() const { return m_bytes.offset(); }

    StoredObject read() {
        StoredObject object;
        object.offset = m_bytes.offset();
        const std::uint32_t tag = m_bytes.number(2);
        if (tag == null_tag) return object;
        if (tag == new_class_tag) return new_object(object, read_class());
        const bool is_large = tag == large_tag;
        const std::uint32_t identifier = is_large ? m_bytes.number(4) : tag;
        const std::uint32_t bit = is_large ? large_class_bit : class_bit;
        if ((identifier & bit) != 0) return new_object(object, known(identifier & ~bit, true));
        return repeated_object(object, identifier);
    }

  private:
    ObjectClass read_class() {
        const std::uint32_t schema = m_bytes.number(2);
        const std::uint32_t length = m_bytes.number(2);
        if (length == 0 || length > max_class_name) {
            throw Problem{"a class name of " + std::to_string(length) +
                          " characters; expected 1 to 255"};
        }
        const std::string_view name = m_bytes.text(length);
        for (std::size_t i = 1; i < class_names.size(); ++i) {
            if (name == class_names[i]) {
                if (schema == no_schema) {
                    throw Problem{"class " + std::string(name) + " without a schema"};
                }
                m_known.push_back({true, static_cast<ObjectClass>(i), 0});
                return m_known.back().object_class;
            }
        }
        throw Problem{"class " + nmk_text::quoted(name) +
                      "; expected nmkUniqueIdPtr, nmkObjectId or nmkRefToObjectId"};
    }

    const Known& entry(std::uint32_t identifier) const {
        if (identifier == 0 || identifier > m_known.size()) {
            throw Problem{"a reference to number " + std::to_string(identifier) +
                          "; the stream has " + std::to_string(m_known.size()) + " so far"};
        }
        return m_known[identifier - 1];
    }

    ObjectClass known(std::uint32_t identifier, bool is_class) const {
        const Known& found = entry(identifier);
        if (found.is_class != is_class) {
            throw Problem{
                "number " + std::to_string(identifier) + " is " +
                (found.is_class ? "a class; expected an object" : "an object; expected a class")};
        }
        return found.object_class;
    }

    StoredObject repeated_object(StoredObject object, std::uint32_t identifier) const {
        object.object_class = known(identifier, false);
        object.number = entry(identifier).object_number;
        object.is_repeated = true;
        return object;
    }

    StoredObject new_object(StoredObject object, ObjectClass object_class) {
        object.object_class = object_class;
        object.number = m_object_count + 1;
        object.record_offset = m_bytes.offset();
        object.words.hash = m_bytes.number(4);
        object.words.stamp = static_cast<std::int32_t>(m_bytes.number(4));
        if (m_bytes.number(2) >= first_format_with_all_words) {
            object.words.serial = static_cast<std::int32_t>(m_bytes.number(4));
            object.words.spare = m_bytes.number(4);
        }
        m_known.push_back({false, object_class, ++m_object_count});
        return object;
    }

    ByteReader m_bytes;
    std::vector<Known> m_known;
    std::uint32_t m_object_count = 0;
};

}  // namespace

const char* name_of(ObjectClass object_class) {
    return class_names[static_cast<std::size_t>(object_class)];
}

std::optional<StreamStop> read_identifier_stream(
    std::span<const unsigned char> bytes, const std::function<void(const StoredObject&)>& visit) {
    StreamReader reader(bytes);
    while (!reader.is_at_end()) {
        const std::size_t offset = reader.offset();
        try {
            visit(reader.read());
        } catch (const Problem& problem) {
            return StreamStop{offset, problem.message};
        }
    }
    return std::nullopt;
}

}  // namespace nmk_id
