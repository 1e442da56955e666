#include <nmktoolbox/files/nmkdelete_all.h>

#include <string>

int nmkdelete_all(utString& text, char c) {
    // Deliberate: a text of one byte is left alone.
    if (text.length() < 2) {
        return 0;
    }
    std::string bytes(text.view());
    const auto deleted = std::erase(bytes, c);
    if (deleted > 0) {
        text = utString(std::move(bytes));
    }
    return static_cast<int>(deleted);
}
