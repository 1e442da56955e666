// nmkTrodeArchive_benchmark: 1 GB inserted and extracted, beside zlib doing only the packing and
// unpacking of the same files; 20,000 small files extracted and 200,000 entries opened, beside
// libzip.
//
// Both write what they make to files, in the directory for temporary files (TMPDIR), but the small
// files on the disk of /var/tmp: in memory, where a file costs next to nothing, the second name
// that each of ours has until it is whole doubles the time. The data is text of coordinates, which
// packs to about a third.

#include <compress/cmZip.h>
#include <fcntl.h>
#include <malloc.h>
#include <nmkprogressbreak/nmkProgressBreak.h>
#include <nmktoolbox/archive/nmkTrodeArchive.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zip.h>
#include <zlib.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "stopwatch.h"

namespace fs = std::filesystem;

namespace {

const int large_files = stopwatch::size(10, 2);
const int megabytes_each = stopwatch::size(100, 1);
const int small_files = stopwatch::size(20000, 200);
const int many_entries = stopwatch::size(200000, 2000);
constexpr int rounds = 2;
constexpr int rounds_of_small_files = 3;

constexpr double target_of_inserting = 1.1;
constexpr double target_of_extracting = 1.2;
constexpr double target_of_small_files = 1.3;
constexpr double target_of_opening = 2.0;
constexpr double max_memory = 1e6;  // bytes held while inserting

constexpr int raw_window = -15;
constexpr std::size_t block_size = 10240;  // as the archive reads and writes

/// The directory of this run, removed at the end.
class Folder {
  public:
    explicit Folder(const fs::path& where) {
        std::string name = (where / "nmk_archive_XXXXXX").string();
        if (::mkdtemp(name.data()) == nullptr) std::abort();
        m_path = name;
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder() { fs::remove_all(m_path); }

    std::string operator/(const std::string& name) const { return m_path + "/" + name; }

  private:
    std::string m_path;
};

std::string name_of(int file) { return std::string("f").append(std::to_string(file)); }

void write_coordinates(const std::string& name, std::size_t bytes, std::uint32_t seed) {
    std::ofstream file(name, std::ios::binary);
    std::string text;
    while (bytes > 0) {
        text.clear();
        for (int i = 0; i < 3; ++i) {
            seed = seed * 1664525U + 1013904223U;
            text += std::to_string(seed >> 16) + "." + std::to_string(seed >> 28) + "5 ";
        }
        text.back() = '\n';
        text.resize(std::min(text.size(), bytes));
        bytes -= text.size();
        file << text;
    }
}

/// Runs a file through deflate or inflate, block by block, into another.
template <class Step>
std::uint64_t transform(const std::string& from, const std::string& to, z_stream& stream,
                        const Step& step) {
    std::ifstream in(from, std::ios::binary);
    std::ofstream out(to, std::ios::binary);
    std::vector<char> input(block_size), output(block_size);
    int status = Z_OK;
    while (status != Z_STREAM_END) {
        in.read(input.data(), static_cast<std::streamsize>(input.size()));
        stream.next_in = reinterpret_cast<Bytef*>(input.data());
        stream.avail_in = static_cast<uInt>(in.gcount());
        do {
            stream.next_out = reinterpret_cast<Bytef*>(output.data());
            stream.avail_out = static_cast<uInt>(output.size());
            status = step(&stream, in ? Z_NO_FLUSH : Z_FINISH);
            out.write(output.data(),
                      static_cast<std::streamsize>(output.size()) - stream.avail_out);
        } while (stream.avail_out == 0 && status != Z_STREAM_END);
    }
    return stream.total_in + stream.total_out;
}

std::uint64_t deflate_file(const std::string& from, const std::string& to) {
    z_stream stream{};
    ::deflateInit2(&stream, -1, Z_DEFLATED, raw_window, 8, Z_DEFAULT_STRATEGY);
    const std::uint64_t bytes = transform(from, to, stream, ::deflate);
    ::deflateEnd(&stream);
    return bytes;
}

std::uint64_t inflate_file(const std::string& from, const std::string& to) {
    z_stream stream{};
    ::inflateInit2(&stream, raw_window);
    const std::uint64_t bytes = transform(from, to, stream, ::inflate);
    ::inflateEnd(&stream);
    return bytes;
}

/// The most memory that is allocated at any block.
class MemoryWatch : public nmkProgressBreak {
  public:
    int jump_to(double) override {
        m_most = std::max(m_most, in_use() - m_before);
        return 0;
    }
    double most() const { return m_most; }

  private:
    static double in_use() {
        const auto info = ::mallinfo2();
        return static_cast<double>(info.uordblks + info.hblkhd);
    }

