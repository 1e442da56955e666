#include "house/rules/open_rooms.h"

#include <algorithm>
#include <sstream>

#include "house/rules/source_text.h"

namespace nmk_house {

namespace {

constexpr const char* list = "tests/house/open_rooms.txt";

std::vector<std::string> rooms_of(const std::filesystem::path& root, const std::string& rule) {
    std::vector<std::string> rooms;
    for (const std::string& line : lines_of(read_text(root / list))) {
        std::istringstream words(line.substr(0, line.find('#')));
        std::string name, room;
        if (words >> name >> room && name == rule) rooms.push_back(room);
    }
    return rooms;
}

bool is_in(const std::string& finding, const std::string& room) {
    return finding.starts_with(room) &&
           (room.ends_with('/') || finding[room.size()] == '/' || finding[room.size()] == ':');
}

}  // namespace

Findings without_open_rooms(const std::filesystem::path& root, const std::string& rule,
                            const Findings& all) {
    Findings left = all;
    for (const std::string& room : rooms_of(root, rule)) {
        const auto in_room = [&](const std::string& finding) { return is_in(finding, room); };
        if (std::ranges::none_of(all, in_room)) {
            left.push_back(std::string(list) + ": " + rule + " holds in " + room +
                           "; remove its line");
        }
        std::erase_if(left, in_room);
    }
    return left;
}

}  // namespace nmk_house
