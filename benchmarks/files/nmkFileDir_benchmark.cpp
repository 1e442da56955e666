// nmkFileDir_benchmark: listing 100,000 entries, and copying and deleting a tree of 20,000 files,
// beside std::filesystem doing the same.
//
// The listings are whole names, by byte value, of plain files. All happens in the directory for
// temporary files (TMPDIR), so it measures that disk as well; ours and the peer's take turns, and
// each time is the best of several rounds.

#include <nmktoolbox/files/nmkFileDirIter.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "stopwatch.h"

namespace fs = std::filesystem;

namespace {

const int listed_entries = stopwatch::size(100000, 1000);
const int tree_directories = stopwatch::size(200, 20);
const int files_in_each = stopwatch::size(100, 10);
constexpr int bytes_in_each = 1000;
const int rounds = stopwatch::rounds(5);
const int tree_rounds = stopwatch::rounds(3);  // some disks take a minute to delete a tree
constexpr double target = 1.5;
constexpr double listing_target = 0.6;

nmkFileDir named(const fs::path& path) { return nmkFileDir(path.c_str(), nullptr); }

void make_flat(const fs::path& folder) {
    fs::create_directory(folder);
    for (int i = 0; i < listed_entries; ++i) {
        std::ofstream(folder / ("toolpath_" + std::to_string(i * 7919 % 1000003) + ".tri"));
    }
}

void make_tree(const fs::path& folder) {
    const std::string bytes(bytes_in_each, 'x');
    for (int d = 0; d < tree_directories; ++d) {
        const fs::path inner = folder / std::to_string(d % 14) / std::to_string(d);
        fs::create_directories(inner);
        for (int f = 0; f < files_in_each; ++f) std::ofstream(inner / std::to_string(f)) << bytes;
    }
}

std::size_t checksum(std::size_t sum, std::string_view name) {
    for (const char c : name) sum = sum * 31 + static_cast<unsigned char>(c);
    return sum;
}

std::size_t list_ours(const fs::path& folder, nmkFileDirIterType type) {
    nmkFileDirIter entries(named(folder), type, nullptr);
    std::size_t sum = 0;
    while (++entries) sum = checksum(sum, entries().get().view());
    return sum;
}

std::size_t list_peer(const fs::path& folder, bool files_only) {
    std::vector<fs::path> names;
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (!files_only || entry.is_regular_file()) {
            names.push_back(entry.path());
        }
    }
    std::sort(names.begin(), names.end(),
              [](const auto& a, const auto& b) { return a.native() < b.native(); });
    std::size_t sum = 0;
    for (const fs::path& name : names) sum = checksum(sum, name.native());
    return sum;
}

std::size_t count_files(const fs::path& folder) {
    std::size_t count = 0;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        count += entry.is_regular_file() ? 1 : 0;
    }
    return count;
}

bool measure_listing(const char* name, const fs::path& folder, nmkFileDirIterType type) {
    double ours = 1e9;
    double peer = 1e9;
    std::size_t our_sum = 0;
    std::size_t peer_sum = 1;
    for (int round = 0; round < rounds; ++round) {
        ours = std::min(ours, stopwatch::seconds([&] { our_sum = list_ours(folder, type); }));
        peer = std::min(peer, stopwatch::seconds([&] {
                            peer_sum = list_peer(folder, type == nmkFileDirIterFiles);
                        }));
    }
    return stopwatch::report(name, ours, peer, listing_target, our_sum == peer_sum);
}

// Copies and deletes the tree in turn, both ways.
bool measure_tree(const fs::path& folder, const fs::path& source) {
    double copies[2] = {1e9, 1e9};
    double deletions[2] = {1e9, 1e9};
    bool is_whole = true;
    const std::size_t files = count_files(source);
    const auto best = [](double& least, auto work) {
        least = std::min(least, stopwatch::seconds(work));
    };
    for (int round = 0; round < tree_rounds; ++round) {
        const fs::path ours = folder / "ours";
        const fs::path peer = folder / "peer";
        best(copies[0], [&] { named(source).copy_dir(named(ours)); });
        best(copies[1], [&] { fs::copy(source, peer, fs::copy_options::recursive); });
        is_whole = is_whole && count_files(ours) == files && count_files(peer) == files;
        best(deletions[0], [&] { named(ours).delete_tree(); });
        best(deletions[1], [&] { fs::remove_all(peer); });
        is_whole = is_whole && !fs::exists(ours) && !fs::exists(peer);
    }
    const bool copied = stopwatch::report("copy_dir, 20,000 files of 1,000 bytes", copies[0],
                                          copies[1], target, is_whole);
    return stopwatch::report("delete_tree, the same", deletions[0], deletions[1], target,
                             is_whole) &&
           copied;
}

}  // namespace

int main() {
    const fs::path folder =
        fs::temp_directory_path() / ("nmkFileDir_benchmark_" + std::to_string(::getpid()));
    fs::create_directories(folder);
    std::printf("%-44s %11s %11s %9s\n", "name", "ours_s", "peer_s", "ratio");
    make_flat(folder / "flat");
    bool reached =
        measure_listing("nmkFileDirIter, 100,000 entries", folder / "flat", nmkFileDirIterAll);
    reached = measure_listing("nmkFileDirIter, 100,000 files alone", folder / "flat",
                              nmkFileDirIterFiles) &&
              reached;
    make_tree(folder / "tree");
    reached = measure_tree(folder, folder / "tree") && reached;
    fs::remove_all(folder);
    return reached ? 0 : 1;
}
