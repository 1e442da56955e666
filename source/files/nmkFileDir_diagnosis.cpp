// nmkFileDir_diagnosis.cpp: who holds a file that will not go away.
//
// The only text that names ever write, and only on demand of the environment. The lines read like
// those of the tool "handle", which lists the same on the system that this was first made for.
#include <nmktoolbox/files/nmkFileDir.h>
#include <winapi/file_holders.h>
#include <winapi/times.h>

#include <cstdlib>
#include <iomanip>
#include <iostream>
#include <locale>
#include <sstream>
#include <string>
#include <string_view>

namespace {

constexpr int first_year = 1900;  // of the runtime's record
constexpr int first_month = 1;

// A line made apart from the stream that gets it: neither that stream's state nor its locale has a
// say in the line, and both stay as they are.
std::ostringstream new_line() {
    std::ostringstream line;
    line.imbue(std::locale::classic());
    return line;
}

// YYYY-MM-DD HH:MM:SS, local time.
std::string now() {
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

std::string line_of(const winapi_file_holder& holder) {
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

void nmkFileDir::diagnose_file_deletion_failure() const {
    if (std::getenv("NMK_DIAGNOSE_UNLINK") == nullptr) return;
    write(std::cout, now() + " failed to delete: ");
    write(std::cout, m_path.view());
    write(std::cout, "\n");
    for (const winapi_file_holder& holder : winapi_file_holders(m_path.c_str())) {
        write(std::cout, line_of(holder));
    }
    std::cout.flush();
}
