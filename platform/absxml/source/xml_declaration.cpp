#include "xml_declaration.h"

#include <algorithm>

#include "malformed.h"
#include "xml_characters.h"

namespace nmk_absxml {

namespace {

bool is_digit(char byte) { return byte >= '0' && byte <= '9'; }

bool is_letter(char byte) { return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z'); }

bool is_version(std::string_view text) {
    return text.size() > 2 && text.starts_with("1.") &&
           std::all_of(text.begin() + 2, text.end(), is_digit);
}

bool is_encoding(std::string_view text) {
    const auto belongs = [](char byte) {
        return is_letter(byte) || is_digit(byte) || byte == '.' || byte == '_' || byte == '-';
    };
    return !text.empty() && is_letter(text[0]) && std::all_of(text.begin(), text.end(), belongs);
}

class DeclarationReader {
  public:
    explicit DeclarationReader(const std::string& text) : m_text(text), m_at(text.c_str()) {}

    Declaration read() {
        Declaration declaration;
        const bool is_there = m_text.starts_with("<?xml") && is_space(m_text.c_str()[5]);
        if (!is_there) return declaration;
        m_at += 5;
        if (!read_item("version")) fail("expected version=\"1.0\" in the declaration");
        if (!is_version(m_value)) {
            fail_at(m_value.data(), "the version is " + shown(m_value) + "; expected 1.0");
        }
        if (read_item("encoding")) {
            if (!is_encoding(m_value)) fail_at(m_value.data(), "expected the name of an encoding");
            declaration.encoding = m_value;
            declaration.encoding_offset = offset_of(m_value.data());
        }
        if (read_item("standalone") && m_value != "yes" && m_value != "no") {
            fail_at(m_value.data(), "standalone is " + shown(m_value) + "; expected yes or no");
        }
        m_at = skip_spaces(m_at);
        if (m_at[0] != '?' || m_at[1] != '>') fail("expected ?> at the end of the declaration");
        declaration.length = offset_of(m_at + 2);
        return declaration;
    }

  private:
    std::size_t offset_of(const char* at) const {
        return static_cast<std::size_t>(at - m_text.c_str());
    }
    std::string_view rest_at(const char* at) const {
        return std::string_view(m_text).substr(offset_of(at));
    }
    [[noreturn]] void fail_at(const char* at, std::string message) const {
        throw Malformed{offset_of(at), std::move(message)};
    }
    [[noreturn]] void fail(std::string message) const { fail_at(m_at, std::move(message)); }

    // Reads name="value" into m_value where the next item has this name.
    bool read_item(std::string_view name) {
        const char* const begin = skip_spaces(m_at);
        if (!rest_at(begin).starts_with(name)) return false;
        if (begin == m_at) fail("expected a space before " + std::string(name));
        m_at = skip_spaces(begin + name.size());
        if (*m_at != '=') fail("expected = behind " + std::string(name));
        m_at = skip_spaces(m_at + 1);
        const char quote = *m_at;
        if (quote != '"' && quote != '\'') fail("expected a value in quotes");
        const std::string_view rest = rest_at(m_at + 1);
        const std::size_t end = rest.find(quote);
        if (end == rest.npos) fail("the value has no end; expected a closing quote");
        m_value = rest.substr(0, end);
        m_at += end + 2;
        return true;
    }

    const std::string& m_text;
    const char* m_at;
    std::string_view m_value;
};

}  // namespace

Declaration read_declaration(const std::string& text) { return DeclarationReader(text).read(); }

std::string shown(std::string_view word) {
    constexpr std::size_t max_shown = 40;  // characters
    std::string text = "\"";
    const std::string ended(word.substr(0, 4 * (max_shown + 1)));
    const char* at = ended.c_str();
    std::size_t count = 0;
    for (; *at != '\0' && count < max_shown; ++count) {
        const Character next = character_at(at);
        const bool is_printed = next.length > 0 && next.code >= 0x20 && is_allowed(next.code);
        text += is_printed ? std::string_view(at, next.length) : "?";
        at += next.length > 0 ? next.length : 1;
    }
    return text + (*at != '\0' ? "...\"" : "\"");
}

}  // namespace nmk_absxml
