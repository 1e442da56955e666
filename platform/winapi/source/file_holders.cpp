#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>
#include <winapi/file_holders.h>

#include <algorithm>
#include <charconv>
#include <fstream>
#include <memory>
#include <string_view>
#include <utility>

#include "failure.h"

namespace {

bool is_the_file(const std::string& name, const struct stat& file) {
    struct stat record;
    return ::stat(name.c_str(), &record) == 0 && record.st_ino == file.st_ino &&
           record.st_dev == file.st_dev;
}

// Where a link of /proc leads; empty if it vanished.
std::string led_to(const std::string& link) {
    char text[4096];
    const ssize_t length = ::readlink(link.c_str(), text, sizeof text);
    return length > 0 ? std::string(text, static_cast<std::size_t>(length)) : "";
}

// The numbers among a folder's entries, ascending; none if it vanished or may not be read.
std::vector<int> numbers_in(const std::string& folder) {
    const std::unique_ptr<DIR, int (*)(DIR*)> stream(::opendir(folder.c_str()), &::closedir);
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
    Holdings(int process, const struct stat& file, std::vector<winapi_file_holder>& found)
        : m_process(process),
          m_folder("/proc/" + std::to_string(process) + "/"),
          m_file(file),
          m_found(found) {}

    void find() {
        for (const char* link : {"cwd", "root", "exe"}) {
            add_if_it_is(m_folder + link, link);
        }
        for (const int number : numbers_in(m_folder + "fd")) {
            const std::string text = std::to_string(number);
            add_if_it_is(m_folder + "fd/" + text, "fd " + text);
        }
        find_map();
    }

  private:
    void add_if_it_is(const std::string& link, const std::string& held_as) {
        if (is_the_file(link, m_file)) {
            add(held_as, led_to(link));
        }
    }

    void add(const std::string& held_as, std::string path) {
        m_found.push_back({m_process, command(), held_as, std::move(path)});
    }

    std::string command() const {
        std::string text;
        std::getline(std::ifstream(m_folder + "comm"), text);
        return text;
    }

    // A line is "from-to rights offset device inode   path". Some file systems show another device
    // here than to stat, so the path decides, and the inode spares asking for most.
    void find_map() {
        std::ifstream maps(m_folder + "maps");
        const std::string inode = " " + std::to_string(m_file.st_ino) + " ";
        std::string line;
        while (std::getline(maps, line)) {
            const auto slash = line.find('/');
            if (line.find(inode) >= slash || slash == line.npos) {
                continue;
            }
            const std::string path = line.substr(slash);
            if (is_the_file(m_folder + "root" + path, m_file)) {
                add("map", path);
                return;  // one file is mapped in several pieces
            }
        }
    }

    int m_process;
    std::string m_folder;
    const struct stat& m_file;
    std::vector<winapi_file_holder>& m_found;
};

}  // namespace

std::vector<winapi_file_holder> winapi_file_holders(const char* name) {
    std::vector<winapi_file_holder> found;
    struct stat file;
    if (winapi::is_nothing(name) || ::stat(name, &file) != 0) {
        return found;
    }
    for (const int process : numbers_in("/proc")) {
        Holdings(process, file, found).find();
    }
    return found;
}
