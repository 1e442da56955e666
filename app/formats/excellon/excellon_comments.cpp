// excellon_comments.cpp: see excellon_comments.h.

#include "formats/excellon/excellon_comments.h"

#include <algorithm>

#include "text/ascii.h"

namespace nmk_excellon {

namespace {

constexpr std::string_view blanks = " \t";

void add_comment(std::string& comments, std::string_view comment) {
    comment = nmk_text::trimmed(comment);
    if (!comment.empty()) {
        comments += comments.empty() ? "" : " ";
        comments += comment;
    }
}

/// The position after the comment that begins there, npos for one that ends with the line.
std::size_t end_of_comment(std::string_view line, std::size_t begin) {
    const std::size_t close = line[begin] == '(' ? line.find(')', begin) : std::string_view::npos;
    return close == std::string_view::npos ? close : close + 1;
}

}  // namespace

std::size_t skip_comments(std::string_view line, std::size_t at) {
    std::size_t next = std::min(line.find_first_not_of(blanks, at), line.size());
    while (next < line.size() && line[next] == '(') {
        const std::size_t end = end_of_comment(line, next);
        if (end == std::string_view::npos) {
            break;
        }
        next = std::min(line.find_first_not_of(blanks, end), line.size());
    }
    return next;
}

CommentedLine split_comments(std::string_view line, bool is_message) {
    CommentedLine parts;
    if (line.find_first_of(";(") == std::string_view::npos) {
        parts.code_at = std::min(line.find_first_not_of(blanks), line.size());
        parts.code = nmk_text::trimmed(line);
        return parts;  // as most lines
    }
    parts.code_at = skip_comments(line, 0);
    add_comment(parts.comments, line.substr(0, parts.code_at));
    std::size_t end = parts.code_at;
    for (std::size_t at = end; at < line.size();) {
        const std::size_t mark =
            std::min(line.find_first_of(is_message ? ";" : ";(", at), line.size());
        const std::size_t last = line.substr(0, mark).find_last_not_of(blanks);
        if (mark > at && last != std::string_view::npos && last >= at) {
            parts.has_inner = at > parts.code_at;
            end = last + 1;
        }
        at = mark < line.size() ? end_of_comment(line, mark) : mark;
        add_comment(parts.comments, line.substr(mark, at - mark));
    }
    parts.code = line.substr(parts.code_at, end - parts.code_at);
    return parts;
}

std::string without_comments(std::string_view text) {
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t mark = std::min(text.find('(', at), text.size());
        result += text.substr(at, mark - at);
        at = mark < text.size() ? end_of_comment(text, mark) : mark;
    }
    return result;
}

}  // namespace nmk_excellon
