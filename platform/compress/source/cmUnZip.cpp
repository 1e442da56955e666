#include <compress/cmUnZip.h>
#include <fcntl.h>
#include <filesystem/descriptor.h>
#include <sys/stat.h>
#include <utils/ut_date.h>
#include <zip.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <limits>
#include <ostream>
#include <system_error>
#include <vector>

namespace {

// Deflate packs 258 bytes into 2 bits at best: zlib's "Maximum Compression Factor".
constexpr std::int64_t max_ratio = 1032;
constexpr int max_block = 1 << 20;

constexpr zip_uint64_t needed =
    ZIP_STAT_SIZE | ZIP_STAT_COMP_SIZE | ZIP_STAT_COMP_METHOD | ZIP_STAT_ENCRYPTION_METHOD;

/// What the directory of the zip says of an entry; false when it says too little.
bool entry_record(zip_t* archive, std::int64_t index, zip_stat_t& record) {
    return ::zip_stat_index(archive, static_cast<zip_uint64_t>(index), 0, &record) == 0 &&
           (record.valid & needed) == needed;
}

/// As a number with a sign; more bytes than that are more than any file has.
std::int64_t bytes(zip_uint64_t size) {
    constexpr auto most = static_cast<zip_uint64_t>(std::numeric_limits<std::int64_t>::max());
    return static_cast<std::int64_t>(std::min(size, most));
}

std::string words_of(int error_number) { return std::generic_category().message(error_number); }

}  // namespace

void cmUnZip::ArchiveClose::operator()(zip* archive) const noexcept { ::zip_discard(archive); }

void cmUnZip::EntryClose::operator()(zip_file* entry) const noexcept { ::zip_fclose(entry); }

cmUnZip::cmUnZip() = default;
cmUnZip::~cmUnZip() = default;

int cmUnZip::fail(int error_number, std::string problem) {
    m_failure = error_number;
    m_problem = std::move(problem);
    return error_number;
}

