// CArchive: objects, classes and their identifiers.
#include <mfc/CArchive.h>

#include <memory>

namespace {

// Tags of 2 bytes, and of 4 bytes behind big_tag.
constexpr std::uint16_t null_tag = 0x0000;
constexpr std::uint16_t new_class_tag = 0xFFFF;
constexpr std::uint16_t big_tag = 0x7FFF;
constexpr std::uint16_t class_bit = 0x8000;
constexpr std::uint32_t class_bit_of_big_tag = 0x80000000;

constexpr std::uint32_t max_identifier_in_2_bytes = 0x7FFE;
constexpr std::uint32_t max_identifier = 0x3FFFFFFE;
constexpr std::uint16_t max_name_length = 255;
constexpr unsigned int no_object_schema = static_cast<unsigned int>(-1);

[[noreturn]] void fail(CArchiveException::Cause cause) { throw CArchiveException(cause); }

bool is_valid_name(std::string_view name) {
    const auto is_printable = [](char c) { return c >= ' ' && c <= '~'; };
    return !name.empty() && name.size() <= max_name_length &&
           std::all_of(name.begin(), name.end(), is_printable);
}

// The class that is asked for needs no registration.
const CRuntimeClass* find_class(std::string_view name, const CRuntimeClass* requested) {
    if (requested != nullptr && name == requested->m_lpszClassName) return requested;
    return CRuntimeClass::FromName(name);
}

bool reads_schema(const CRuntimeClass& reader, unsigned int schema) {
    if (schema == CRuntimeClass::no_schema) return false;
    return reader.is_versionable() || reader.stored_schema() == schema;
}

}  // namespace

// One level of objects within objects, for as long as it lives. The object schema of the level
// above survives what happens in this one.
class CArchive::Nesting {
  public:
    Nesting(CArchive& archive, unsigned int schema, CArchiveException::Cause when_too_deep)
        : m_archive(archive), m_schema_above(archive.m_object_schema) {
        if (archive.m_nesting >= max_nesting) fail(when_too_deep);
        ++archive.m_nesting;
        archive.m_object_schema = schema;
    }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;
    ~Nesting() {
        --m_archive.m_nesting;
        m_archive.m_object_schema = m_schema_above;
    }

  private:
    CArchive& m_archive;
    unsigned int m_schema_above;
};

void CArchive::WriteObject(const CObject* object) {
    require(store);
    if (object == nullptr) {
        *this << null_tag;
        return;
    }
    const auto known = m_stored.find(object);
    if (known != m_stored.end()) {
        write_reference(known->second, false);
        return;
    }
    const Nesting nesting(*this, no_object_schema, CArchiveException::generic);
    WriteClass(object->GetRuntimeClass());
    MapObject(object);
    // Serialize serves both directions; when storing it leaves the object as it is.
    const_cast<CObject*>(object)->Serialize(*this);
}

CObject* CArchive::ReadObject(const CRuntimeClass* requested) {
    require(load);
    const TagRecord tag = read_tag();
    if (tag.kind == Tag::object) return known_object(tag.identifier, requested);
    return read_new_object(read_class_of(tag, requested));
}

void CArchive::WriteClass(const CRuntimeClass* stored) {
    require(store);
    if (!stored->is_storable()) fail(CArchiveException::badSchema);
    const auto known = m_stored.find(stored);
    if (known != m_stored.end()) {
        write_reference(known->second, true);
        return;
    }
    const std::string_view name = stored->m_lpszClassName;
    if (!is_valid_name(name)) fail(CArchiveException::badClass);
    *this << new_class_tag << static_cast<std::uint16_t>(stored->stored_schema())
          << static_cast<std::uint16_t>(name.size());
    Write(name.data(), name.size());
    m_stored[stored] = enter({stored, nullptr, stored->stored_schema()});
}

const CRuntimeClass* CArchive::ReadClass(const CRuntimeClass* requested, unsigned int* schema) {
    require(load);
    const TagRecord tag = read_tag();
    if (tag.kind == Tag::object) fail(CArchiveException::badIndex);
    const Entry read = read_class_of(tag, requested);
    if (schema != nullptr) *schema = read.schema;
    return read.runtime_class;
}

void CArchive::SerializeClass(const CRuntimeClass* expected) {
    if (IsStoring()) {
        WriteClass(expected);
    } else {
        ReadClass(expected);
    }
}

