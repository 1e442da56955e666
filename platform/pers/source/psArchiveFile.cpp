#include <mfc/CArchive.h>
#include <pers/psArchiveFile.h>
#include <utils/ut_date.h>

#include <cerrno>
#include <exception>
#include <set>
#include <string>
#include <string_view>

#include "entry_file.h"
#include "header_text.h"

namespace {

using nmk_pers::InputEntry;
using nmk_pers::OutputEntry;

bool is_usable(const utString& name) {
    return !name.is_empty() && name.view() != nmk_pers::header_entry &&
           name.view().find('\0') == std::string_view::npos;
}

// A stream and the entry that it is in; the archive goes first.
template <class Entry>
struct Stream {
    template <class Zip>
    Stream(Zip& zip, CArchive::Mode mode) : entry(zip), archive(&entry, mode) {}
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;
    // What is to be kept was flushed before, by finish().
    ~Stream() { archive.Abort(); }

    Entry entry;
    CArchive archive;
};

}  // namespace

class psArchiveFile::Output {
  public:
    int open(const utString& path, const psArchiveFileHeader& header) {
        if (header.byte_order() != psByteOrderLittle) return EINVAL;
        const std::string text = nmk_pers::header_text(header);
        if (text.size() > nmk_pers::max_header_size) return EINVAL;
        if (const int error = m_zip.open(path.c_str())) return error;
        if (const int error = start_entry(nmk_pers::header_entry)) return error;
        return m_zip.write_in_file_in_zip(text.data(), static_cast<int>(text.size()));
    }

    int start_stream(const utString& name, CArchive*& archive) {
        if (!is_usable(name)) return EINVAL;
        if (!m_names.emplace(name.view()).second) return EEXIST;
        if (const int error = finish_stream()) return error;
        if (const int error = start_entry(name)) return error;
        m_stream = std::make_unique<Stream<OutputEntry>>(m_zip, CArchive::store);
        archive = &m_stream->archive;
        return 0;
    }

    int close() {
        const int error = finish_stream();
        return error != 0 ? error : m_zip.close();
    }

  private:
    int start_entry(const utString& name) {
        int date[ut_date_size] = {};
        if (const int error = ut_date_current(ut_date_size, date)) return error;
        return m_zip.open_new_file_in_zip(name, cmZipMethodDeflate, -1, date, utString());
    }

    // Hands the rest of the stream to the zip. After a failure the file cannot be completed.
    int finish_stream() {
        if (m_failure != 0 || m_stream == nullptr) return m_failure;
        try {
            m_stream->archive.Flush();
        } catch (const CFileException& failure) {
            m_failure = failure.m_lOsError != 0 ? failure.m_lOsError : EIO;
        } catch (const std::exception&) {
            m_failure = EIO;
        }
        m_stream = nullptr;
        return m_failure;
    }

    cmZip m_zip;
    std::set<std::string, std::less<>> m_names;
    std::unique_ptr<Stream<OutputEntry>> m_stream;
    int m_failure = 0;
};

class psArchiveFile::Input {
  public:
    int open(const utString& path, psArchiveFileHeader& header) {
        if (const int error = m_zip.open(path.c_str())) return error;
        if (m_zip.goto_file(nmk_pers::header_entry) != 0) return EBADMSG;
        if (const int error = m_zip.open_current_file()) return error;
        std::string text(nmk_pers::max_header_size + 1, '\0');
        const int size = m_zip.read_current_file(text.data(), static_cast<int>(text.size()));
        if (size < 0) return m_zip.failure();
        if (size > nmk_pers::max_header_size) return EBADMSG;
        auto read =
            nmk_pers::read_header(std::string_view(text).substr(0, static_cast<std::size_t>(size)));
        if (!read || read->byte_order() != psByteOrderLittle) return EBADMSG;
        header = *read;
        return 0;
    }

    int start_stream(const utString& name, CArchive*& archive) {
        m_stream = nullptr;
        if (!is_usable(name)) return EINVAL;
        if (const int error = m_zip.goto_file(name)) return error;
        if (const int error = m_zip.open_current_file()) return error;
        m_stream = std::make_unique<Stream<InputEntry>>(m_zip, CArchive::load);
        archive = &m_stream->archive;
        return 0;
    }

    int close() {
        m_stream = nullptr;
        return m_zip.close();
    }

  private:
    cmUnZip m_zip;
    std::unique_ptr<Stream<InputEntry>> m_stream;
};

psArchiveFileBase::~psArchiveFileBase() = default;

psArchiveFile::psArchiveFile(const psArchiveFileHeader& header, const utString& path,
                             psFileMode mode)
    : m_header(header), m_exceptions_at_start(std::uncaught_exceptions()) {
    m_failure = open(path, mode);
}

psArchiveFile::~psArchiveFile() {
    if (std::uncaught_exceptions() > m_exceptions_at_start) {
        drop();
    } else {
        psArchiveFile::close();
    }
}

int psArchiveFile::open(const utString& path, psFileMode mode) {
    drop();
    if (path.is_empty()) return m_failure = EINVAL;
    if (mode == psFileModeWrite) return m_failure = open_to_write(path);
    if (mode == psFileModeRead) return m_failure = open_to_read(path);
    return m_failure = EINVAL;
}

int psArchiveFile::open_to_write(const utString& path) {
    auto output = std::make_unique<Output>();
    const int error = output->open(path, m_header);
    if (error == 0) m_output = std::move(output);
    return error;
}

int psArchiveFile::open_to_read(const utString& path) {
    auto input = std::make_unique<Input>();
    const int error = input->open(path, m_header);
    if (error == 0) m_input = std::move(input);
    return error;
}

int psArchiveFile::write_archive(const utString& name, CArchive*& archive) {
    archive = nullptr;
    if (m_output == nullptr) return m_failure != 0 ? m_failure : EINVAL;
    return m_output->start_stream(name, archive);
}

int psArchiveFile::read_archive(const utString& name, CArchive*& archive) {
    archive = nullptr;
    if (m_input == nullptr) return m_failure != 0 ? m_failure : EINVAL;
    return m_input->start_stream(name, archive);
}

int psArchiveFile::close() {
    int error = 0;
    if (m_output != nullptr) error = m_output->close();
    if (m_input != nullptr) error = m_input->close();
    drop();
    return error;
}

void psArchiveFile::drop() noexcept {
    m_output = nullptr;
    m_input = nullptr;
    m_failure = 0;
}
