#include "document_check.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

#include "malformed.h"
#include "xml_characters.h"
#include "xml_declaration.h"

namespace nmk_absxml {

namespace {

struct OpenElement {
    std::string_view name;
    bool has_content = false;  // anything but white space
    bool has_child_elements = false;
    bool has_space_beside_markup = false;
};

// Of a start tag with more attributes their names are kept in a set.
constexpr std::size_t max_compared_attributes = 8;

bool starts_with(const char* at, std::string_view text) {
    for (const char byte : text) {
        if (*at++ != byte) return false;
    }
    return true;
}

class DocumentCheck {
  public:
    DocumentCheck(const std::string& text, std::size_t begin)
        : m_text(text), m_at(text.c_str() + begin) {}

    DocumentFacts check() {
        check_outside_of_root();
        if (is_at_end()) fail("the document has no root element; expected <");
        m_facts.root_offset = offset_of(m_at);
        m_facts.depth = 1;
        check_start_tag();
        while (!m_open.empty()) check_content();
        check_outside_of_root();
        if (!is_at_end()) fail("a second root element; expected the end of the document");
        return m_facts;
    }

  private:
    std::size_t offset_of(const char* at) const {
        return static_cast<std::size_t>(at - m_text.c_str());
    }
    bool is_at_end() const { return offset_of(m_at) == m_text.size(); }

    [[noreturn]] void fail_at(const char* at, std::string message) const {
        throw Malformed{offset_of(at), std::move(message)};
    }
    [[noreturn]] void fail(std::string message) const { fail_at(m_at, std::move(message)); }

    // Stops at a start tag and at the end of the text.
    void check_outside_of_root() {
        for (;;) {
            m_at = skip_spaces(m_at);
            if (is_at_end()) return;
            if (*m_at != '<') fail("text outside the root element; expected <");
            if (starts_with(m_at, "<!--")) {
                check_comment();
            } else if (m_at[1] == '?') {
                check_instruction();
            } else if (starts_with(m_at, "<!DOCTYPE")) {
                fail("a document type is not supported; expected the root element");
            } else {
                return;
            }
        }
    }

    // Text, and the one piece of markup behind it.
    void check_content() {
        const char* const begin = m_at;
        m_at = skip_spaces(m_at);
        const bool is_space_alone = *m_at == '<' && m_at != begin;
        check_text();
        OpenElement& parent = m_open.back();
        const bool had_content = std::exchange(parent.has_content, true);
        if (m_at[1] == '/') {
            if (is_space_alone && had_content) parent.has_space_beside_markup = true;
            check_end_tag();
            return;
        }
        if (is_space_alone) parent.has_space_beside_markup = true;
        check_markup(parent);
    }

    void check_markup(OpenElement& parent) {
        if (m_at[1] == '!') {
            if (starts_with(m_at, "<!--")) return check_comment();
            if (starts_with(m_at, "<![CDATA[")) return check_section();
            fail("expected <!-- or <![CDATA[");
        }
        if (m_at[1] == '?') return check_instruction();
        parent.has_child_elements = true;
        check_start_tag();
    }

    // To the next "<".
    void check_text() {
        for (;;) {
            m_at = skip_to(m_at, ends_text);
            switch (*m_at) {
                case '<':
                    return;
                case '&':
                    check_reference();
                    break;
                case ']':
                    if (starts_with(m_at, "]]>")) fail("\"]]>\" in a text; expected ]]&gt;");
                    ++m_at;
                    break;
                default:
                    if (is_at_end()) fail_at_end();
                    check_character();
            }
        }
    }

    [[noreturn]] void fail_at_end() const {
        fail("the document ends inside an element; expected </" + name_for_message() + ">");
    }
    std::string name_for_message() const {
        const std::string quoted = shown(m_open.back().name);
        return quoted.substr(1, quoted.size() - 2);
    }

    // One that skip_to has stopped at.
    void check_character() {
        const Character next = character_at(m_at);
        if (next.length == 0 && *m_at != '\0') fail("bytes that are not UTF-8");
        if (next.length == 0 || !is_allowed(next.code)) {
            fail("a character that no document may hold, such as a control character");
        }
        m_at += next.length;
    }

    std::string_view check_name(const char* what) {
        const std::size_t length = name_length(m_at);
        if (length == 0) fail(std::string("expected ") + what);
        const std::string_view name(m_at, length);
        m_at += length;
        return name;
    }

    void check_reference() {
        const char* const begin = m_at++;
        if (*m_at == '#') {
            ++m_at;
            return check_number(begin);
        }
        const std::size_t length = name_length(m_at);
        if (length == 0) fail_at(begin, "\"&\" alone; expected &amp;");
        const std::string_view name(m_at, length);
        m_at += length;
        if (*m_at != ';') fail_at(begin, "a reference without its end; expected ; or &amp;");
        const std::string_view known[] = {"lt", "gt", "amp", "apos", "quot"};
        if (std::find(std::begin(known), std::end(known), name) == std::end(known)) {
            fail_at(begin, "the entity " + shown(name) +
                               " is unknown; expected lt, gt, amp, apos or quot");
        }
        ++m_at;
    }

    static int digit_value(char byte, bool is_hexadecimal) {
        if (byte >= '0' && byte <= '9') return byte - '0';
        if (is_hexadecimal && byte >= 'a' && byte <= 'f') return byte - 'a' + 10;
        if (is_hexadecimal && byte >= 'A' && byte <= 'F') return byte - 'A' + 10;
        return -1;
    }

