#include "deletion_diagnosis.h"

#include <filesystem/file_holders.h>
#include <winapi/times.h>

#include <cstdlib>
#include <iomanip>
#include <locale>
#include <ostream>
#include <sstream>
#include <string>

namespace nmk_files {

namespace {

constexpr int first_year = 1900;  // of the runtime's record
constexpr int first_month = 1;

// A line is made apart from the stream that it is written to, whose format and locale play no part.
std::ostringstream new_line() {
    std::ostringstream line;
    line.imbue(std::locale::classic());
    return line;
}

// YYYY-MM-DD HH:MM:SS, local time.
std::string local_time() {
    const auto seconds = _time64(nullptr);
    const std::tm moment = *_localtime64(&seconds);
    std::ostringstream line = new_line();
    const auto two_digits = [&](int number) { line << std::setw(2) << number; };
    line << std::setfill('0') << moment.tm_year + first_year << '-';
    two_digits(moment.tm_mon + first_month);
    line << '-';
    two_digits(moment.tm_mday);
    line << ' ';
    two_digits(moment.tm_hour);
    line << ':';
    two_digits(moment.tm_min);
    line << ':';
    two_digits(moment.tm_sec);
    return line.str();
}

std::string line_of(const nmk_filesystem::FileHolder& holder) {
    std::ostringstream line = new_line();
    line << std::left << std::setw(18) << holder.command << " pid: " << std::setw(6)
         << holder.process << " type: File " << std::right << std::setw(8) << holder.held_as << ": "
         << holder.path << '\n';
    return line.str();
}

void write(std::ostream& stream, std::string_view text) {
    stream.write(text.data(), static_cast<std::streamsize>(text.size()));
}

}  // namespace

void write_deletion_diagnosis(std::ostream& stream, std::string_view path) {
    if (std::getenv("NMK_DIAGNOSE_UNLINK") == nullptr) return;
    write(stream, local_time() + " failed to delete: ");
    write(stream, path);
    write(stream, "\n");
    for (const auto& holder : nmk_filesystem::file_holders(std::string(path).c_str())) {
        write(stream, line_of(holder));
    }
    stream.flush();
}

}  // namespace nmk_files
