#include "house/rules/source_text.h"

#include <algorithm>
#include <fstream>
#include <sstream>

namespace nmk_house {

namespace fs = std::filesystem;

namespace {

/// Walks a text once and hands each byte to the code or to the words.
class Splitter {
  public:
    explicit Splitter(std::string_view text) : m_text(text) {}

    SplitText split() {
        while (m_at < m_text.size()) {
            if (starts("//")) {
                words_until("\n", 0);
            } else if (starts("/*")) {
                words_until("*/", 2);
            } else if (starts("R\"") && !within_word()) {
                raw_literal();
            } else if (m_text[m_at] == '"') {
                literal('"');
            } else if (m_text[m_at] == '\'' && !within_word()) {
                literal('\'');
            } else {
                code();
            }
        }
        return m_split;
    }

  private:
    bool starts(std::string_view with) const { return m_text.substr(m_at).starts_with(with); }

    /// Whether the byte before belongs to a name or a number, as in 1'000.
    bool within_word() const {
        if (m_at == 0) return false;
        const char before = m_text[m_at - 1];
        return std::isalnum(static_cast<unsigned char>(before)) != 0 || before == '_';
    }

    void put(char code, char word) {
        m_split.code += code;
        m_split.words += word;
        ++m_at;
    }
    void code() {
        const char c = m_text[m_at];
        put(c, c == '\n' ? '\n' : ' ');
    }
    void word() {
        const char c = m_text[m_at];
        put(c == '\n' ? '\n' : ' ', c);
    }

    void words_until(std::string_view end, std::size_t with_end) {
        const std::size_t found = m_text.find(end, m_at);
        const std::size_t stop = found == m_text.npos ? m_text.size() : found + with_end;
        while (m_at < stop) word();
    }

    void literal(char mark) {
        code();
        while (m_at < m_text.size() && m_text[m_at] != mark && m_text[m_at] != '\n') {
            if (m_text[m_at] == '\\' && m_at + 1 < m_text.size()) word();
            word();
        }
        if (m_at < m_text.size()) code();
    }

    void raw_literal() {
        const std::size_t open = m_text.find('(', m_at);
        if (open == m_text.npos) return code();
        const std::string end = ")" + std::string(m_text.substr(m_at + 2, open - m_at - 2)) + "\"";
        words_until(end, end.size());
    }

    std::string_view m_text;
    std::size_t m_at = 0;
    SplitText m_split;
};

std::string_view trimmed_left(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    return first == text.npos ? std::string_view() : text.substr(first);
}

}  // namespace

SplitText split(std::string_view text) { return Splitter(text).split(); }

std::vector<Include> includes_of(std::string_view text) {
    const std::vector<std::string> code = lines_of(split(text).code);
    const std::vector<std::string> raw = lines_of(text);
    std::vector<Include> includes;
    for (std::size_t i = 0; i < code.size(); ++i) {
        std::string_view line = trimmed_left(code[i]);
        if (!line.starts_with('#')) continue;
        line = trimmed_left(line.substr(1));
        if (!line.starts_with("include")) continue;
        const std::string& whole = raw[i];
        const std::size_t open = whole.find_first_of("<\"");
        const std::size_t close =
            open == whole.npos ? whole.npos : whole.find(whole[open] == '<' ? '>' : '"', open + 1);
        const bool named = close != whole.npos;
        includes.push_back({static_cast<int>(i) + 1,
                            named ? whole.substr(open + 1, close - open - 1) : std::string(),
                            named && whole[open] == '"'});
    }
    return includes;
}

int line_at(std::string_view text, std::size_t position) {
    return 1 + static_cast<int>(
                   std::ranges::count(text.substr(0, std::min(position, text.size())), '\n'));
}

std::string read_text(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

std::vector<std::string> lines_of(std::string_view text) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        lines.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

std::vector<std::string> files_below(const fs::path& root,
                                     const std::vector<std::string>& directories,
                                     const std::vector<std::string>& endings) {
    std::vector<std::string> files;
    for (const std::string& directory : directories) {
        if (!fs::is_directory(root / directory)) continue;
        for (const auto& entry : fs::recursive_directory_iterator(root / directory)) {
            const std::string name = entry.path().lexically_relative(root).generic_string();
            if (entry.is_regular_file() &&
                std::ranges::any_of(endings, [&](auto& end) { return name.ends_with(end); })) {
                files.push_back(name);
            }
        }
    }
    std::ranges::sort(files);
    return files;
}

const std::vector<std::string>& code_directories() {
    static const std::vector<std::string> directories = {
        "include", "source", "platform", "app", "tests", "benchmarks", "fuzz", "examples"};
    return directories;
}

}  // namespace nmk_house
