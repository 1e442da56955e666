// comma_locale: puts a locale with a decimal comma in place for the life of an object.
//
// The C++ side gets a facet of our own. The C side needs a locale of the system: one that is
// installed, else one that localedef makes in a folder of its own, where the sources are installed.
#pragma once

#include <stdlib.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <locale>
#include <string>

class CommaLocale {
  public:
    CommaLocale()
        : m_before(std::locale::global(std::locale(std::locale(), new Comma))),
          m_c_before(std::setlocale(LC_ALL, nullptr)) {
        for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "de_DE"}) {
            if (take(name)) return;
        }
        make_one();
    }
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;
    ~CommaLocale() {
        std::setlocale(LC_ALL, m_c_before.c_str());
        std::locale::global(m_before);
        if (!m_folder.empty()) std::filesystem::remove_all(m_folder);
    }

    /// The C library writes commas too.
    bool holds_for_the_c_library() const {
        char text[8];
        std::snprintf(text, sizeof text, "%.1f", 0.5);
        return std::string(text) == "0,5";
    }

  private:
    struct Comma : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };

    bool take(const char* name) const {
        return std::setlocale(LC_ALL, name) != nullptr && holds_for_the_c_library();
    }

    void make_one() {
        std::string pattern = (std::filesystem::temp_directory_path() / "commaXXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr) return;
        m_folder = pattern;
        const std::string command =
            "localedef -i de_DE -f UTF-8 '" + m_folder + "/de_DE.UTF-8' >/dev/null 2>&1";
        if (std::system(command.c_str()) != 0) return;
        setenv("LOCPATH", m_folder.c_str(), 1);
        take("de_DE.UTF-8");
        unsetenv("LOCPATH");  // newlocale of the C library loses a piece of memory where it is set
    }

    std::locale m_before;
    std::string m_c_before;
    std::string m_folder;
};
