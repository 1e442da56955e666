// completion: what the scripts of all shells share.

#include "shell/completion.h"

namespace nmk_shell {

std::string short_text(std::string_view about) {
    return std::string(about.substr(0, about.find_first_of(";:")));
}

std::string choice_words(const Argument& argument) {
    std::string words;
    for (const ChoiceText& choice : argument.choices) {
        words += (words.empty() ? "" : " ") + choice.name;
    }
    return words;
}

std::string shell_text(std::string_view text) {
    std::string result = "'";
    for (const char letter : text) {
        letter == '\'' ? result += "'\\''" : result += letter;
    }
    return result + "'";
}

}  // namespace nmk_shell
