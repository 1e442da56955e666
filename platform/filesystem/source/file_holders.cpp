#include <dirent.h>
#include <filesystem/file_holders.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <fstream>
#include <memory>
#include <string_view>
#include <utility>

namespace nmk_filesystem {

namespace {

bool is_the_file(const std::string& name, const struct stat& file) {
    struct stat record;
    return ::stat(name.c_str(), &record) == 0 && record.st_ino == file.st_ino &&
           record.st_dev == file.st_dev;
}

// Where a symlink of /proc leads; empty if it vanished.
std::string target_of(const std::string& symlink) {
    char text[4096];
    const ssize_t length = ::readlink(symlink.c_str(), text, sizeof text);
    return length > 0 ? std::string(text, static_cast<std::size_t>(length)) : "";
}

// The numbers among a directory's entries, ascending; none if it vanished or may not be read.
std::vector<int> numbers_in(const std::string& directory) {
    const std::unique_ptr<DIR, int (*)(DIR*)> stream(::opendir(directory.c_str()), &::closedir);
    std::vector<int> numbers;
    while (const dirent* entry = stream ? ::readdir(stream.get()) : nullptr) {
        const std::string_view name(entry->d_name);
        int number = 0;
        const auto read = std::from_chars(name.data(), name.data() + name.size(), number);
        if (read.ec == std::errc() && read.ptr == name.data() + name.size()) {
            numbers.push_back(number);
        }
    }
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

class Holdings {
  public:
    Holdings(int process, const struct stat& file, std::vector<FileHolder>& found)
        : m_process(process),
          m_directory("/proc/" + std::to_string(process) + "/"),
          m_file(file),
          m_found(found) {}

    void find() {
        for (const char* symlink : {"cwd", "root", "exe"}) {
            add_if_it_is(m_directory + symlink, symlink);
        }
        for (const int number : numbers_in(m_directory + "fd")) {
            const std::string text = std::to_string(number);
            add_if_it_is(m_directory + "fd/" + text, "fd " + text);
        }
        find_map();
    }

  private:
    void add_if_it_is(const std::string& symlink, const std::string& held_as) {
        if (is_the_file(symlink, m_file)) {
            add(held_as, target_of(symlink));
        }
    }

    void add(const std::string& held_as, std::string path) {
        m_found.push_back({m_process, command(), held_as, std::move(path)});
    }

    std::string command() const {
        std::string text;
        std::getline(std::ifstream(m_directory + "comm"), text);
        return text;
    }

    // A line is "from-to permissions offset device inode   path". Some file systems show another
    // device here than to stat, so the path decides; the inode only excludes most lines.
    void find_map() {
        std::ifstream maps(m_directory + "maps");
        const std::string inode = " " + std::to_string(m_file.st_ino) + " ";
        std::string line;
        while (std::getline(maps, line)) {
            const auto slash = line.find('/');
            if (line.find(inode) >= slash || slash == line.npos) {
                continue;
            }
            const std::string path = line.substr(slash);
            if (is_the_file(m_directory + "root" + path, m_file)) {
                add("map", path);
                return;  // one file is mapped in several pieces
            }
        }
    }

    int m_process;
    std::string m_directory;
    const struct stat& m_file;
    std::vector<FileHolder>& m_found;
};

}  // namespace

std::vector<FileHolder> file_holders(const char* name) {
    std::vector<FileHolder> found;
    struct stat file;
    if (name == nullptr || ::stat(name, &file) != 0) {
        return found;
    }
    for (const int process : numbers_in("/proc")) {
        Holdings(process, file, found).find();
    }
    return found;
}

}  // namespace nmk_filesystem
