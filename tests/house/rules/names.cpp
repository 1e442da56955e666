// names: how types, private data members and helpers of ours are named, as far as a walk over the
// tokens of a file can tell without knowing the language in full.
//
// Walked are the scopes of namespaces, types and everything else in braces. A statement is the row
// of tokens since the last ';', '{' or '}' of its scope.
#include <algorithm>
#include <array>
#include <cctype>
#include <optional>

#include "house/rules/open_rooms.h"
#include "house/rules/rules.h"
#include "house/rules/source_text.h"

namespace nmk_house {

namespace {

struct Token {
    std::string text;
    int line;
};

bool is_name_part(char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_'; }
bool is_name(const std::string& text) {
    return is_name_part(text[0]) && std::isdigit(static_cast<unsigned char>(text[0])) == 0;
}

/// The tokens of a file without its preprocessor lines, comments and the inside of literals.
std::vector<Token> tokens_of(const std::string& text) {
    std::vector<Token> tokens;
    int line = 0;
    bool directive = false;
    for (const std::string& code : lines_of(split(text).code)) {
        ++line;
        const std::size_t first = code.find_first_not_of(" \t");
        directive = directive || (first != code.npos && code[first] == '#');
        for (std::size_t at = 0; !directive && at < code.size();) {
            std::size_t end = at + 1;
            while (is_name_part(code[at]) && end < code.size() && is_name_part(code[end])) ++end;
            if (code.compare(at, 2, "::") == 0) end = at + 2;
            if (code[at] != ' ' && code[at] != '\t') {
                tokens.push_back({code.substr(at, end - at), line});
            }
            at = end;
        }
        directive = directive && code.ends_with('\\');
    }
    return tokens;
}

using Statement = std::vector<Token>;

bool begins_with_any(const std::string& name, std::initializer_list<const char*> prefixes) {
    return std::ranges::any_of(prefixes,
                               [&](const char* prefix) { return name.starts_with(prefix); });
}

/// Names that callers were given begin with the short name of their library, or have the toolbox's
/// in them; those of the system begin with an underscore.
bool is_given(const std::string& name) {
    constexpr std::array libraries = {"ut",  "co",  "coi", "baseco", "gi", "ap",           "ngk",
                                      "dbg", "fba", "ml",  "winapi", "g",  "CRuntimeClass"};
    constexpr std::array others = {"apprintf",    "apwait", "apstrcasecmp", "timedp",
                                   "nmADJ_ERROR", "fcdate", "serialize"};
    if (name.starts_with('_') || name.find("nmk") != name.npos) return true;
    return std::ranges::find(others, name) != others.end() ||
           std::ranges::any_of(libraries, [&](const std::string& library) {
               const char next = name.starts_with(library) && name.size() > library.size()
                                     ? name[library.size()]
                                     : 'a';
               return next == '_' || std::isupper(static_cast<unsigned char>(next)) != 0;
           });
}

/// The position of a token outside of < > and ( ), or the size.
std::size_t find_outside(const Statement& statement, std::initializer_list<const char*> wanted) {
    int depth = 0;
    for (std::size_t i = 0; i < statement.size(); ++i) {
        const std::string& text = statement[i].text;
        if (depth == 0 && std::ranges::any_of(wanted, [&](auto w) { return text == w; })) return i;
        if (text == "<" || text == "(") ++depth;
        if ((text == ">" || text == ")") && depth > 0) --depth;
    }
    return statement.size();
}

/// A type that a statement in front of '{' defines.
struct TypeHead {
    std::string keyword;
    Token name;
    bool is_test_suite;
};

std::optional<TypeHead> type_head(const Statement& statement) {
    const std::size_t at = find_outside(statement, {"class", "struct", "union", "enum"});
    if (at == statement.size() || find_outside(statement, {"="}) < statement.size()) return {};
    TypeHead head{statement[at].text, {"", statement[at].line}, false};
    for (std::size_t i = at + 1; i < statement.size(); ++i) {
        const std::string& text = statement[i].text;
        if (text == ":" || text == "<" || text == "requires") break;
        if (text == "(" && !statement[i - 1].text.starts_with("alignas")) return {};
        if (text == "::") return TypeHead{head.keyword, {"", statement[at].line}, false};
        if (is_name(text) && text != "final" && text != "class" && text != "struct" &&
            text != "alignas") {
            head.name = statement[i];
        }
    }
    head.is_test_suite =
        std::ranges::any_of(statement, [](const Token& t) { return t.text == "testing"; });
    return head;
}

/// The name of a data member that a statement in front of ';' or an initialiser declares; empty
/// where it declares something else.
Token data_member(const Statement& statement) {
    constexpr std::array others = {"using",    "typedef", "friend",   "static_assert",
                                   "template", "enum",    "struct",   "class",
                                   "union",    "static",  "operator", "extern"};
    for (const Token& token : statement) {
        if (std::ranges::any_of(others, [&](auto other) { return token.text == other; })) return {};
    }
    const std::size_t end = find_outside(statement, {"=", "{", "[", ":", "("});
    if (end < 2 || (end < statement.size() && statement[end].text == "(")) return {};
    return is_name(statement[end - 1].text) ? statement[end - 1] : Token{};
}

/// The name of a function or constant that a statement declares; empty for members of a class that
/// are defined outside of it, operators and everything else.
Token helper(const Statement& statement) {
    constexpr std::array others = {"using",    "typedef", "friend",   "static_assert", "template",
                                   "operator", "class",   "struct",   "enum",          "union",
                                   ",",        "extern",  "decltype", "alignas"};
    for (const Token& token : statement) {
        if (token.text == "(" || token.text == "=") break;
        if (std::ranges::any_of(others, [&](auto other) { return token.text == other; })) return {};
    }
    const std::size_t end = find_outside(statement, {"(", "=", "[", "{"});
    if (end < 2 || end == statement.size() || !is_name(statement[end - 1].text)) return {};
    return statement[end - 2].text == "::" || statement[end - 2].text == "~" ? Token{}
                                                                             : statement[end - 1];
}

bool has_case(const std::string& name, int (*is)(int)) {
    return std::ranges::any_of(name,
                               [&](char c) { return is(static_cast<unsigned char>(c)) != 0; });
}

/// Whether a type's name has underscores between words; all capitals are names of the system.
bool separates_words(const std::string& name) {
    return name.find('_') != name.npos && has_case(name, std::islower) && !is_given(name);
}

enum class ScopeKind { names, type, other };

struct Scope {
    ScopeKind kind;
    bool is_global;
    bool is_private;
};

/// Walks one file.
class NameWalk {
  public:
    NameWalk(std::string file, Findings& findings) : m_file(std::move(file)), m_findings(findings) {
        m_checks_helpers = begins_with_any(m_file, {"source/", "app/", "platform/"});
        // Callers know the data members of public classes by name.
        m_checks_members = !begins_with_any(m_file, {"tests/", "include/"});
    }

    void walk(const std::vector<Token>& tokens) {
        for (const Token& token : tokens) take(token);
    }

  private:
    const Scope& scope() const { return m_scopes.back(); }

    void take(const Token& token) {
        if (token.text == "{") {
            open();
        } else if (token.text == "}") {
            close();
        } else if (token.text == ";" && scope().kind != ScopeKind::other) {
            end_statement();
        } else if (token.text == ":" && scope().kind == ScopeKind::type && is_access()) {
            m_scopes.back().is_private = m_statement.back().text == "private";
            m_statement.clear();
        } else if (scope().kind != ScopeKind::other) {
            m_statement.push_back(token);
        }
    }

    bool is_access() const {
        return m_statement.size() == 1 &&
               (m_statement[0].text == "public" || m_statement[0].text == "protected" ||
                m_statement[0].text == "private");
    }

    void open() {
        if (scope().kind == ScopeKind::other) {
            m_scopes.push_back({ScopeKind::other, false, false});
            return;
        }
        const bool linkage = !m_statement.empty() && m_statement[0].text == "extern";
        if (linkage || (find_outside(m_statement, {"namespace"}) < m_statement.size())) {
            m_scopes.push_back({ScopeKind::names, linkage && scope().is_global, false});
            m_statement.clear();
        } else if (const auto head = type_head(m_statement)) {
            open_type(*head);
        } else {
            open_other();
        }
    }

    void open_type(const TypeHead& head) {
        check_type(head);
        const bool has_members = head.keyword != "enum";
        m_scopes.push_back(
            {has_members ? ScopeKind::type : ScopeKind::other, false, head.keyword == "class"});
        m_statement.clear();
    }

    /// The body of a function ends its statement; an initialiser belongs to it.
    void open_other() {
        const bool function = find_outside(m_statement, {"("}) < m_statement.size() &&
                              find_outside(m_statement, {"="}) == m_statement.size();
        if (function) {
            check_helper();
            m_statement.clear();
        } else {
            m_statement.push_back({"{", m_statement.empty() ? 0 : m_statement.back().line});
        }
        m_scopes.push_back({ScopeKind::other, false, false});
    }

    void close() {
        if (m_scopes.size() > 1) m_scopes.pop_back();
        if (scope().kind == ScopeKind::names &&
            find_outside(m_statement, {"{"}) == m_statement.size()) {
            m_statement.clear();
        }
    }

    void end_statement() {
        if (scope().kind == ScopeKind::type && scope().is_private && m_checks_members) {
            const Token name = data_member(m_statement);
            if (!name.text.empty() && !name.text.starts_with("m_")) {
                report(name, "private data member " + name.text + "; expected m_" + name.text);
            }
        }
        check_helper();
        m_statement.clear();
    }

    void check_type(const TypeHead& head) {
        const std::string& name = head.name.text;
        if (name.empty() || head.is_test_suite) return;
        // A suite of tests is named for what it tests.
        const bool suite =
            m_file.starts_with("tests/") && !has_case(name.substr(0, 1), std::isupper);
        if (separates_words(name) && !suite) {
            report(head.name, "type " + name + "; expected CapitalisedWords");
        }
        if (m_checks_helpers && !m_file.starts_with("platform/") && scope().is_global &&
            !is_given(name)) {
            report(head.name,
                   "type " + name + " in the global namespace; expected one of the room");
        }
    }

    void check_helper() {
        if (!m_checks_helpers || !scope().is_global) return;
        const Token name = helper(m_statement);
        const bool lower = !name.text.empty() && !has_case(name.text, std::isupper);
        if (lower && !is_given(name.text) && name.text != "main") {
            report(name, name.text + " in the global namespace; expected one of the room");
        }
    }

    void report(const Token& at, const std::string& what) {
        m_findings.push_back(m_file + ":" + std::to_string(at.line) + ": " + what);
    }

    std::string m_file;
    Findings& m_findings;
    bool m_checks_helpers = false;
    bool m_checks_members = false;
    std::vector<Scope> m_scopes = {{ScopeKind::names, true, false}};
    Statement m_statement;
};

}  // namespace

Findings names(const std::filesystem::path& root) {
    Findings findings;
    const std::vector<std::string> files = files_below(root, code_directories(), {".h", ".cpp"});
    if (files.empty()) findings.push_back("no files to check");
    for (const std::string& file : files) {
        NameWalk(file, findings).walk(tokens_of(read_text(root / file)));
    }
    return without_open_rooms(root, "names", findings);
}

}  // namespace nmk_house