void CArchive::MapObject(const CObject* object) {
    if (object == nullptr) return;
    // An object that is loaded was made without const.
    const std::uint32_t identifier = enter({nullptr, const_cast<CObject*>(object), 0});
    if (IsStoring()) m_stored[object] = identifier;
}

unsigned int CArchive::GetObjectSchema() noexcept {
    const unsigned int schema = m_object_schema;
    m_object_schema = no_object_schema;
    return schema;
}

void CArchive::write_reference(std::uint32_t identifier, bool is_class) {
    if (identifier <= max_identifier_in_2_bytes) {
        const std::uint16_t tag = static_cast<std::uint16_t>(identifier);
        *this << static_cast<std::uint16_t>(is_class ? tag | class_bit : tag);
    } else {
        *this << big_tag << (is_class ? identifier | class_bit_of_big_tag : identifier);
    }
}

CArchive::TagRecord CArchive::read_tag() {
    std::uint16_t small = 0;
    *this >> small;
    if (small == new_class_tag) return {Tag::new_class, 0};
    if (small != big_tag) {
        const std::uint32_t identifier = small & ~class_bit & 0xFFFFU;
        return {(small & class_bit) != 0 ? Tag::known_class : Tag::object, identifier};
    }
    std::uint32_t big = 0;
    *this >> big;
    const bool is_class = (big & class_bit_of_big_tag) != 0;
    return {is_class ? Tag::known_class : Tag::object, big & ~class_bit_of_big_tag};
}

// Returns the identifier. Storing keeps no entries: identifiers are found by address.
std::uint32_t CArchive::enter(const Entry& entry) {
    if (m_last_identifier >= max_identifier) fail(CArchiveException::badIndex);
    if (IsLoading()) m_loaded.push_back(entry);
    return ++m_last_identifier;
}

const CArchive::Entry& CArchive::entry_of(std::uint32_t identifier) const {
    if (identifier == 0 || identifier > m_loaded.size()) fail(CArchiveException::badIndex);
    return m_loaded[identifier - 1];
}

CArchive::Entry CArchive::read_class_of(const TagRecord& tag, const CRuntimeClass* requested) {
    const Entry read =
        tag.kind == Tag::new_class ? read_class_record(requested) : entry_of(tag.identifier);
    if (read.runtime_class == nullptr) fail(CArchiveException::badIndex);
    if (requested != nullptr && !read.runtime_class->IsDerivedFrom(requested)) {
        fail(CArchiveException::badClass);
    }
    return read;
}

CArchive::Entry CArchive::read_class_record(const CRuntimeClass* requested) {
    std::uint16_t schema = 0;
    std::uint16_t length = 0;
    *this >> schema >> length;
    if (length > max_name_length) fail(CArchiveException::badClass);
    const std::string name = read_narrow(length);
    const CRuntimeClass* const found = is_valid_name(name) ? find_class(name, requested) : nullptr;
    if (found == nullptr || !found->is_storable()) fail(CArchiveException::badClass);
    if (!reads_schema(*found, schema)) fail(CArchiveException::badSchema);
    const Entry entry{found, nullptr, schema};
    enter(entry);
    return entry;
}

CObject* CArchive::known_object(std::uint32_t identifier, const CRuntimeClass* requested) const {
    if (identifier == 0) return nullptr;
    CObject* const object = entry_of(identifier).object;
    if (object == nullptr) fail(CArchiveException::badIndex);
    if (requested != nullptr && !object->IsKindOf(requested)) fail(CArchiveException::badClass);
    return object;
}

CObject* CArchive::read_new_object(const Entry& of_class) {
    const Nesting nesting(*this, of_class.schema, CArchiveException::badIndex);
    if (of_class.runtime_class->m_pfnCreateObject == nullptr) fail(CArchiveException::badClass);
    std::unique_ptr<CObject> object(of_class.runtime_class->CreateObject());
    if (object == nullptr) fail(CArchiveException::generic);
    const std::size_t first = m_loaded.size();
    MapObject(object.get());
    try {
        object->Serialize(*this);
    } catch (...) {
        // What was loaded within it may go with it, so nothing may refer to that either.
        std::fill(m_loaded.begin() + static_cast<std::ptrdiff_t>(first), m_loaded.end(), Entry());
        throw;
    }
    return object.release();
}