    void check_number(const char* begin) {
        constexpr std::uint32_t too_large = 0x110000;
        const bool is_hexadecimal = *m_at == 'x';
        if (is_hexadecimal) ++m_at;
        const char* const digits = m_at;
        std::uint32_t code = 0;
        for (int digit = 0; (digit = digit_value(*m_at, is_hexadecimal)) >= 0; ++m_at) {
            code = std::min(
                too_large, code * (is_hexadecimal ? 16U : 10U) + static_cast<std::uint32_t>(digit));
        }
        if (m_at == digits || *m_at != ';') {
            fail_at(begin, "expected the number of a character and ; behind &#");
        }
        if (!is_allowed(code))
            fail_at(begin, "a reference to a character that no document may hold");
        ++m_at;
    }

    void check_start_tag() {
        ++m_at;
        const std::string_view name = check_name("a name behind <");
        check_attributes();
        if (*m_at == '>') {
            ++m_at;
            m_open.push_back({name});
            // What the element has is one deeper.
            m_facts.depth = std::max(m_facts.depth, m_open.size() + 1);
        } else {
            m_at += 2;
        }
    }

    // Stops at ">" and at "/>".
    void check_attributes() {
        m_attributes.clear();
        if (!m_many_attributes.empty()) m_many_attributes.clear();
        for (;;) {
            const char* const behind = m_at;
            m_at = skip_spaces(m_at);
            if (*m_at == '>' || (*m_at == '/' && m_at[1] == '>')) return;
            if (m_at == behind) fail("expected a space, > or /> in the start tag");
            const char* const begin = m_at;
            const std::string_view name = check_name("the name of an attribute, > or />");
            if (!is_new_attribute(name)) {
                fail_at(begin, "the attribute " + shown(name) + " is given twice");
            }
            check_attribute_value();
        }
    }

    bool is_new_attribute(std::string_view name) {
        if (m_attributes.size() < max_compared_attributes) {
            const bool is_new =
                std::find(m_attributes.begin(), m_attributes.end(), name) == m_attributes.end();
            m_attributes.push_back(name);
            return is_new;
        }
        if (m_many_attributes.empty()) {
            m_many_attributes.insert(m_attributes.begin(), m_attributes.end());
        }
        return m_many_attributes.insert(name).second;
    }

    void check_attribute_value() {
        m_at = skip_spaces(m_at);
        if (*m_at != '=') fail("expected = behind the name of the attribute");
        m_at = skip_spaces(m_at + 1);
        const char quote = *m_at;
        if (quote != '"' && quote != '\'') fail("expected the value of the attribute in quotes");
        const char* const begin = m_at++;
        for (;;) {
            m_at = skip_to(m_at, quote == '"' ? ends_double_quoted : ends_single_quoted);
            if (*m_at == quote) break;
            if (*m_at == '&') {
                check_reference();
            } else if (*m_at == '<') {
                fail("\"<\" in the value of an attribute; expected &lt;");
            } else if (is_at_end()) {
                fail_at(begin, "the value has no end; expected a closing quote");
            } else {
                check_character();
            }
        }
        ++m_at;
    }

    void check_end_tag() {
        const char* const begin = m_at;
        m_at += 2;
        const std::string_view name = check_name("a name behind </");
        const OpenElement& element = m_open.back();
        if (name != element.name) {
            fail_at(begin,
                    "the end tag of " + shown(name) + "; expected </" + name_for_message() + ">");
        }
        m_at = skip_spaces(m_at);
        if (*m_at != '>') fail("expected > in the end tag");
        ++m_at;
        if (element.has_space_beside_markup && !element.has_child_elements) {
            m_facts.has_space_beside_markup = true;
        }
        m_open.pop_back();
    }

    // Passes over `open` characters of markup, then over characters up to and with `end`, whose
    // first byte is the only one of printable ASCII in the class `stop`.
    void check_up_to(std::string_view end, ByteClass stop, std::size_t open, const char* what) {
        const char* const begin = m_at;
        m_at += open;
        for (;;) {
            m_at = skip_to(m_at, stop);
            if (starts_with(m_at, end)) break;
            if (is_at_end()) {
                fail_at(begin, std::string(what) + " has no end; expected " + std::string(end));
            }
            if (*m_at == end[0]) {
                ++m_at;
            } else {
                check_character();
            }
        }
        m_at += end.size();
    }

    void check_comment() {
        check_up_to("--", ends_comment, 4, "the comment");
        if (*m_at != '>') fail_at(m_at - 2, "\"--\" in a comment; expected -->");
        ++m_at;
    }

    void check_section() { check_up_to("]]>", ends_section, 9, "the CDATA section"); }

    void check_instruction() {
        const std::size_t length = name_length(m_at + 2);
        const std::string_view name(m_at + 2, length);
        if (length == 0) fail("expected the name of a processing instruction behind <?");
        const bool is_reserved = name.size() == 3 && (name[0] | 0x20) == 'x' &&
                                 (name[1] | 0x20) == 'm' && (name[2] | 0x20) == 'l';
        if (is_reserved) {
            fail(
                "a declaration that is not the first of the document; expected another name behind "
                "<?");
        }
        const char* const behind = m_at + 2 + length;
        if (!is_space(*behind) && !starts_with(behind, "?>")) {
            fail_at(behind, "expected a space or ?> behind the name of a processing instruction");
        }
        check_up_to("?>", ends_instruction, 2 + length, "the processing instruction");
    }

    const std::string& m_text;
    const char* m_at;
    DocumentFacts m_facts;
    std::vector<OpenElement> m_open;
    std::vector<std::string_view> m_attributes;
    std::unordered_set<std::string_view> m_many_attributes;
};

}  // namespace

DocumentFacts check_document(const std::string& text, std::size_t declaration_length) {
    return DocumentCheck(text, declaration_length).check();
}

}  // namespace nmk_absxml
