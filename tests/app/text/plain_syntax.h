// plain_syntax.h: plain checkers of JSON and XML syntax for the output of the tool.
//
// They return whether a whole text is well-formed; the XML one accepts elements, attributes, text,
// the references that the tool writes, one leading <!DOCTYPE ...>, and the raw text of scripts and
// styles.
#pragma once

#include <cctype>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace plain_syntax {

class Json {
  public:
    static bool is_valid(std::string_view text) {
        Json json{text};
        return json.value(0) && (json.blanks(), json.text.empty());
    }

  private:
    explicit Json(std::string_view whole) : text(whole) {}

    void blanks() {
        while (!text.empty() && std::string_view(" \n\r\t").find(text[0]) != text.npos) {
            text.remove_prefix(1);
        }
    }
    bool take(std::string_view token) {
        blanks();
        const bool found = text.starts_with(token);
        text.remove_prefix(found ? token.size() : 0);
        return found;
    }
    bool string() {
        if (!take("\"")) return false;
        while (!text.empty() && text[0] != '"') {
            if (static_cast<unsigned char>(text[0]) < 0x20) return false;
            if (text[0] == '\\' && !escape()) return false;
            text.remove_prefix(1);
        }
        return take("\"");
    }
    bool escape() {  // does not take the last character of the escape
        text.remove_prefix(1);
        if (text.empty()) return false;
        if (text[0] != 'u') return std::string_view("\"\\/bfnrt").find(text[0]) != text.npos;
        if (text.size() < 5) return false;
        for (std::size_t i = 1; i <= 4; ++i) {
            if (std::isxdigit(static_cast<unsigned char>(text[i])) == 0) return false;
        }
        text.remove_prefix(4);
        return true;
    }
    std::size_t digits() {
        std::size_t count = 0;
        while (count < text.size() && text[count] >= '0' && text[count] <= '9') ++count;
        text.remove_prefix(count);
        return count;
    }
    bool number() {
        if (text.starts_with('-')) text.remove_prefix(1);
        const bool zero = text.starts_with('0');
        const std::size_t whole = digits();
        if (whole == 0 || (zero && whole > 1)) return false;
        if (text.starts_with('.')) {
            text.remove_prefix(1);
            if (digits() == 0) return false;
        }
        if (!text.starts_with('e') && !text.starts_with('E')) return true;
        text.remove_prefix(1);
        if (text.starts_with('+') || text.starts_with('-')) text.remove_prefix(1);
        return digits() > 0;
    }
    bool list(std::string_view close, bool named, int depth) {
        if (take(close)) return true;
        do {
            if (named && !(string() && take(":"))) return false;
            if (!value(depth + 1)) return false;
        } while (take(","));
        return take(close);
    }
    bool value(int depth) {
        blanks();
        if (text.empty() || depth > 50) return false;
        if (take("{")) return list("}", true, depth);
        if (take("[")) return list("]", false, depth);
        if (text[0] == '"') return string();
        return take("true") || take("false") || take("null") || number();
    }

    std::string_view text;
};

class Xml {
  public:
    static bool is_well_formed(std::string_view text) { return Xml{text}.document(); }

  private:
    explicit Xml(std::string_view whole) : text(whole) {}

    bool document() {
        if (text.starts_with("<!DOCTYPE")) text.remove_prefix(text.find('>') + 1);
        std::size_t roots = 0;
        while (!text.empty()) {
            if (text[0] == '<') {
                roots += open.empty() ? 1 : 0;
                if (!tag()) return false;
            } else if (!character(open.empty())) {
                return false;
            }
        }
        return open.empty() && roots == 1;
    }
    bool character(bool outside) {
        const auto c = static_cast<unsigned char>(text[0]);
        if ((c < 0x20 && c != '\n' && c != '\t' && c != '\r') || c == 0x7F) return false;
        if (outside && c != '\n') return false;
        if (c == '&') {
            const std::string_view name = text.substr(0, text.find(';') + 1);
            if (name != "&amp;" && name != "&lt;" && name != "&gt;" && name != "&quot;" &&
                name != "&#39;") {
                return false;
            }
        }
        text.remove_prefix(1);
        return true;
    }
    std::string name() {
        std::size_t length = 0;
        while (length < text.size() &&
               (std::isalnum(static_cast<unsigned char>(text[length])) != 0 ||
                text[length] == '-' || text[length] == ':')) {
            ++length;
        }
        std::string result(text.substr(0, length));
        text.remove_prefix(length);
        return result;
    }
    bool tag() {
        text.remove_prefix(1);
        if (text.starts_with('/')) {
            text.remove_prefix(1);
            const std::string closed = name();
            if (open.empty() || open.back() != closed || !text.starts_with('>')) return false;
            open.pop_back();
            text.remove_prefix(1);
            return true;
        }
        const std::string opened = name();
        if (opened.empty() || !attributes()) return false;
        const bool empty = text.starts_with('/');
        text.remove_prefix(empty ? 1 : 0);
        if (!text.starts_with('>')) return false;
        text.remove_prefix(1);
        if (empty) return true;
        open.push_back(opened);
        return (opened != "script" && opened != "style") || raw_text("</" + opened + ">");
    }
    /// The text of a script or style, in which nothing is escaped, up to its end.
    bool raw_text(const std::string& end) {
        const std::size_t length = text.find(end);
        if (length == text.npos) return false;
        text.remove_prefix(length);
        return true;
    }
    bool attributes() {
        std::vector<std::string> seen;
        while (text.starts_with(' ')) {
            text.remove_prefix(1);
            const std::string attribute = name();
            if (attribute.empty() || !text.starts_with("=\"")) return false;
            for (const std::string& other : seen) {
                if (other == attribute) return false;
            }
            seen.push_back(attribute);
            text.remove_prefix(2);
            while (!text.empty() && text[0] != '"') {
                if (text[0] == '<' || !character(false)) return false;
            }
            if (text.empty()) return false;
            text.remove_prefix(1);
        }
        return true;
    }

    std::string_view text;
    std::vector<std::string> open;
};

}  // namespace plain_syntax
