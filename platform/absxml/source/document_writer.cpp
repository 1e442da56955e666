#include "document_writer.h"

#include <filesystem/safe_file.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdlib>
#include <memory>
#include <string_view>

namespace nmk_absxml {

namespace {

using nmk_filesystem::SafeFile;

// A deeper document is written without indentation, which would grow with the square of the depth.
constexpr std::size_t max_indented_depth = 64;

constexpr std::size_t buffer_size = std::size_t{1} << 16U;

// Collects what pugixml writes in small pieces.
class FileWriter : public pugi::xml_writer {
  public:
    explicit FileWriter(SafeFile& file) : m_file(file) { m_buffer.reserve(buffer_size); }

    // A carriage return is left of a text only, where pugixml writes it as it is and a reader would
    // take it for the end of a line.
    void write(const void* bytes, std::size_t count) override {
        std::string_view rest(static_cast<const char*>(bytes), count);
        for (std::size_t at = 0; (at = rest.find('\r')) != rest.npos; rest.remove_prefix(at + 1)) {
            write(rest.substr(0, at));
            write("&#13;");
        }
        write(rest);
    }
    void write(std::string_view text) {
        if (m_buffer.size() + text.size() > buffer_size) flush();
        m_buffer += text;
    }

    void flush() {
        if (m_error == 0 && !m_buffer.empty()) m_error = m_file.write(m_buffer);
        m_buffer.clear();
    }
    int error() const { return m_error; }

  private:
    SafeFile& m_file;
    std::string m_buffer;
    int m_error = 0;
};

// Walks without recursion, and stops where the depth is exceeded.
bool is_deeper_than(std::size_t limit, pugi::xml_node root) {
    std::size_t depth = 1;
    pugi::xml_node node = root;
    for (;;) {
        if (const pugi::xml_node child = node.first_child()) {
            node = child;
            if (++depth > limit) return true;
            continue;
        }
        while (node != root && !node.next_sibling()) {
            node = node.parent();
            --depth;
        }
        if (node == root) return false;
        node = node.next_sibling();
    }
}

void print(const Tree& tree, FileWriter& writer) {
    const bool is_raw = tree.keeps_space() || (tree.max_depth() > max_indented_depth &&
                                               is_deeper_than(max_indented_depth, tree.root()));
    writer.write("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");
    for (const pugi::xml_node node : tree.document().children()) {
        if (node == tree.detached()) continue;
        node.print(writer, "  ", is_raw ? pugi::format_raw : pugi::format_indent,
                   pugi::encoding_utf8);
        if (is_raw) writer.write("\n");
    }
    writer.flush();
}

int write_whole(const Tree& tree, const std::string& target, mode_t mode) {
    SafeFile file;
    if (const int error = file.create(target, mode)) return error;
    FileWriter writer(file);
    print(tree, writer);
    return writer.error() != 0 ? writer.error() : file.commit(SafeFile::Existing::replaced);
}

}  // namespace

int write_document(const Tree& tree, const std::string& file_name) {
    struct stat status {};
    if (::stat(file_name.c_str(), &status) != 0) {
        return errno == ENOENT ? write_whole(tree, file_name, 0666) : errno;
    }
    if (!S_ISREG(status.st_mode)) return EINVAL;
    // Where the name is a symlink, the file that it leads to is replaced.
    const std::unique_ptr<char, decltype(&std::free)> target(::realpath(file_name.c_str(), nullptr),
                                                             &std::free);
    if (target == nullptr) return errno;
    return write_whole(tree, target.get(), status.st_mode & 0777U);
}

}  // namespace nmk_absxml
