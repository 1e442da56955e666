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

namespace {

constexpr int first_year = 1900;  // of the runtime's record
constexpr int first_month = 1;

// Puts the stream's fill and flags back at the end.
class Kept_format {
  public:
    explicit Kept_format(std::ostream& stream)
        : m_stream(stream), m_flags(stream.flags()), m_fill(stream.fill()) {}
    Kept_format(const Kept_format&) = delete;
    Kept_format& operator=(const Kept_format&) = delete;
    ~Kept_format() {
        m_stream.flags(m_flags);
        m_stream.fill(m_fill);
    }

  private:
    std::ostream& m_stream;
    std::ios_base::fmtflags m_flags;
    char m_fill;
};

// YYYY-MM-DD HH:MM:SS, local time.
void write_now(std::ostream& stream) {
    const Kept_format kept(stream);
    const auto seconds = _time64(nullptr);
    const std::tm now = *_localtime64(&seconds);
    const auto two_digits = [&](int number) { stream << std::setw(2) << number; };
    stream << std::setfill('0') << std::right << std::dec << now.tm_year + first_year << '-';
    two_digits(now.tm_mon + first_month);
    stream << '-';
    two_digits(now.tm_mday);
    stream << ' ';
    two_digits(now.tm_hour);
    stream << ':';
    two_digits(now.tm_min);
    stream << ':';
    two_digits(now.tm_sec);
}

void write_holder(std::ostream& stream, const winapi_file_holder& holder) {
    const Kept_format kept(stream);
    stream << std::setfill(' ') << std::left << std::setw(18) << holder.command
           << " pid: " << std::setw(6) << holder.process << " type: File " << std::right
           << std::setw(8) << holder.held_as << ": " << holder.path << '\n';
}

}  // namespace

void nmkFileDir::diagnose_file_deletion_failure() const {
    if (std::getenv("NMK_DIAGNOSE_UNLINK") == nullptr) return;
    std::ostream& stream = std::cout;
    write_now(stream);
    stream << " failed to delete: " << m_path << '\n';
    for (const winapi_file_holder& holder : winapi_file_holders(m_path.c_str())) {
        write_holder(stream, holder);
    }
    stream.flush();
}
