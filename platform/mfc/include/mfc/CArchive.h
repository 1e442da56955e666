// CArchive: a stream of numbers, texts and objects in a file, either loading or storing.
//
// Numbers are little-endian and follow each other without header or padding; nothing in the stream
// says what type a value has, so the reader asks for the same types in the same order. Objects are
// preceded by a tag: null, a class that is new in the archive, a class that came before, or an
// object that came before. Classes and objects share one sequence of identifiers, which writer and
// reader count alike, so that each object is stored once and objects may refer to each other.
//
// A stream that is cut, forged or of other classes ends in a CArchiveException with its cause. No
// length in it is believed: memory is taken only for bytes that were read.
//
// The file is borrowed. Several archives may follow each other in one file. Not for two threads at
// once.
#pragma once

#include <mfc/CException.h>

#include <algorithm>
#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <vector>

#pragma GCC visibility push(default)

class CFile;

/// A number that an archive streams as such: any built-in type but long double.
template <class Number>
concept CArchiveNumber = std::is_arithmetic_v<Number> && !std::same_as<Number, long double>;

class CArchive {
  public:
    enum Mode : unsigned int { store = 0, load = 1 };

    /// Objects within objects may be this deep; deeper ones end in an exception.
    static constexpr int max_nesting = 500;

    /// Starts at the position of `file`, through a buffer of that many bytes (at least 1).
    CArchive(CFile* file, unsigned int mode, int buffer_size = 4096);
    CArchive(const CArchive&) = delete;
    CArchive& operator=(const CArchive&) = delete;

    /// Closes the archive, which may throw; while another exception is on its way it is aborted
    /// instead. Call Close to have failures reported at a place of your choice.
    ~CArchive() noexcept(false);

    bool IsLoading() const noexcept { return m_mode == load; }
    bool IsStoring() const noexcept { return m_mode == store; }

    /// Null once the archive is closed or aborted.
    CFile* GetFile() const noexcept { return m_file; }

    /// Storing: hands what is buffered to the file. Loading: puts the file back to the first byte
    /// that was not asked for. Call it before the position of the file is used.
    void Flush();

    /// Flushes and lets go of the file, which stays open. The archive cannot be used any more.
    void Close();

    /// Lets go of the file and drops what is buffered. Never throws.
    void Abort() noexcept;

    /// Reads up to `count` bytes and returns how many there were; fewer only at the end.
    std::size_t Read(void* bytes, std::size_t count);

    /// Writes `count` bytes.
    void Write(const void* bytes, std::size_t count);

    /// Numbers take as many bytes as their type has, with two exceptions that keep streams the same
    /// on every system: `long` takes 4, cut to its low 32 bits, and `wchar_t` takes 2. A truth
    /// value takes 1; any byte but 0 reads as true.
    template <CArchiveNumber Number>
    CArchive& operator<<(Number value) {
        store_bytes(static_cast<StoredAs<Number>>(value));
        return *this;
    }
    template <CArchiveNumber Number>
    CArchive& operator>>(Number& value) {
        StoredAs<Number> stored;
        load_bytes(stored);
        if constexpr (std::same_as<Number, bool>) {
            value = stored != 0;
        } else {
            value = static_cast<Number>(stored);
        }
        return *this;
    }

    /// Counted texts: the length in 1, 3 or 7 bytes, then the characters, nuls included. Wide text
    /// holds one UTF-16 code unit in each wchar_t and is stored in 2 bytes a unit behind a mark.
    /// Either kind is read as either: a text of the other kind is converted by the thread's code
    /// page. A text of 4 GiB or more throws generic.
    CArchive& operator<<(const std::string& text);
    CArchive& operator<<(const char* text) { return *this << std::string(text); }
    CArchive& operator<<(const std::wstring& text);
    CArchive& operator<<(const wchar_t* text) { return *this << std::wstring(text); }
    CArchive& operator>>(std::string& text);
    CArchive& operator>>(std::wstring& text);

    /// A count of elements: 2 bytes, or FFFF and 4 bytes from 65535 on. The count is not checked:
    /// take memory for the elements as they are read.
    void WriteCount(std::uint32_t count);
    std::uint32_t ReadCount();

    /// Stores an object with its class, a reference to it where it was stored before, or null.
    /// Objects are distinguished by their address. Throws badSchema for a class that cannot be
    /// stored, badClass where its name is not 1 to 255 printable ASCII characters, and generic for
    /// objects nested deeper than max_nesting.
    void WriteObject(const CObject* object);

    /// Loads an object, one that was loaded before, or null.
    ///
    ///   requested  class of the object or a base of it, checked before anything is made; null for
    ///              any registered class
    ///   returns    null; an object that was met before; or a new one, which the caller owns
    ///
    /// An object that throws while it is loaded is deleted, and it and what came after it cannot be
    /// referred to any more. A new object may be returned only once, but the stream decides how
    /// often it is referred to: do not make every pointer an owner.
    CObject* ReadObject(const CRuntimeClass* requested);