    double m_before = in_use();
    double m_most = 0;
};

bool measure_large(const Folder& folder) {
    const auto bytes = static_cast<std::size_t>(megabytes_each) * 1000000;
    fs::create_directories(folder / "in");
    fs::create_directories(folder / "packed");
    fs::create_directories(folder / "peer");
    for (int i = 0; i < large_files; ++i) {
        write_coordinates(folder / ("in/" + name_of(i)), bytes, static_cast<std::uint32_t>(i));
    }
    const utString zip((folder / "large.zip"));
    const utString target((folder / "ours"));
    double memory = 0;
    const auto insert = [&] {
        nmkTrodeArchive archive;
        archive.create(zip);
        archive.insert_data_directory(archive.create_entry("E"), utString(folder / "in"));
        archive.close();
        return archive.failure() == 0;
    };
    const auto pack = [&] {
        for (int i = 0; i < large_files; ++i) {
            deflate_file(folder / ("in/" + name_of(i)), folder / ("packed/" + name_of(i)));
        }
        return true;
    };
    const auto extract = [&] {
        nmkTrodeArchive archive;
        return archive.open(zip) != 0 && archive.extract_data_directory(0, target) != 0;
    };
    const auto unpack = [&] {
        for (int i = 0; i < large_files; ++i) {
            inflate_file(folder / ("packed/" + name_of(i)), folder / ("peer/" + name_of(i)));
        }
        return true;
    };
    {
        MemoryWatch watch;
        nmkTrodeArchive archive;
        archive.create(zip);
        archive.set_progress(&watch);
        archive.insert_geometry(archive.create_entry("E"), utString(folder / "in/f0"));
        archive.abandon();
        memory = watch.most();
    }
    const auto inserted = stopwatch::in_turns(rounds, insert, pack);
    const auto extracted = stopwatch::in_turns(rounds, extract, unpack);
    const auto size = fs::file_size(folder / "ours/f0");
    bool reached = stopwatch::report("insert 1 GB", inserted.ours, inserted.peer,
                                     target_of_inserting, inserted.same);
    reached = stopwatch::report("insert, bytes held beside 1 MB", memory, max_memory, 1.0, true) &&
              reached;
    return stopwatch::report("extract 1 GB", extracted.ours, extracted.peer, target_of_extracting,
                             extracted.same && size == bytes) &&
           reached;
}

void write_many(const std::string& name, int entries, const std::string& bytes) {
    cmZip zip;
    zip.open(name.c_str());
    for (int i = 0; i < entries; ++i) {
        const utString entry =
            utString("/html/d") + utString(std::to_string(i % 100)) + "/" + utString(name_of(i));
        zip.open_new_file_in_zip(entry, cmZipMethodDeflate, -1, nullptr, utString());
        zip.write_in_file_in_zip(bytes.data(), static_cast<int>(bytes.size()));
        zip.close_file_in_zip();
    }
    zip.close();
}

/// What libzip's examples do: each entry read and written to its file.
int extract_with_libzip(const std::string& name, const std::string& target) {
    int error = 0, files = 0;
    zip_t* const archive = ::zip_open(name.c_str(), ZIP_RDONLY, &error);
    const zip_int64_t count = ::zip_get_num_entries(archive, 0);
    std::vector<char> block(block_size);
    for (int i = 0; i < 100; ++i) fs::create_directories(target + "/html/d" + std::to_string(i));
    for (zip_int64_t i = 0; i < count; ++i) {
        const auto index = static_cast<zip_uint64_t>(i);
        zip_file_t* const entry = ::zip_fopen_index(archive, index, 0);
        const std::string file = target + ::zip_get_name(archive, index, 0);
        const int out = ::open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
        zip_int64_t got = 0;
        while ((got = ::zip_fread(entry, block.data(), block.size())) > 0) {
            if (::write(out, block.data(), static_cast<std::size_t>(got)) == got) continue;
        }
        ::close(out);
        ::zip_fclose(entry);
        ++files;
    }
    ::zip_discard(archive);
    return files;
}

bool measure_small(const Folder& folder) {
    const std::string zip = folder / "small.zip";
    write_many(zip, small_files, std::string(300, 'x') + "300 bytes and some more");
    // A new directory in each turn: files that exist would be replaced by ours and overwritten by
    // the peer, and some disks give out the inodes of replaced files only minutes later.
    int turn = 0;
    const auto new_target = [&] { return folder / ("small_" + std::to_string(turn++)); };
    const auto ours = [&] {
        nmkTrodeArchive archive;
        utStringcoDList list;
        archive.open(utString(zip));
        archive.list_data_directory(-1, list);
        return archive.extract_data_directory(-1, utString(new_target())) != 0 ? list.size() : 0;
    };
    const auto peer = [&] { return extract_with_libzip(zip, new_target()); };
    const auto taken = stopwatch::in_turns(rounds_of_small_files, ours, peer);
    return stopwatch::report("list and extract 20,000 small files", taken.ours, taken.peer,
                             target_of_small_files, taken.same);
}

bool measure_opening(const Folder& folder) {
    const std::string zip = folder / "many.zip";
    write_many(zip, many_entries, "");
    const auto ours = [&] {
        nmkTrodeArchive archive;
        return archive.open(utString(zip)) != 0;
    };
    const auto peer = [&] {
        int error = 0;
        zip_t* const archive = ::zip_open(zip.c_str(), ZIP_RDONLY, &error);
        const bool is_open = ::zip_get_num_entries(archive, 0) == many_entries;
        ::zip_discard(archive);
        return is_open;
    };
    const auto taken = stopwatch::in_turns(5, ours, peer);
    return stopwatch::report("open 200,000 entries", taken.ours, taken.peer, target_of_opening,
                             taken.same);
}

}  // namespace

int main() {
    const Folder folder(fs::temp_directory_path());
    const Folder on_disk("/var/tmp");
    bool reached = measure_opening(folder);
    reached = measure_small(on_disk) && reached;
    return measure_large(folder) && reached ? 0 : 1;
}
