// CArchive: counted texts and counts.
#include <apsl/apCodePage.h>
#include <mfc/CArchive.h>

namespace {

constexpr std::uint8_t length_in_more_bytes = 0xFF;      // in place of a length below 255
constexpr std::uint16_t wide_mark = 0xFFFE;              // in place of a length of 2 bytes
constexpr std::uint16_t length_in_4_bytes = 0xFFFF;      // likewise
constexpr std::uint32_t length_in_8_bytes = 0xFFFFFFFF;  // in place of a length of 4 bytes
constexpr std::uint16_t count_in_4_bytes = 0xFFFF;       // in place of a count of 2 bytes

// Text is read in pieces of this many bytes, so that a forged length takes no memory.
constexpr std::size_t bytes_at_a_time = 64 * 1024;

[[noreturn]] void fail(CArchiveException::Cause cause) { throw CArchiveException(cause); }

// A wchar_t above U+FFFF, as a wide literal of the compiler has it, becomes two units.
std::vector<unsigned char> bytes_of_units(const std::wstring& text) {
    std::vector<unsigned char> bytes;
    bytes.reserve(text.size() * 2);
    const auto put = [&](std::uint32_t unit) {
        bytes.push_back(static_cast<unsigned char>(unit & 0xFF));
        bytes.push_back(static_cast<unsigned char>(unit >> 8 & 0xFF));
    };
    for (const wchar_t character : text) {
        const std::uint32_t value = static_cast<char32_t>(character);
        if (value > 0xFFFF) {
            put(0xD800 + ((value - 0x10000) >> 10 & 0x3FF));
            put(0xDC00 + (value & 0x3FF));
        } else {
            put(value);
        }
    }
    return bytes;
}

}  // namespace

CArchive& CArchive::operator<<(const std::string& text) {
    write_length(text.size());
    Write(text.data(), text.size());
    return *this;
}

CArchive& CArchive::operator<<(const std::wstring& text) {
    require(store);
    const std::vector<unsigned char> bytes = bytes_of_units(text);
    *this << length_in_more_bytes << wide_mark;
    write_length(bytes.size() / 2);
    Write(bytes.data(), bytes.size());
    return *this;
}

CArchive& CArchive::operator>>(std::string& text) {
    bool is_wide = false;
    const std::uint32_t length = read_length(is_wide);
    int status = 0;
    text =
        is_wide ? ap_encode(ap_thread_code_page(), read_wide(length), status) : read_narrow(length);
    return *this;
}

CArchive& CArchive::operator>>(std::wstring& text) {
    bool is_wide = false;
    const std::uint32_t length = read_length(is_wide);
    int status = 0;
    text =
        is_wide ? read_wide(length) : ap_decode(ap_thread_code_page(), read_narrow(length), status);
    return *this;
}

void CArchive::WriteCount(std::uint32_t count) {
    if (count < count_in_4_bytes) {
        *this << static_cast<std::uint16_t>(count);
    } else {
        *this << count_in_4_bytes << count;
    }
}

std::uint32_t CArchive::ReadCount() {
    std::uint16_t small = 0;
    *this >> small;
    if (small != count_in_4_bytes) return small;
    std::uint32_t count = 0;
    *this >> count;
    return count;
}

void CArchive::write_length(std::uint64_t length) {
    require(store);
    if (length >= length_in_8_bytes) fail(CArchiveException::generic);
    if (length < length_in_more_bytes) {
        *this << static_cast<std::uint8_t>(length);
    } else if (length < wide_mark) {
        *this << length_in_more_bytes << static_cast<std::uint16_t>(length);
    } else {
        *this << length_in_more_bytes << length_in_4_bytes << static_cast<std::uint32_t>(length);
    }
}

std::uint32_t CArchive::read_length(bool& is_wide) {
    std::uint8_t in_1_byte = 0;
    *this >> in_1_byte;
    if (in_1_byte != length_in_more_bytes) return in_1_byte;
    std::uint16_t in_2_bytes = 0;
    *this >> in_2_bytes;
    if (in_2_bytes == wide_mark) {
        if (is_wide) fail(CArchiveException::badIndex);
        is_wide = true;
        return read_length(is_wide);
    }
    if (in_2_bytes != length_in_4_bytes) return in_2_bytes;
    std::uint32_t in_4_bytes = 0;
    *this >> in_4_bytes;
    if (in_4_bytes == length_in_8_bytes) fail(CArchiveException::badIndex);
    return in_4_bytes;
}

std::string CArchive::read_narrow(std::uint32_t length) {
    std::string text;
    while (text.size() < length) {
        const std::size_t piece = std::min(bytes_at_a_time, length - text.size());
        const std::size_t before = text.size();
        text.resize(before + piece);
        read_all(text.data() + before, piece);
    }
    return text;
}

std::wstring CArchive::read_wide(std::uint32_t length) {
    std::wstring text;
    unsigned char bytes[bytes_at_a_time / 16];
    while (text.size() < length) {
        const std::size_t piece = std::min(sizeof bytes / 2, length - text.size());
        read_all(bytes, piece * 2);
        for (std::size_t i = 0; i < piece; ++i) {
            text += static_cast<wchar_t>(bytes[2 * i] | bytes[2 * i + 1] << 8);
        }
    }
    return text;
}
