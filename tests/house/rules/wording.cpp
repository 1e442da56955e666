// wording: phrases of tests/house/wording.txt, looked for in comments, literals and test names.
//
// A text is taken as a row of lower-case words; underscores separate words as blanks do, and every
// mark that ends a sentence, or the beginning of a comment or literal, counts as the word ".".
#include <algorithm>
#include <cctype>
#include <sstream>

#include "house/rules/open_rooms.h"
#include "house/rules/rules.h"
#include "house/rules/source_text.h"

namespace nmk_house {

namespace {

struct Word {
    std::string text;
    int line;
};

struct Phrase {
    std::vector<std::string> words;     // "*" is any one word
    std::vector<std::string> unless;    // words that excuse it, in front of it
    std::vector<std::string> followed;  // words that excuse it, after it
    std::string instead;
};

bool is_letter(char c) { return std::isalpha(static_cast<unsigned char>(c)) != 0 || c == '\''; }

std::vector<Word> words_of(const std::string& text, bool lines_are_sentences) {
    std::vector<Word> words = {{".", 1}};
    int line = 1;
    for (std::size_t at = 0; at < text.size();) {
        if (is_letter(text[at])) {
            std::string word;
            for (; at < text.size() && is_letter(text[at]); ++at) {
                word += static_cast<char>(std::tolower(static_cast<unsigned char>(text[at])));
            }
            words.push_back({word, line});
            continue;
        }
        const bool ends = std::string_view(".:;!?`\"").find(text[at]) != std::string_view::npos;
        if (ends || (lines_are_sentences && text[at] == '\n')) words.push_back({".", line});
        if (text[at] == '\n') ++line;
        ++at;
    }
    return words;
}

/// The words of comments and literals, and of the names of tests.
std::vector<Word> words_of_code(const std::string& text) {
    const SplitText parts = split(text);
    std::string words;
    const std::vector<std::string> code = lines_of(parts.code);
    const std::vector<std::string> said = lines_of(parts.words);
    for (std::size_t i = 0; i < said.size(); ++i) {
        const bool literal = code[i].find('"') != std::string::npos;
        const bool test = code[i].starts_with("TEST");
        words += (literal ? "\"" : "") + said[i] + (test ? "." + code[i] : "") + "\n";
    }
    return words_of(words, false);
}

/// Lines "phrase | unless after words | unless before words | what to write instead".
std::vector<Phrase> phrases_of(const std::string& text) {
    std::vector<Phrase> phrases;
    const auto split_words = [](const std::string& cell) {
        std::istringstream stream(cell);
        std::vector<std::string> words;
        for (std::string word; stream >> word;) words.push_back(word);
        return words;
    };
    for (const std::string& line : lines_of(text)) {
        if (line.empty() || line.starts_with('#')) continue;
        std::istringstream rest(line);
        std::string cells[4];
        for (std::string& cell : cells) std::getline(rest, cell, '|');
        phrases.push_back(
            {split_words(cells[0]), split_words(cells[1]), split_words(cells[2]), cells[3]});
    }
    return phrases;
}

bool contains(const std::vector<std::string>& words, const std::string& word) {
    return std::ranges::find(words, word) != words.end();
}

bool is_at(const std::vector<Word>& words, std::size_t at, const Phrase& phrase) {
    if (at + phrase.words.size() > words.size()) return false;
    for (std::size_t i = 0; i < phrase.words.size(); ++i) {
        const std::string& word = words[at + i].text;
        const std::string& wanted = phrase.words[i];
        if (wanted == "*" ? word == "." : word != wanted) return false;
    }
    const std::size_t end = at + phrase.words.size();
    return !(at > 0 && contains(phrase.unless, words[at - 1].text)) &&
           !(end < words.size() && contains(phrase.followed, words[end].text));
}

void check_words(const std::string& file, const std::vector<Word>& words,
                 const std::vector<Phrase>& phrases, Findings& findings) {
    for (std::size_t at = 0; at < words.size(); ++at) {
        for (const Phrase& phrase : phrases) {
            if (!is_at(words, at, phrase)) continue;
            std::string found;
            for (std::size_t i = 0; i < phrase.words.size(); ++i) {
                found += (i > 0 ? " " : "") + words[at + i].text;
            }
            const int line = words[at + phrase.words.size() - 1].line;
            findings.push_back(file + ":" + std::to_string(line) + ": \"" + found + "\"; write" +
                               phrase.instead);
        }
    }
}

}  // namespace

Findings wording(const std::filesystem::path& root) {
    Findings findings;
    const std::vector<Phrase> phrases = phrases_of(read_text(root / "tests/house/wording.txt"));
    if (phrases.empty()) findings.push_back("tests/house/wording.txt: no phrases");
    for (const std::string& file : files_below(root, code_directories(), {".h", ".cpp"})) {
        if (file.starts_with("tests/house/")) continue;  // has the phrases as examples
        check_words(file, words_of_code(read_text(root / file)), phrases, findings);
    }
    std::vector<std::string> pages = files_below(root, {"docs", "benchmarks"}, {".md"});
    for (const char* page : {"README.md", "ARCHITECTURE.md", "CONTRIBUTING.md", "CHANGELOG.md"}) {
        pages.push_back(page);
    }
    for (const std::string& file : pages) {
        check_words(file, words_of(read_text(root / file), false), phrases, findings);
    }
    return without_open_rooms(root, "wording", findings);
}

}  // namespace nmk_house
