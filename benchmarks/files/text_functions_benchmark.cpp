// text_functions_benchmark: the string toolkit on 10 MB, beside one memcpy and one scan of it.
//
// What a function does in one pass over the text must stay in proportion to the text: each row is
// also taken at 5 MB, and the last column of figures is how much longer 10 MB take. All times
// are processor time, and the heap keeps its memory: the system's handing out of pages, which
// begins at some size, is not what is measured.

#include "stopwatch.h"

#include "files/plain_replace.h"

#include <nmktoolbox/files.h>

#include <malloc.h>

#include <cstdio>
#include <cstring>
#include <functional>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr double most_growth = 2.8;  // twice the text; what is quadratic takes four times as long
const int calls = stopwatch::rounds(9);

/// Words with delimiters, quotes and markup between them; some are not ASCII.
std::string sample(std::size_t size) {
    static const char* const words[] = {
        "feed", "rate",  "\xC3\xA4ndern", "\xE6\x97\xA5\xE6\x9C\xAC",
        "a&b",  "<tag>", "\"quoted\"",    "x=1.5"};
    std::mt19937 draw(20260805);
    std::string text;
    while (text.size() < size) {
        text += words[draw() % std::size(words)];
        text += draw() % 8 == 0 ? '\n' : ' ';
    }
    return text;
}

/// Only runs of one letter, where a search that starts anew at every place would never end.
std::string runs(std::size_t size) { return std::string(size, 'a'); }

double copy_and_scan(const std::string& text) {
    std::vector<char> copy(text.size());
    double least = 1e9;
    for (int i = 0; i < calls; ++i) {
        least = std::min(least, stopwatch::processor_seconds([&] {
                             std::memcpy(copy.data(), text.data(), text.size());
                             volatile bool found =
                                 std::memchr(copy.data(), '\x01', copy.size()) != nullptr;
                             (void)found;
                         }));
    }
    return least;
}

struct Row {
    const char* name;
    std::string (*text)(std::size_t size);
    std::function<void(utString&)> work;
    const char* from = nullptr;  // what is replaced, and by what, where that is the work
    const char* to = nullptr;
};

double seconds_of(const Row& row, const std::string& bytes) {
    double least = 1e9;
    for (int i = 0; i < calls; ++i) {
        utString text{std::string(bytes)};
        least = std::min(least, stopwatch::processor_seconds([&] { row.work(text); }));
    }
    return least;
}

/// Whether a replacement gives what replacing one character at a time gives.
bool is_as_plain(const Row& row) {
    if (row.from == nullptr) return true;
    const std::string bytes = row.text(100'000);
    utString text{std::string(bytes)};
    row.work(text);
    int count = 0;
    return text.view() == plain_replace<char>(bytes, row.from, row.to, count);
}

bool report(const Row& row) {
    const auto megabyte = static_cast<std::size_t>(stopwatch::size(1'000'000, 10'000));
    const std::string large = row.text(10 * megabyte);
    const double small_seconds = seconds_of(row, row.text(5 * megabyte));
    const double seconds = seconds_of(row, large);
    const double peer = copy_and_scan(large);
    const double growth = seconds / small_seconds;
    const bool same = is_as_plain(row);
    std::printf("%-40s %9.5f s %9.5f s  ratio %7.1f  %7.0f MB/s  x%.1f  at most x%.1f%s%s\n",
                row.name, seconds, peer, seconds / peer, 10.0 / seconds, growth, most_growth,
                same ? "" : "  RESULTS DIFFER",
                stopwatch::within(growth, most_growth) ? "" : "  MISSED");
    return same && stopwatch::within(growth, most_growth);
}

}  // namespace

int main() {
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_TRIM_THRESHOLD, -1);
    const utString near_miss(std::string(300, 'a') + "b");
    const Row rows[] = {
        {"nmkreplace_all_strings, words", sample,
         [](utString& text) { nmkreplace_all_strings(text, "rate", "speed"); }, "rate", "speed"},
        {"nmkreplace_all_strings, every character", runs,
         [](utString& text) { nmkreplace_all_strings(text, "a", "bc"); }, "a", "bc"},
        {"nmkreplace_all_strings, near misses", runs,
         [&](utString& text) { nmkreplace_all_strings(text, near_miss, "x"); }, near_miss.c_str(),
         "x"},
        {"nmkgsub, words", sample,
         [](utString& text) { nmkgsub(text, utString("rate"), utString("speed")); }, "rate",
         "speed"},
        {"nmkgsub, every byte", runs,
         [](utString& text) { nmkgsub(text, utString("a"), utString("bc")); }, "a", "bc"},
        {"nmkgsub, near misses", runs,
         [&](utString& text) { nmkgsub(text, near_miss, utString("x")); }, near_miss.c_str(), "x"},
        {"nmktokens", sample,
         [](utString& text) {
             utStringcoDList list;
             nmktokens(text, " \n", list);
         }},
        {"nmk_text_to_html", sample, [](utString& text) { nmk_text_to_html(text); }},
        {"nmkupcase", sample, [](utString& text) { nmkupcase(text); }},
        {"nmktrim", sample, [](utString& text) { nmktrim(text); }},
    };
    bool all_reached = true;
    for (const Row& row : rows) {
        all_reached = report(row) && all_reached;
    }
    return all_reached ? 0 : 1;
}
