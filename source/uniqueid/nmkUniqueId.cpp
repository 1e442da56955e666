#include <mfc/CArchive.h>
#include <ncamcontainer/co_hash.h>
#include <nmktoolbox/uniqueid/nmkUniqueId.h>

#include <bit>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <memory>
#include <new>

#include "identifier_blocks.h"

namespace {

static_assert(sizeof(nmkUniqueId) == nmk_uniqueid::identifier_block_size);

constexpr std::uint16_t format_with_serial = 2;  // the format that is written
constexpr int hex_digits = 32;
constexpr int hex_digits_of_word = 8;

constexpr int other_stamp_base = 196992000;
constexpr int other_stamp_range = 10000000;

std::int32_t now_in_32_bits() {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(std::time(nullptr)));
}

constexpr std::uint64_t in_each_byte(std::uint64_t value) { return value * 0x0101010101010101U; }

// The first character of a text is the most significant byte of its number.
std::uint64_t in_order_of_text(std::uint64_t number) {
    return std::endian::native == std::endian::little ? __builtin_bswap64(number) : number;
}

// All eight digits at once: each gets a byte of its own, and then the code of its character.
void write_word(std::uint32_t word, char* text) {
    std::uint64_t digits = word;
    digits = (digits << 16 | digits) & 0x0000FFFF0000FFFFU;
    digits = (digits << 8 | digits) & 0x00FF00FF00FF00FFU;
    digits = (digits << 4 | digits) & in_each_byte(0x0F);
    const std::uint64_t is_letter = (digits + in_each_byte(6)) >> 4 & in_each_byte(1);
    digits += in_each_byte('0') + is_letter * ('a' - '0' - 10);
    digits = in_order_of_text(digits);
    std::memcpy(text, &digits, sizeof digits);
}

// The reverse. Checks nothing: a character that is not a digit gives some number, which is not
// written back as the same text.
std::uint32_t read_word(const char* text) {
    std::uint64_t digits = 0;
    std::memcpy(&digits, text, sizeof digits);
    digits = in_order_of_text(digits);
    const std::uint64_t is_letter = digits >> 6 & in_each_byte(1);
    digits = ((digits & in_each_byte(0x0F)) + is_letter * 9) & in_each_byte(0x0F);
    digits = (digits >> 4 | digits) & 0x00FF00FF00FF00FFU;
    digits = (digits >> 8 | digits) & 0x0000FFFF0000FFFFU;
    return static_cast<std::uint32_t>(digits >> 16 | digits);
}

}  // namespace

std::atomic<int> nmkUniqueId::s_num_id{0};

constinit decltype(e_ptrm_uid_stamp) e_ptrm_uid_stamp = &nmkUniqueId::get_time;

void* nmkUniqueId::operator new(std::size_t size) {
    // A class derived from this one may be larger.
    return size == sizeof(nmkUniqueId) ? nmk_uniqueid::take_identifier_block()
                                       : ::operator new(size);
}

void nmkUniqueId::operator delete(void* block, std::size_t size) noexcept {
    if (block == nullptr) return;
    if (size == sizeof(nmkUniqueId)) {
        nmk_uniqueid::give_identifier_block_back(block);
    } else {
        ::operator delete(block);
    }
}

nmkUniqueId* nmkUniqueId::create() {
    auto* const made = new (nmk_uniqueid::take_identifier_block()) nmkUniqueId;
    made->generate();
    return made;
}

nmkUniqueId* nmkUniqueId::create(nmkPtrInvalid) {
    auto* const made = new nmkUniqueId;
    made->set_invalid();
    return made;
}

nmkUniqueId* nmkUniqueId::create(CArchive& archive) {
    std::unique_ptr<nmkUniqueId> made(new nmkUniqueId);
    made->read(archive);
    return made.release();
}

nmkUniqueId* nmkUniqueId::create(const nmkUniqueId* other) {
    auto* const made = new nmkUniqueId;
    made->become(other);
    return made;
}

void nmkUniqueId::become(const nmkUniqueId* other) {
    if (other == nullptr) {
        set_invalid();
    } else {
        *this = *other;
    }
}

