#include <apsl/apprintf.h>
#include <locale.h>

#include <algorithm>
#include <array>
#include <climits>
#include <cstdio>
#include <cstring>

namespace {

// A longer field or more digits than this are cut down to it: a format that came from outside must
// not be able to ask for gigabytes.
constexpr int widest_field = 4096;

struct Conversion {
    std::string flags;
    int width = 0;
    int precision = -1;  // below 0: none was given
    char letter = '\0';
};

// Walks the arguments in order; null when they are used up.
class ArgumentCursor {
  public:
    explicit ArgumentCursor(std::span<const apPrintArgument> arguments) : m_arguments(arguments) {}

    const apPrintArgument* next() {
        return m_position < m_arguments.size() ? &m_arguments[m_position++] : nullptr;
    }

  private:
    std::span<const apPrintArgument> m_arguments;
    std::size_t m_position = 0;
};

int limited(std::int64_t value) {
    return static_cast<int>(std::clamp<std::int64_t>(value, -widest_field, widest_field));
}

// Reads digits or a star at `at`; false when a star finds no argument.
bool read_number(const char*& at, ArgumentCursor& arguments, int& number) {
    if (*at == '*') {
        ++at;
        const apPrintArgument* argument = arguments.next();
        if (argument == nullptr) return false;
        number = limited(argument->integer);
        return true;
    }
    for (number = 0; *at >= '0' && *at <= '9'; ++at) {
        number = limited(std::int64_t{number} * 10 + (*at - '0'));
    }
    return true;
}

// Reads what follows a percent sign; false when the format ends or a star finds no argument.
bool read_conversion(const char*& at, ArgumentCursor& arguments, Conversion& conversion) {
    for (; *at != '\0' && std::strchr("-+ #0", *at) != nullptr; ++at) {
        if (conversion.flags.find(*at) == std::string::npos) conversion.flags += *at;
    }
    if (!read_number(at, arguments, conversion.width)) return false;
    if (conversion.width < 0) {
        conversion.flags += '-';
        conversion.width = -conversion.width;
    }
    if (*at == '.') {
        ++at;
        if (!read_number(at, arguments, conversion.precision)) return false;
    }
    while (*at != '\0' && std::strchr("hlLqjzt", *at) != nullptr) ++at;
    if (*at == '\0') return false;
    conversion.letter = *at++;
    return true;
}

// The calling thread formats as in the "C" locale while one of these lives.
class NeutralLocale {
  public:
    NeutralLocale() : m_before(::uselocale(neutral())) {}
    NeutralLocale(const NeutralLocale&) = delete;
    NeutralLocale& operator=(const NeutralLocale&) = delete;
    ~NeutralLocale() { ::uselocale(m_before); }

  private:
    static locale_t neutral() {
        static const locale_t made_once = ::newlocale(LC_ALL_MASK, "C", locale_t{});
        return made_once;
    }

    locale_t m_before;
};

// Runs one argument through snprintf. `suffix` is the length modifier and letter of its type.
template <class T>
std::string print_one(const Conversion& conversion, const char* suffix, T value) {
    std::string format = "%" + conversion.flags + std::to_string(conversion.width);
    if (conversion.precision >= 0) format += "." + std::to_string(conversion.precision);
    format += suffix;
    const int length = std::snprintf(nullptr, 0, format.c_str(), value);
    if (length <= 0) return {};
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    std::snprintf(text.data(), text.size(), format.c_str(), value);
    text.pop_back();
    return text;
}

std::string print_integer(const Conversion& conversion, const apPrintArgument& argument) {
    const char letter = conversion.letter;
    if (letter == 'c') return print_one(conversion, "c", static_cast<int>(argument.bits & 0xFFU));
    if (letter == 'p') return print_one(conversion, "llx", argument.bits);
    if (std::strchr("uoxX", letter) != nullptr) {
        return print_one(conversion, (std::string("ll") + letter).c_str(), argument.bits);
    }
    if (argument.kind == apPrintArgument::Kind::unsigned_integer) {
        return print_one(conversion, "llu", argument.bits);
    }
    return print_one(conversion, "lld", argument.integer);
}

std::string print_argument(const Conversion& conversion, const apPrintArgument& argument) {
    switch (argument.kind) {
        case apPrintArgument::Kind::signed_integer:
        case apPrintArgument::Kind::unsigned_integer:
            return print_integer(conversion, argument);
        case apPrintArgument::Kind::real: {
            const bool is_real = std::strchr("fFeEgGaA", conversion.letter) != nullptr;
            const char suffix[] = {is_real ? conversion.letter : 'g', '\0'};
            const NeutralLocale neutral;
            return print_one(conversion, suffix, argument.real);
        }
        case apPrintArgument::Kind::text: {
            std::string_view shown = argument.text;
            if (conversion.precision >= 0) {
                shown = shown.substr(0, static_cast<std::size_t>(conversion.precision));
            }
            const auto width = static_cast<std::size_t>(conversion.width);
            const std::string fill(width > shown.size() ? width - shown.size() : 0, ' ');
            const bool left = conversion.flags.find('-') != std::string::npos;
            return left ? std::string(shown) + fill : fill + std::string(shown);
        }
        case apPrintArgument::Kind::pointer:
            break;
    }
    return print_one(conversion, "p", argument.pointer);
}

}  // namespace

std::string ap_format_arguments(const char* format, std::span<const apPrintArgument> arguments) {
    std::string text;
    ArgumentCursor cursor(arguments);
    const char* at = format != nullptr ? format : "";
    while (*at != '\0') {
        if (*at != '%') {
            text += *at++;
            continue;
        }
        const char* start = at++;
        Conversion conversion;
        const bool whole = read_conversion(at, cursor, conversion);
        if (whole && conversion.letter == '%') {
            text += '%';
            continue;
        }
        if (whole && conversion.letter == 'n') continue;
        const bool known = whole && std::strchr("diuoxXcfFeEgGaAsp", conversion.letter) != nullptr;
        const apPrintArgument* argument = known ? cursor.next() : nullptr;
        if (argument != nullptr) {
            text += print_argument(conversion, *argument);
        } else {
            text.append(start, at);
        }
    }
    return text;
}

int ap_write_console(std::string_view text) {
    const std::size_t written = std::fwrite(text.data(), 1, text.size(), stdout);
    if (written != text.size()) return -1;
    return static_cast<int>(std::min<std::size_t>(written, INT_MAX));
}
