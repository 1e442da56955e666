// nmkTrodeArchive.cpp: the archive as a whole: its start and end, its names, its structure.
#include <compress/cmUnZip.h>
#include <compress/cmZip.h>
#include <nls/nlsNeutralNumbers.h>
#include <nmktoolbox/archive/nmkTrodeArchive.h>
#include <utils/ut_date.h>

#include <algorithm>
#include <cmath>
#include <string>

namespace {

constexpr double written_version = 1.02;
constexpr int version_text_limit = 256;  // bytes; a version text is shorter
constexpr int contents_block = 1024;     // bytes that are read of contents.txt at once

// Larger ones count as absent: a small zip may unpack to any size, and each name takes memory.
constexpr std::size_t max_contents = std::size_t{64} << 20;
constexpr int max_names = 1 << 20;

utString version_entry() { return "version.txt"; }
utString contents_entry() { return "contents.txt"; }

}  // namespace

nmkTrodeArchive::nmkTrodeArchive() = default;

nmkTrodeArchive::~nmkTrodeArchive() {
    if (m_reader != nullptr || m_writer != nullptr) close();
}

int nmkTrodeArchive::create(const utString& file) {
    close();
    m_failure = 0;
    m_repeated_entry.set_invalid();
    m_bytes_done = 0;
    m_writer = std::make_unique<cmZip>();
    if (const int error_number = m_writer->open(file.c_str()); error_number != 0) {
        m_writer.reset();
        return fail(error_number);
    }
    m_writer->set_watch([this](std::int64_t bytes) { return may_continue(bytes); });
    m_file_name = file;
    m_version = written_version;
    start_new_archive();
    return 1;
}

void nmkTrodeArchive::start_new_archive() {
    const nlsNeutralNumbers neutral(nlsTranslationNone);
    utString text;
    text << m_version;
    write_text_entry(version_entry(), text);
}

void nmkTrodeArchive::finish_new_archive() {
    std::string names;
    for (const utString& name : m_entry_names) {
        names += name.view();
        names += '\n';
    }
    write_text_entry(contents_entry(), utString(std::move(names)));
}

void nmkTrodeArchive::write_text_entry(const utString& entry, const utString& text) {
    int date[ut_date_size] = {};
    ut_date_current(ut_date_size, date);
    int error_number =
        m_writer->open_new_file_in_zip(entry, cmZipMethodDeflate, -1, date, utString());
    if (error_number == 0)
        error_number = m_writer->write_in_file_in_zip(text.c_str(), text.length());
    if (error_number == 0) error_number = m_writer->close_file_in_zip();
    fail(error_number);
    m_zip_entries.add(entry);
}

int nmkTrodeArchive::open(const utString& file) {
    close();
    m_failure = 0;
    m_bytes_done = 0;
    m_reader = std::make_unique<cmUnZip>();
    if (const int error_number = m_reader->open(file.c_str()); error_number != 0) {
        m_reader.reset();
        return fail(error_number);
    }
    m_file_name = file;
    read_archive_data();
    m_reader->set_watch([this](std::int64_t bytes) { return may_continue(bytes); });
    return 1;
}

void nmkTrodeArchive::read_archive_data() {
    for (int end = m_reader->goto_first_file(); end == 0; end = m_reader->goto_next_file()) {
        utString entry;
        m_reader->get_current_file_info(entry);
        m_zip_entries.add(entry);
        if (entry == "version.txt") read_version();
        if (entry == "contents.txt") read_contents();
    }
}

void nmkTrodeArchive::read_version() {
    char bytes[version_text_limit];
    double value = 0.0;
    int position = 0;
    m_version = 0.0;
    if (m_reader->open_current_file() != 0) return;
    const int count = m_reader->read_current_file(bytes, version_text_limit);
    if (count <= 0 || count == version_text_limit) return;
    const nlsNeutralNumbers neutral(nlsTranslationNone);
    const utString text(std::string_view(bytes, static_cast<std::size_t>(count)));
    if (text.parse(value, position) == 0) return;
    m_version = value;
    m_reader->close_current_file();
}

void nmkTrodeArchive::read_contents() {
    std::string contents;
    const int names_before = m_entry_names.size();
    if (read_text(contents) && add_names(contents)) return;
    m_entry_names.resize(names_before);
    m_zip_entries.remove(contents_entry());
}