void nmkUniqueId::become(const char* hex) {
    if (hex == nullptr || ::strnlen(hex, hex_digits + 1) != hex_digits) {
        set_invalid();
        return;
    }
    // Deliberate: writing the words back is the only check. It fails for every text that is not in
    // the form in which identifiers are written, capital letters included.
    from_hex(hex);
    char again[hex_digits + 1];
    hex_string(again);
    if (std::memcmp(hex, again, hex_digits) != 0) set_invalid();
}

void nmkUniqueId::become(nmkPtrInvalid) {
    generate();
    m_stamp = invalid_stamp;
}

void nmkUniqueId::set_invalid() { become(nmk_ptr_invalid); }

void nmkUniqueId::update() { generate(); }

int nmkUniqueId::get_time() { return now_in_32_bits(); }

int nmkUniqueId::get_other() {
    static const int seed = std::rand() % other_stamp_range;
    return seed + other_stamp_base + now_in_32_bits() % other_stamp_range;
}

int nmkUniqueId::is_equal(const nmkUniqueId* other) const noexcept {
    if (other == nullptr) return 0;
    if (m_stamp == invalid_stamp && other->m_stamp == invalid_stamp) return 1;
    // One valid and one invalid differ in their stamps.
    return std::memcmp(this, other, sizeof *this) == 0 ? 1 : 0;
}

int nmkUniqueId::operator<(const nmkUniqueId& other) const noexcept {
    // Deliberate: all words are compared as signed, also the two that are unsigned elsewhere.
    const auto by_word = [](std::uint32_t a, std::uint32_t b) {
        return static_cast<std::int32_t>(a) < static_cast<std::int32_t>(b) ? 1 : 0;
    };
    if (m_hash != other.m_hash) return by_word(m_hash, other.m_hash);
    if (m_stamp != other.m_stamp) return m_stamp < other.m_stamp ? 1 : 0;
    if (m_serial != other.m_serial) return m_serial < other.m_serial ? 1 : 0;
    return by_word(m_spare, other.m_spare);
}

void nmkUniqueId::Serialize(CArchive& archive) {
    if (archive.IsStoring()) {
        write(archive);
    } else {
        read(archive);
    }
}

utString nmkUniqueId::hex_string() const {
    utString text;
    hex_string(text);
    return text;
}

void nmkUniqueId::hex_string(utString& text) const {
    char digits[hex_digits + 1];
    hex_string(digits);
    text = digits;
}

void nmkUniqueId::hex_string(char* text) const {
    write_word(m_hash, text);
    write_word(static_cast<std::uint32_t>(m_stamp), text + hex_digits_of_word);
    write_word(static_cast<std::uint32_t>(m_serial), text + 2 * hex_digits_of_word);
    write_word(m_spare, text + 3 * hex_digits_of_word);
    text[hex_digits] = '\0';
}

void nmkUniqueId::from_hex(const char* hex) {
    m_hash = read_word(hex);
    m_stamp = static_cast<std::int32_t>(read_word(hex + hex_digits_of_word));
    m_serial = static_cast<std::int32_t>(read_word(hex + 2 * hex_digits_of_word));
    m_spare = read_word(hex + 3 * hex_digits_of_word);
}

void nmkUniqueId::generate() {
    // Deliberate: the address itself is hashed and not the bytes at it, so that an identifier
    // that is generated anew in place keeps its place in hash tables.
    const nmkUniqueId* const address = this;
    m_hash = co_hash(&address, static_cast<int>(sizeof address));
    // The usual stamp is asked directly, which is faster than through the pointer.
    const bool is_usual = e_ptrm_uid_stamp == &nmkUniqueId::get_time;
    m_stamp = is_usual ? now_in_32_bits() : (this->*e_ptrm_uid_stamp)();
    const auto before = static_cast<std::uint32_t>(s_num_id.fetch_add(1));
    m_spare = 0;
    m_serial = static_cast<std::int32_t>(before + 1U);
}

void nmkUniqueId::write(CArchive& archive) const {
    archive << m_hash << m_stamp << format_with_serial << m_serial << m_spare;
}

void nmkUniqueId::read(CArchive& archive) {
    std::uint32_t hash = 0;
    std::int32_t stamp = 0;
    std::uint16_t format = 0;
    std::int32_t serial = 0;
    std::uint32_t spare = 0;
    archive >> hash >> stamp >> format;
    if (format >= format_with_serial) archive >> serial >> spare;
    m_hash = hash;
    m_stamp = stamp;
    m_serial = serial;
    m_spare = spare;
}