int cmUnZip::open(const char* name) {
    if (name == nullptr || m_archive != nullptr) return fail(EINVAL, "another file is open");
    // Without waiting: the name may be that of a pipe.
    nmk_filesystem::Descriptor file(::open(name, O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat record;
    if (!file.is_open() || ::fstat(file.number(), &record) != 0) {
        return fail(errno, words_of(errno));
    }
    if (S_ISDIR(record.st_mode)) return fail(EISDIR, words_of(EISDIR));
    // libzip takes a file of no bytes for a zip without entries.
    if (!S_ISREG(record.st_mode) || record.st_size == 0) return fail(EBADMSG, "not a zip file");
    m_file_size = record.st_size;
    return open_archive(file.release());
}

int cmUnZip::open_archive(int descriptor) {
    std::FILE* const stream = ::fdopen(descriptor, "rb");
    if (stream == nullptr) {
        nmk_filesystem::Descriptor(descriptor).reset(-1);
        return fail(ENOMEM, words_of(ENOMEM));
    }
    zip_error_t error;
    ::zip_error_init(&error);
    zip_source_t* const source = ::zip_source_filep_create(stream, 0, -1, &error);
    m_archive.reset(source == nullptr ? nullptr
                                      : ::zip_open_from_source(source, ZIP_RDONLY, &error));
    if (m_archive == nullptr) {
        fail(EBADMSG, std::string("not a zip file, or its directory is damaged: ") +
                          ::zip_error_strerror(&error));
        source == nullptr ? static_cast<void>(std::fclose(stream)) : ::zip_source_free(source);
    }
    ::zip_error_fini(&error);
    if (m_archive == nullptr) return m_failure;
    m_count = ::zip_get_num_entries(m_archive.get(), 0);
    m_index = -1;
    return 0;
}

int cmUnZip::close() {
    if (m_archive == nullptr) return fail(EINVAL, "no file is open");
    m_entry.reset();
    m_first_of_name.clear();
    m_packed_sum = -1;
    m_count = 0;
    m_index = -1;
    m_archive.reset();
    return 0;
}

int cmUnZip::move_to(std::int64_t index) {
    m_entry.reset();
    m_index = index < m_count ? index : -1;
    return m_index >= 0 ? 0 : fail(ENOENT, "no such entry");
}

int cmUnZip::goto_first_file() { return move_to(0); }

int cmUnZip::goto_next_file() { return move_to(m_index >= 0 ? m_index + 1 : m_count); }

std::string_view cmUnZip::name_of(std::int64_t index) const {
    const char* const name =
        ::zip_get_name(m_archive.get(), static_cast<zip_uint64_t>(index), ZIP_FL_ENC_RAW);
    return name != nullptr ? std::string_view(name) : std::string_view();
}

void cmUnZip::index_names() {
    m_first_of_name.reserve(static_cast<std::size_t>(m_count));
    for (std::int64_t i = 0; i < m_count; ++i) m_first_of_name.try_emplace(name_of(i), i);
}

int cmUnZip::goto_file(const utString& name) {
    if (m_archive != nullptr && m_first_of_name.empty()) index_names();
    const auto found = m_first_of_name.find(name.view());
    return move_to(found != m_first_of_name.end() ? found->second : m_count);
}

int cmUnZip::get_current_file_info(utString& name) {
    if (m_index < 0) return fail(EINVAL, "no current entry");
    name = utString(name_of(m_index));
    return 0;
}

int cmUnZip::get_current_file_sizes(std::int64_t& size, std::int64_t& packed_size) {
    zip_stat_t record;
    if (m_index < 0) return fail(EINVAL, "no current entry");
    if (!entry_record(m_archive.get(), m_index, record)) return fail(EBADMSG, "no sizes");
    size = bytes(record.size);
    packed_size = bytes(record.comp_size);
    return 0;
}

int cmUnZip::get_current_file_date(int* const date) {
    zip_stat_t record;
    if (m_index < 0) return fail(EINVAL, "no current entry");
    const bool has_date = entry_record(m_archive.get(), m_index, record) &&
                          (record.valid & ZIP_STAT_MTIME) != 0 &&
                          ut_date_local(record.mtime, date) == 0;
    return has_date ? 0 : fail(EBADMSG, "no date");
}

// Each entry has bytes of its own in the file, so their sum is less than the file has.
bool cmUnZip::entries_overlap() {
    if (m_packed_sum < 0) {
        m_packed_sum = 0;
        zip_stat_t record;
        for (std::int64_t i = 0; i < m_count && m_packed_sum <= m_file_size; ++i) {
            if (!entry_record(m_archive.get(), i, record)) continue;
            m_packed_sum += std::min(bytes(record.comp_size), m_file_size + 1);
        }
    }
    return m_packed_sum > m_file_size;
}

int cmUnZip::check_sizes(std::int64_t size, std::int64_t packed_size, int method) {
    if (entries_overlap()) return fail(EBADMSG, "entries overlap");
    if (method == ZIP_CM_STORE && size != packed_size) return fail(EBADMSG, "the sizes differ");
    if (size / max_ratio > packed_size) return fail(EFBIG, "unpacks to more than is possible");
    return 0;
}

int cmUnZip::open_current_file() {
    m_entry.reset();
    zip_stat_t record;
    if (m_index < 0) return fail(EINVAL, "no current entry");
    if (!entry_record(m_archive.get(), m_index, record)) return fail(EBADMSG, "no sizes");
    if (record.encryption_method != ZIP_EM_NONE) return fail(EOPNOTSUPP, "the entry is encrypted");
    if (record.comp_method != ZIP_CM_STORE && record.comp_method != ZIP_CM_DEFLATE) {
        return fail(EOPNOTSUPP, "packed by method " + std::to_string(record.comp_method) +
                                    "; expected 0 (stored) or 8 (deflated)");
    }
    const int error_number =
        check_sizes(bytes(record.size), bytes(record.comp_size), record.comp_method);
    if (error_number != 0) return error_number;
    m_entry.reset(::zip_fopen_index(m_archive.get(), static_cast<zip_uint64_t>(m_index), 0));
    if (m_entry == nullptr) return fail(EBADMSG, ::zip_strerror(m_archive.get()));
    m_remaining = bytes(record.size);
    m_is_verified = false;
    return 0;
}

int cmUnZip::close_current_file() {
    if (m_entry == nullptr) return fail(EINVAL, "no entry is open");
    m_entry.reset();
    return 0;
}

int cmUnZip::fail_in_entry() {
    return fail(EBADMSG, std::string("the data is damaged: ") + ::zip_file_strerror(m_entry.get()));
}

// libzip compares the check sum at the end, so the end is read too.
int cmUnZip::check_end() {
    char byte;
    if (m_is_verified) return 0;
    const zip_int64_t count = ::zip_fread(m_entry.get(), &byte, 1);
    if (count < 0) return fail_in_entry();
    if (count > 0) return fail(EBADMSG, "the data is longer than the directory says");
    m_is_verified = true;
    return 0;
}

std::int64_t cmUnZip::read_block(char* block, std::int64_t count) {
    std::int64_t done = 0;
    const std::int64_t wanted = std::min(count, m_remaining);
    while (done < wanted) {
        const zip_int64_t part =
            ::zip_fread(m_entry.get(), block + done, static_cast<zip_uint64_t>(wanted - done));
        if (part < 0) return fail_in_entry(), -1;
        if (part == 0) return fail(EBADMSG, "the data is shorter than the directory says"), -1;
        done += part;
        m_remaining -= part;
    }
    if (m_remaining == 0 && check_end() != 0) return -1;
    if (m_watch && !m_watch(done)) return fail(ECANCELED, "stopped"), -1;
    return done;
}

int cmUnZip::read_current_file(char* block, int count) {
    if (m_entry == nullptr || count < 0 || block == nullptr) {
        return fail(EINVAL, "no entry is open"), -1;
    }
    return static_cast<int>(read_block(block, count));
}

int cmUnZip::unzip_current_file(std::ostream& stream, int block_size) {
    if (m_entry == nullptr || block_size <= 0) return fail(EINVAL, "no entry is open");
    std::vector<char> block(static_cast<std::size_t>(std::min(block_size, max_block)));
    for (;;) {
        const std::int64_t count =
            read_block(block.data(), static_cast<std::int64_t>(block.size()));
        if (count < 0) return m_failure;
        if (count == 0) return 0;
        if (!stream.write(block.data(), count)) return fail(EIO, "the output cannot be written");
    }
}