/// Reads the current entry; false where it cannot be read whole, or is too long.
bool nmkTrodeArchive::read_text(std::string& text) {
    char block[contents_block];
    if (m_reader->open_current_file() != 0) return false;
    int count = contents_block;
    while (count == contents_block && text.size() <= max_contents) {
        count = m_reader->read_current_file(block, contents_block);
        text.append(block, static_cast<std::size_t>(std::max(count, 0)));
    }
    m_reader->close_current_file();
    return count >= 0 && text.size() <= max_contents;
}

/// Appends the names that each end with "\n", and one without it at the end; false where there are
/// too many.
bool nmkTrodeArchive::add_names(std::string_view contents) {
    while (!contents.empty() && m_entry_names.size() <= max_names) {
        const std::size_t end = std::min(contents.find('\n'), contents.size());
        m_entry_names.add(utString(contents.substr(0, end)));
        contents.remove_prefix(std::min(end + 1, contents.size()));
    }
    return m_entry_names.size() <= max_names;
}

void nmkTrodeArchive::close() {
    if (m_reader != nullptr) {
        m_reader->close();
    } else if (m_writer != nullptr) {
        finish_new_archive();
        fail(m_writer->close());
    }
    forget();
}

void nmkTrodeArchive::abandon() { forget(); }

void nmkTrodeArchive::forget() {
    m_reader.reset();
    m_writer.reset();
    m_file_name.set_invalid();
    m_zip_entries.clear();
    m_entry_names.clear();
    m_version = 0.0;
}

int nmkTrodeArchive::invalid() const { return m_file_name.is_empty() ? 1 : 0; }

utString nmkTrodeArchive::name(int index) const {
    return index >= 0 && index < size() ? m_entry_names[index] : utString();
}

int nmkTrodeArchive::index(const utString& name) const {
    const utString* const found = std::find(m_entry_names.begin(), m_entry_names.end(), name);
    return found != m_entry_names.end() ? static_cast<int>(found - m_entry_names.begin()) : -1;
}

int nmkTrodeArchive::create_entry(const utString& name) {
    m_entry_names.add(name);
    return size() - 1;
}

nmkTrodeArchiveStatus nmkTrodeArchive::verify_structure() const {
    if (!has_zipentry(version_entry())) return nmkTrodeArchiveNoVersion;
    // Deliberate: while writing, "contents.txt" comes last, and a half-written archive is sound.
    const bool lacks_contents = m_reader != nullptr && !has_zipentry(contents_entry());
    // Deliberate: below -1 the whole-number part is neither 0 nor above 1, so such a version
    // passes.
    const bool is_zero = std::isnan(m_version) || std::trunc(m_version) == 0.0;
    if (lacks_contents || is_zero) return nmkTrodeArchiveBadContents;
    if (std::trunc(m_version) > 1.0) return nmkTrodeArchiveNewerVersion;
    for (const utString& name : m_entry_names) {
        if (!has_zipentry(geometry_zipentry(name)) || !has_zipentry(metadata_zipentry(name))) {
            return nmkTrodeArchiveMissingEntry;
        }
    }
    return nmkTrodeArchiveOk;
}

void nmkTrodeArchive::set_progress(nmkProgressBreak* progress) {
    m_progress = progress;
    m_bytes_done = 0;
}

utString nmkTrodeArchive::geometry_zipentry(const utString& name) const {
    return name + "/" + name + ".ngk";
}

utString nmkTrodeArchive::metadata_zipentry(const utString& name) const {
    return name + "/" + name + ".xml";
}

utString nmkTrodeArchive::datadir_zipprefix(const utString& name) const {
    return name + "/" + m_data_directory_name + "/";
}

utString nmkTrodeArchive::additionaldir_zipprefix(const utString& name) const {
    return name + "/additional/";
}

/// Keeps the first failure; returns 0, the result of a call that failed.
int nmkTrodeArchive::fail(int error_number) const {
    if (m_failure == 0) m_failure = error_number;
    return 0;
}

bool nmkTrodeArchive::may_continue(std::int64_t bytes) const {
    if (m_progress == nullptr) return true;
    m_bytes_done += bytes;
    return m_progress->jump_to(static_cast<double>(m_bytes_done)) == 0;
}
