// read_whole_file.cpp: see read_whole_file.h.

#include "files/read_whole_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string_view>
#include <vector>

#include "files/read_file_bytes.h"
#include "text/text_lines.h"

namespace nmk_files {

namespace {

constexpr std::size_t chunk_size = std::size_t{256} << 10U;

bool ends_line(char letter) { return letter == '\n' || letter == '\r'; }

/// Closes the file when it is destroyed.
struct OpenFile {
    explicit OpenFile(int number) : descriptor(number) {}
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    ~OpenFile() {
        if (descriptor >= 0) {
            ::close(descriptor);
        }
    }
    int descriptor;
};

/// Follows the length of the line that is being read, chunk by chunk.
class LineLengths {
  public:
    /// The number of the first line that has become too long; 0 as long as none has.
    std::size_t add(std::string_view chunk) {
        for (std::size_t at = 0; at < chunk.size();) {
            const auto stop = static_cast<std::size_t>(
                std::find_if(chunk.begin() + static_cast<std::ptrdiff_t>(at), chunk.end(),
                             ends_line) -
                chunk.begin());
            m_length += stop - at;
            if (m_length > max_line_length) {
                return m_line;
            }
            if (stop == chunk.size()) {
                break;
            }
            m_line += chunk[stop] == '\n' && m_last == '\r' && m_length == 0 ? 0U : 1U;
            m_length = 0;
            m_last = chunk[stop];
            at = stop + 1;
        }
        return 0;
    }

  private:
    std::size_t m_length = 0;
    std::size_t m_line = 1;
    char m_last = '\0';  // the character that ended the last line
};

std::string too_long_line_message() {
    return "a line longer than " + std::to_string(max_line_length) +
           " bytes; expected lines of text";
}

std::string too_large_message() {
    return "larger than " + std::to_string(max_file_size >> 20U) + " MiB; expected a smaller file";
}

nmk_text::Error system_error(const std::string& file_name, const char* what) {
    return nmk_text::Error{file_name, 0, std::string(what) + ": " + std::strerror(errno)};
}

enum class Content { lines, bytes };

nmk_text::Result<std::string> read_descriptor(int descriptor, const std::string& file_name,
                                              Content content) {
    struct stat facts {};
    if (::fstat(descriptor, &facts) != 0) {
        return system_error(file_name, "cannot be read");
    }
    if (S_ISDIR(facts.st_mode)) {
        return nmk_text::Error{file_name, 0, "is a directory; expected a file"};
    }
    if (facts.st_size > static_cast<off_t>(max_file_size)) {
        return nmk_text::Error{file_name, 0, too_large_message()};
    }
    std::string text;
    LineLengths lines;
    std::vector<char> chunk(chunk_size);
    for (;;) {
        const ssize_t got = ::read(descriptor, chunk.data(), chunk.size());
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got < 0) {
            return system_error(file_name, "cannot be read");
        }
        if (got == 0) {
            return text;
        }
        const std::string_view bytes(chunk.data(), static_cast<std::size_t>(got));
        const std::size_t line = content == Content::lines ? lines.add(bytes) : 0;
        if (line != 0) {
            return nmk_text::Error{file_name, line, too_long_line_message()};
        }
        if (text.size() + bytes.size() > max_file_size) {
            return nmk_text::Error{file_name, 0, too_large_message()};
        }
        text += bytes;
    }
}

nmk_text::Result<std::string> read_file(const std::string& file_name, Content content) {
    const OpenFile file(::open(file_name.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY));
    return file.descriptor < 0 ? system_error(file_name, "cannot be opened")
                               : read_descriptor(file.descriptor, file_name, content);
}

}  // namespace

std::size_t first_too_long_line(const std::string& text) { return LineLengths().add(text); }

nmk_text::Result<void> check_text_file(const std::string& file_name, const std::string& text) {
    if (const std::size_t line = first_too_long_line(text)) {
        return nmk_text::Error{file_name, line, too_long_line_message()};
    }
    const std::size_t at = text.find('\0');
    if (at == std::string::npos) {
        return {};
    }
    nmk_text::TextLines lines(text);
    nmk_text::TextLine line;
    while (lines.next(line) && line.end <= at) {
    }
    return nmk_text::Error{file_name, line.number, "a zero byte; expected a text file"};
}

nmk_text::Result<std::string> read_whole_file(const std::string& file_name) {
    return read_file(file_name, Content::lines);
}

nmk_text::Result<std::string> read_file_bytes(const std::string& file_name) {
    return read_file(file_name, Content::bytes);
}

std::string input_name(const std::string& file_name) {
    return file_name == standard_stream ? "standard input" : file_name;
}

nmk_text::Result<std::string> read_input(const std::string& file_name) {
    return file_name == standard_stream
               ? read_descriptor(STDIN_FILENO, input_name(file_name), Content::lines)
               : read_whole_file(file_name);
}

nmk_text::Result<std::string> read_standard_input_bytes() {
    return read_descriptor(STDIN_FILENO, input_name(standard_stream), Content::bytes);
}

nmk_text::Result<std::string> read_input_bytes(const std::string& file_name) {
    return file_name == standard_stream ? read_standard_input_bytes() : read_file_bytes(file_name);
}

}  // namespace nmk_files
