// nmkUniqueId_benchmark: identifiers made, written as text and read back, and references loaded
// into the session's table.

#include <mfc/CArchive.h>
#include <mfc/CMemFile.h>
#include <ncamcontainer/co_hash.h>
#include <nmktoolbox/uniqueid.h>

#include <array>
#include <atomic>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <memory>
#include <random>
#include <unordered_map>
#include <vector>

#include "stopwatch.h"

namespace {

constexpr int identifiers_count = 1000000;
constexpr int references_count = 1000000;
constexpr int rounds = 7;

constexpr double target_of_create = 1.5;
constexpr double target_of_text = 2.0;
constexpr double target_of_loading = 1.5;

using Words = std::array<std::uint32_t, 4>;

std::atomic<int> bare_serial{0};

// The same hash, time and atomic addition, without an allocation.
void create_bare(Words& words) {
    const Words* const address = &words;
    words[0] = co_hash(&address, static_cast<int>(sizeof address));
    words[1] = static_cast<std::uint32_t>(std::time(nullptr));
    words[2] = static_cast<std::uint32_t>(bare_serial.fetch_add(1)) + 1U;
    words[3] = 0;
}

bool measure_create() {
    const auto ours = [] {
        std::uint64_t valid = 0;
        for (int i = 0; i < identifiers_count; ++i) {
            const std::unique_ptr<nmkUniqueId> made(nmkUniqueId::create());
            valid += made->is_valid() != 0 ? 1 : 0;
        }
        return valid;
    };
    const auto peer = [] {
        std::uint64_t valid = 0;
        for (int i = 0; i < identifiers_count; ++i) {
            Words made;
            create_bare(made);
            valid += made[1] != 1 ? 1 : 0;
        }
        return valid;
    };
    const auto taken = stopwatch::in_turns(rounds, ours, peer);
    return stopwatch::report("nmkUniqueId::create, 1e6", taken.ours, taken.peer, target_of_create,
                             taken.same);
}

constexpr char digit_of[] = "0123456789abcdef";

void write_bare(const Words& words, char* text) {
    for (std::size_t word = 0; word < 4; ++word) {
        for (int digit = 0; digit < 8; ++digit) {
            *text++ = digit_of[words[word] >> (28 - 4 * digit) & 0xF];
        }
    }
    *text = '\0';
}

std::array<std::uint8_t, 256> make_digit_values() {
    std::array<std::uint8_t, 256> values{};
    for (int digit = 0; digit < 16; ++digit) {
        values[static_cast<unsigned char>(digit_of[digit])] = static_cast<std::uint8_t>(digit);
    }
    return values;
}

Words read_bare(const char* text) {
    static const std::array<std::uint8_t, 256> values = make_digit_values();
    Words words{};
    for (std::uint32_t& word : words) {
        for (int digit = 0; digit < 8; ++digit) {
            word = word << 4 | values[static_cast<unsigned char>(*text++)];
        }
    }
    return words;
}

std::vector<Words> random_words(int count) {
    std::mt19937_64 random(6);
    std::vector<Words> all;
    for (int i = 0; i < count; ++i) {
        const std::uint64_t bits = random();
        all.push_back({static_cast<std::uint32_t>(bits), static_cast<std::uint32_t>(bits >> 32) | 2,
                       static_cast<std::uint32_t>(i), 0});
    }
    return all;
}

bool measure_text() {
    const std::vector<Words> all = random_words(identifiers_count);
    const std::unique_ptr<nmkUniqueId> in(nmkUniqueId::create());
    std::vector<nmkUniqueId> identifiers;
    for (const Words& words : all) {
        char text[33];
        write_bare(words, text);
        in->become(text);
        identifiers.push_back(*in);
    }
    const auto ours = [&] {
        std::uint64_t sum = 0;
        char text[33];
        for (const nmkUniqueId& identifier : identifiers) {
            identifier.hex_string(text);
            in->become(text);
            sum += static_cast<std::uint64_t>(in->is_equal(&identifier));
        }
        return sum;
    };
    const auto peer = [&] {
        std::uint64_t sum = 0;
        char text[33];
        for (const Words& words : all) {
            write_bare(words, text);
            sum += read_bare(text) == words ? 1 : 0;
        }
        return sum;
    };
    const auto taken = stopwatch::in_turns(rounds, ours, peer);
    return stopwatch::report("hex out and in, 1e6", taken.ours, taken.peer, target_of_text,
                             taken.same);
}

struct HashOfWords {
    std::size_t operator()(const Words& words) const noexcept { return words[0]; }
};

std::vector<unsigned char> stored_references() {
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    for (const Words& words : random_words(references_count)) {
        archive << words[0] << words[1] << static_cast<std::uint16_t>(2) << words[2] << words[3];
    }
    archive.Close();
    return {file.bytes().begin(), file.bytes().end()};
}

Words read_record(const unsigned char* record) {
    Words words{};
    std::memcpy(words.data(), record, 8);
    std::memcpy(words.data() + 2, record + 10, 8);
    return words;
}

bool measure_loading() {
    const std::vector<unsigned char> bytes = stored_references();
    const auto ours = [&] {
        CMemFile file(bytes);
        CArchive archive(&file, CArchive::load);
        nmkRefToObjectId reference;
        for (int i = 0; i < references_count; ++i) reference.Serialize(archive);
        const int members = nmkUniqueIdTable::session_entities()->size();
        nmkUniqueIdTable::delete_session_entities();
        return members;
    };
    const auto peer = [&] {
        std::unordered_map<Words, int, HashOfWords> table;
        for (int i = 0; i < references_count; ++i)
            table.emplace(read_record(&bytes[18U * static_cast<unsigned>(i)]), i);
        return static_cast<int>(table.size());
    };
    const auto taken = stopwatch::in_turns(rounds, ours, peer);
    return stopwatch::report("1e6 references into the session's table", taken.ours, taken.peer,
                             target_of_loading, taken.same);
}

}  // namespace

int main() {
    std::printf("%-44s %11s %11s %9s\n", "name", "ours_s", "peer_s", "ratio");
    bool reached = measure_create();
    reached = measure_text() && reached;
    reached = measure_loading() && reached;
    return reached ? 0 : 1;
}