    /// Stores a class, with its record where it is new in the archive.
    void WriteClass(const CRuntimeClass* stored);

    /// Loads a class; the schema that was stored with it goes to `schema` when that is not null.
    const CRuntimeClass* ReadClass(const CRuntimeClass* requested = nullptr,
                                   unsigned int* schema = nullptr);

    /// Stores the class, or loads one and checks that it is this one or derives from it.
    void SerializeClass(const CRuntimeClass* expected);

    /// Enters an object as if it had been stored or loaded, so that others can refer to it. It must
    /// be entered at the same place on both sides. Null is passed over.
    void MapObject(const CObject* object);

    /// The schema that was stored with the object being loaded, for its Serialize to ask once and
    /// first. The next question, and any question outside ReadObject, returns -1.
    unsigned int GetObjectSchema() noexcept;
    void SetObjectSchema(unsigned int schema) noexcept { m_object_schema = schema; }

  private:
    template <class Number>
    static auto stored_type() {
        if constexpr (std::same_as<Number, bool>) {
            return std::uint8_t{};
        } else if constexpr (std::same_as<Number, wchar_t>) {
            return std::uint16_t{};
        } else if constexpr (std::same_as<Number, long>) {
            return std::int32_t{};
        } else if constexpr (std::same_as<Number, unsigned long>) {
            return std::uint32_t{};
        } else {
            return Number{};
        }
    }
    template <class Number>
    using StoredAs = decltype(stored_type<Number>());

    // What an identifier stands for. Both pointers are null for an object that failed to load.
    struct Entry {
        const CRuntimeClass* runtime_class = nullptr;
        CObject* object = nullptr;
        unsigned int schema = 0;  // of a class
    };
    enum class Tag { object, known_class, new_class };
    struct TagRecord {
        Tag kind;
        std::uint32_t identifier;  // 0 for the null pointer; none for a new class
    };
    class Nesting;

    template <class Stored>
    void store_bytes(Stored value) {
        const auto bytes = little_endian(value);
        if (m_mode == store && room() >= sizeof bytes) {
            std::memcpy(m_position, &bytes, sizeof bytes);
            m_position += sizeof bytes;
        } else {
            Write(&bytes, sizeof bytes);
        }
    }

    template <class Stored>
    void load_bytes(Stored& value) {
        if (m_mode == load && room() >= sizeof value) {
            std::memcpy(&value, m_position, sizeof value);
            m_position += sizeof value;
        } else {
            read_all(&value, sizeof value);
        }
        value = little_endian(value);
    }

    template <class Stored>
    static Stored little_endian(Stored value) {
        if constexpr (std::endian::native == std::endian::big) {
            auto* const bytes = reinterpret_cast<unsigned char*>(&value);
            std::reverse(bytes, bytes + sizeof value);
        }
        return value;
    }

    // Loading: bytes that wait in the buffer. Storing: bytes that it has room for.
    std::size_t room() const noexcept { return static_cast<std::size_t>(m_end - m_position); }

    void require(Mode mode) const;
    void fill_buffer();
    void empty_buffer();
    void read_all(void* bytes, std::size_t count);

    void write_length(std::uint64_t length);
    std::uint32_t read_length(bool& is_wide);
    std::string read_narrow(std::uint32_t length);
    std::wstring read_wide(std::uint32_t length);

    void write_reference(std::uint32_t identifier, bool is_class);
    TagRecord read_tag();
    std::uint32_t enter(const Entry& entry);
    const Entry& entry_of(std::uint32_t identifier) const;
    Entry read_class_of(const TagRecord& tag, const CRuntimeClass* requested);
    Entry read_class_record(const CRuntimeClass* requested);
    CObject* known_object(std::uint32_t identifier, const CRuntimeClass* requested) const;
    CObject* read_new_object(const Entry& of_class);

    CFile* m_file;
    Mode m_mode;
    std::vector<unsigned char> m_buffer;
    unsigned char* m_position;
    unsigned char* m_end;
    int m_exceptions_at_start;
    int m_nesting = 0;
    unsigned int m_object_schema = static_cast<unsigned int>(-1);
    std::uint32_t m_last_identifier = 0;
    std::unordered_map<const void*, std::uint32_t> m_stored;  // identifiers by address
    std::vector<Entry> m_loaded;                              // by identifier, from 1
};

/// Stores or loads a pointer to an object with its class, see WriteObject and ReadObject.
inline CArchive& operator<<(CArchive& archive, const CObject* object) {
    archive.WriteObject(object);
    return archive;
}
inline CArchive& operator>>(CArchive& archive, CObject*& object) {
    object = archive.ReadObject(nullptr);
    return archive;
}

#pragma GCC visibility pop
